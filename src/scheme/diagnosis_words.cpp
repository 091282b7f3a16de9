#include "scheme/diagnosis_words.h"

#include "metadata/operations.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using database::Fault;
using variant::spliced;

std::string_view sentenceFor(Fault fault) {
  switch (fault) {
    case Fault::None:
      return "";
    case Fault::Syntax:
      return "写法有误，请检查括号、引号和运算符是否完整。";
    case Fault::Limit:
      return "内容过长或嵌套过深，请减少项目。";
    case Fault::Name:
      return "用到了不存在或含义不明的字段或函数。";
    case Fault::Kind:
      return "数据类型不符（文字、数字和日期不能这样混用），或者除数为零。";
    case Fault::Rule:
      return "有统计时，没有用统计函数的项目都应列入分组。";
    case Fault::Unsupported:
      return "用到了系统不支持的写法。";
    case Fault::Forbidden:
      return "用到了不允许查询的数据表。";
    case Fault::Running:
      return "运行时被数据库拒绝，常见原因是文字不能换算成数字或日期，或者除数为零。";
    case Fault::Time:
      return "运行时间过长，请增加过滤条件缩小范围。";
  }
  return "";
}

bool isNameByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         (c & 0x80) != 0;
}

// The name that begins at the offset, dots and brackets included; "" for none.
std::string_view nameAt(std::string_view statement, std::size_t offset) {
  if (offset >= statement.size()) return {};
  std::size_t end = offset;
  while (end < statement.size()) {
    if (statement[end] == '[') {
      const std::size_t close = statement.find(']', end);
      if (close == std::string_view::npos) return {};
      end = close + 1;
    } else if (isNameByte(statement[end]) || statement[end] == '.') {
      ++end;
    } else {
      break;
    }
  }
  return statement.substr(offset, end - offset);
}

// What the designer wrote, in one text.
std::string writtenBy(const compile::Definition& definition) {
  return spliced(definition.computed) + "\n" + spliced(definition.filter);
}

std::string shownName(Page& page, std::string_view name, const compile::Definition& definition) {
  if (name.empty()) return "";
  if (writtenBy(definition).find(name) != std::string::npos) return std::string(name);
  const Variant caption = metadata::getFieldDesc(page, Variant(name));
  return caption.isText() ? caption.text() : "";
}

}  // namespace

std::string wordsFor(Page& page, const database::StatementCheck& check, std::string_view statement,
                     const compile::Definition& definition) {
  const std::string sentence(sentenceFor(check.fault));
  if (check.fault != Fault::Name) return sentence;
  const std::string name = shownName(page, nameAt(statement, check.offset), definition);
  return name.empty() ? sentence : "“" + name + "”不存在或含义不明，请检查字段和函数的名称。";
}

}  // namespace tarlo::scheme
