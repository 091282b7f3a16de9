#pragma once
// The plain pages of the server itself: refusals and failures, in words for users.

#include <spdlog/logger.h>

#include <string_view>

#include "host/site/visit.h"

namespace tarlo::host {

struct Notice {
  unsigned status;
  std::string_view title;
  std::string_view text;
};

inline constexpr Notice kNoSuchPage{404, "没有这个页面",
                                    "您访问的地址不存在，请检查地址是否正确。"};
inline constexpr Notice kNoSuchOperation{404, "没有这个操作",
                                         "该组件没有这个操作，请检查链接是否正确。"};
inline constexpr Notice kNotAPage{404, "该操作不是页面",
                                  "这个操作只供程序调用，不能用地址直接访问。"};
inline constexpr Notice kNotInstalled{404, "功能未安装", "平台的这一部分没有安装在本服务器上。"};
inline constexpr Notice kWrongMethod{405, "请求方式不支持",
                                     "本服务器只接受 GET、HEAD 和 POST 请求。"};
inline constexpr Notice kCrossSite{403, "请求被拒绝",
                                   "请求来自别的网站，没有执行。请从本系统的页面操作。"};
inline constexpr Notice kNoEvidence{
    403, "请求没有执行",
    "这个操作会更改数据，而浏览器没有表明它来自本系统的页面，例如地址是直接输入的、来自收藏夹，"
    "或者来自别的网站。请登录本系统，从系统的页面里重新操作。如果仍然如此，请让浏览器允许发送"
    "来源地址（Referer）。"};
inline constexpr Notice kNotGranted{403, "没有权限",
                                    "您没有使用这项功能的权限，请与系统管理员联系。"};
inline constexpr Notice kTooLarge{413, "结果太大",
                                  "查询结果超过了服务器允许的大小，请缩小查询范围后再试。"};
inline constexpr Notice kTooSlow{503, "查询时间过长",
                                 "查询用时超过了服务器允许的时间，请缩小查询范围后再试。"};
inline constexpr Notice kTooManyFailures{429, "登录失败次数过多", "请稍候再试。"};
inline constexpr Notice kTooManyAtOnce{429, "同时进行的操作太多",
                                       "您的操作还没有完成，请等待完成后再试。"};
inline constexpr Notice kBusy{503, "服务器繁忙", "请稍候再试。"};
inline constexpr Notice kNotSaved{
    503, "数据库暂时不可用",
    "数据库现在不能正常读写，没有保存任何内容。请稍候再试；如果一直这样，请与系统管理员联系。"};
inline constexpr Notice kPerhapsSaved{
    503, "数据库连接中断",
    "数据库在答复之前断开了连接，不能确定是否已经保存。请先检查，再决定是否重新提交。"};
inline constexpr Notice kFailure{500, "页面出错",
                                 "处理请求时发生错误，已记入日志。请把下面的编号告诉系统管理员。"};

// Writes the notice, and why into the log.
void refuse(Visit& visit, spdlog::logger& log, const Notice& notice, std::string_view why);

// Writes the notice as the whole page; the request's id stands below the text.
void writeNotice(Visit& visit, const Notice& notice);
// Behind what is written of a page, which stays as it is; as the whole page where nothing is, where
// the answer is no page, and where there is no room for both.
void writeNoticeBehind(Visit& visit, const Notice& notice);

}  // namespace tarlo::host
