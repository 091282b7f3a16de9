// Which address leads where, for whom, and what users and the log see when something goes wrong.

#include <gtest/gtest.h>
#include <spdlog/sinks/ostream_sink.h>

#include "database/error.h"
#include "host/site/boundary.h"
#include "host/site/same_origin.h"
#include "site_support.h"
#include "variant/convert.h"

namespace tarlo::host::testing {
namespace {

const Header kReferer{"Referer", "http://site.example/"};

class SiteTest : public ::testing::Test {
 protected:
  TestSite site_;
};

TEST_F(SiteTest, OpenAddressesNeedNobody) {
  site_.files().add("/TarloScripts.Zembra", "var a;");
  site_.files().add("/images/1px.gif", "GIF");
  const std::tuple<const char*, unsigned, const char*, const char*> rows[] = {
      {"/healthz", 200, "text/plain; charset=utf-8", "ok"},
      {"/readyz", 200, "text/plain; charset=utf-8", "ready"},
      {"/tarloscripts.zembra?action=Zembra", 200, "text/javascript; charset=utf-8", "var a;"},
      {"/images/1PX.gif", 200, "image/gif", "GIF"},
      {"/images/../1px.gif", 404, "text/html; charset=gb2312", "没有这个页面"},
      {"/nowhere", 404, "text/html; charset=gb2312", "没有这个页面"},
      {"/%00%ff", 404, "text/html; charset=gb2312", "没有这个页面"},
      {"/orvane.Zembra?action=x", 404, "text/html; charset=gb2312", "功能未安装"},
      {"/TarloMyScheme.Zembra", 404, "text/html; charset=gb2312", "功能未安装"},
      {"/.Zembra", 404, "text/html; charset=gb2312", "没有这个页面"}};
  for (const auto& [target, status, type, text] : rows) {
    const auto answer = site_.get(target);
    EXPECT_EQ(answer->status, status) << target;
    EXPECT_EQ(answer->header("Content-Type"), type) << target;
    EXPECT_TRUE(holds(answer->text(), text)) << target;
    EXPECT_EQ(answer->header("X-Content-Type-Options"), "nosniff") << target;
    EXPECT_EQ(answer->header("Set-Cookie"), "") << target;
  }
}

TEST_F(SiteTest, AFileThatTheBrowserHasIsNotSentAgain) {
  site_.files().add("/assets/tarlo.css", "body{}");
  const std::string tag = site_.get("/assets/tarlo.css")->header("ETag");
  const auto same = site_.get("/assets/tarlo.css", {{"If-None-Match", "\"x\", W/" + tag}});
  EXPECT_EQ(same->status, 304U);
  EXPECT_EQ(same->body, "");
  EXPECT_EQ(site_.get("/assets/tarlo.css", {{"If-None-Match", "\"x\""}})->status, 200U);
}

TEST_F(SiteTest, OtherMethodsAreRefused) {
  for (const char* method : {"PUT", "DELETE", "OPTIONS", "TRACE", "X"}) {
    const auto answer = site_.send({"", method, "/", {}, "", "", 0});
    EXPECT_EQ(answer->status, 405U) << method;
    EXPECT_EQ(answer->header("Allow"), "GET, HEAD, POST");
  }
}

TEST_F(SiteTest, PagesNeedASignedInUser) {
  for (const char* target : {"/TarloQuery.Zembra?action=getDateTime", "/TarloQuery.Zembra"}) {
    const auto answer = site_.get(target, {kReferer});
    EXPECT_EQ(answer->status, 403U);
    EXPECT_TRUE(holds(answer->text(), "password")) << target;
  }
  EXPECT_EQ(site_.get("/")->status, 200U);
  EXPECT_EQ(site_.cookie(), "");
}

TEST_F(SiteTest, OperationsByAddress) {
  site_.signInAs("admin");
  const std::tuple<const char*, unsigned, const char*, const char*> rows[] = {
      {"/TarloQuery.Zembra?action=getDateTime", 200, ",", ""},
      {"/tarloquery.zembra?ACTION=GETDATETIME", 200, ",", ""},
      {"/TarloQuery.Zembra?action=validint", 404, "该操作不是页面", "a service operation"},
      {"/TarloQuery.Zembra?action=OnEndPage", 404, "没有这个操作", "no such operation"},
      {"/TarloQuery.Zembra?action=%3Cb%3E%0Aforged", 404, "没有这个操作", "<b>\\x0aforged"},
      {"/TarloQuery.Zembra", 404, "没有这个操作", "no such operation"},
      {"/TarloQuery.Zembra?action=getDateTime&action=x", 404, "没有这个操作", "getDateTime, x"}};
  for (const auto& [target, status, text, logged] : rows) {
    const auto answer = site_.get(target, {kReferer});
    EXPECT_EQ(answer->status, status) << target;
    EXPECT_TRUE(holds(answer->text(), text)) << target << answer->text();
    EXPECT_TRUE(holds(site_.log(), logged)) << target;
    EXPECT_FALSE(holds(answer->body, "<b>"));
  }
}

TEST_F(SiteTest, DesignersPagesNeedAManagerInTheMenu) {
  const auto user =
      site_.database().borrow()->open("select User_user from Zembra_User where User_ID=22");
  const std::string seller = variant::spliced(user->value(0));
  const char* pages[] = {"/TarloQuery.Zembra?action=ctrlSearch",
                         "/TarloQuery.Zembra?action=DELSEARCH&id=1",
                         "/TarloQuery.Zembra?action=getQueryTable",
                         "/TarloDialog.Zembra?action=schemeState&prikeyid=1"};
  site_.signInAs(seller);
  for (const char* page : pages) EXPECT_EQ(site_.get(page, {kReferer})->status, 403U) << page;
  EXPECT_EQ(site_.get("/TarloQuery.Zembra?action=getDateTime", {kReferer})->status, 200U);
  EXPECT_TRUE(holds(site_.log(), "the user may not call it"));
  site_.changeConfig().designersOnly = false;
  site_.signInAs(seller);
  for (const char* page : pages) EXPECT_EQ(site_.get(page, {kReferer})->status, 200U) << page;
}

// Of the component and of those beside it: each page would answer with 200.
TEST_F(SiteTest, TheOriginCheckStandsInFrontOfEveryOperation) {
  site_.changeConfig().virtualWebKeyWord = "http://site.example";
  site_.signInAs("admin");
  for (const std::string target :
       {"/TarloQuery.Zembra?action=getDateTime", "/TarloTable.Zembra?action=rows",
        "/TarloTable.Zembra?action=csv", "/TarloDialog.Zembra?action=schemeState&prikeyid=1",
        "/TarloRelation.Zembra?action=options&table=Zembra_DataDict_Table.x&link=a.b"}) {
    EXPECT_EQ(site_.get(target, {kReferer})->status, 200U) << target;
    const auto refused = site_.get(target, {{"Referer", "http://elsewhere/?http://site.example"}});
    EXPECT_EQ(refused->status, 403U) << target;
    EXPECT_TRUE(holds(refused->text(), "无法识别的访问来源")) << target;
    EXPECT_EQ(site_.get(target)->status, 403U) << target;
    EXPECT_EQ(site_.get(target + "&k7wwworvane=1")->status, 200U) << target;
  }
}

TEST(SameOrigin, IsReadFromWhatBrowsersSay) {
  const std::tuple<std::vector<Header>, bool, bool> rows[] = {
      {{}, false, false},
      {{{"Sec-Fetch-Site", "same-origin"}, {"Origin", "http://other"}}, true, false},
      {{{"Sec-Fetch-Site", "none"}, {"Referer", "http://a:80/"}}, false, false},
      {{{"Sec-Fetch-Site", "cross-site"}, {"Origin", "http://a:80"}}, false, true},
      {{{"Sec-Fetch-Site", "same-site"}}, false, true},
      {{{"Sec-Fetch-Site", "anything else"}}, false, true},
      {{{"Origin", "http://a:80"}, {"Referer", "http://other/"}}, true, false},
      {{{"Origin", "https://A:80"}}, true, false},
      {{{"Origin", "http://a:81"}}, false, true},
      {{{"Origin", "http://a:80.other"}}, false, true},
      {{{"Origin", "http://a:80/x"}}, false, true},
      {{{"Origin", "file://a:80"}}, false, true},
      {{{"Origin", "null"}, {"Referer", "http://a:80/"}}, false, true},
      {{{"Referer", "http://a:80"}}, true, false},
      {{{"Referer", "HTTPS://A:80?x"}}, true, false},
      {{{"Referer", "http://a:80.other/"}}, false, false},
      {{{"Referer", "http://a/"}}, false, false},
      {{{"Referer", "http://a:80@other/"}}, false, false},
      {{{"Referer", "http://other/?http://a:80/"}}, false, false},
      {{{"Referer", "a:80/"}}, false, false},
      {{{"Referer", "http:///x"}, {"Host", ""}}, false, false}};
  for (const auto& [headers, evidence, cross] : rows) {
    WireRequest request;
    request.headers = headers;
    request.headers.emplace_back("Host", "a:80");
    EXPECT_EQ(hasEvidence(request, SiteScheme::HttpOrHttps), evidence)
        << ::testing::PrintToString(headers);
    EXPECT_EQ(isCrossSite(request, SiteScheme::HttpOrHttps), cross)
        << ::testing::PrintToString(headers);
  }
  WireRequest clear;
  clear.headers = {{"Host", "a"}, {"Origin", "http://a"}, {"Referer", "http://a/"}};
  EXPECT_FALSE(hasEvidence(clear, SiteScheme::HttpsOnly));
}

TEST_F(SiteTest, OtherSitesCannotMakeABrowserAct) {
  site_.signInAs("admin");
  const Header cross{"Sec-Fetch-Site", "cross-site"};
  EXPECT_EQ(site_.post("/TarloQuery.Zembra", "action=getDateTime", {kReferer, cross})->status,
            403U);
  EXPECT_EQ(site_.get("/TarloQuery.Zembra?action=getDateTime", {kReferer, cross})->status, 403U);
  EXPECT_EQ(site_.post("/sign-in", "user=a&password=b", {cross})->status, 403U);
  EXPECT_EQ(site_.get("/sign-out", {cross})->status, 403U);
  EXPECT_EQ(site_.get("/sign-out")->status, 403U);
  EXPECT_EQ(site_.get("/", {cross})->status, 200U);
  EXPECT_EQ(site_.post("/TarloQuery.Zembra", "action=getDateTime", {kReferer})->status, 200U);
  EXPECT_EQ(site_.get("/sign-out", {kReferer})->status, 303U);
}

TEST_F(SiteTest, AChangeNeedsEvidenceWhateverTheAddressSays) {
  site_.signInAs("admin");
  const auto flag = [&] {
    return site_.ask("select Zembra_Flag from Zembra_Query_Main where Query_Name='kept'");
  };
  site_.database().borrow()->execute(
      "insert into Zembra_Query_Main (Query_Name,Query_Desc,Query_Fields) values ('kept','','')");
  const std::string target = "/tarloquery.zembra?ACTION=delsearch&id=1&k7wwworvane=1";
  const std::vector<Header> without[] = {{},
                                         {{"Sec-Fetch-Site", "none"}},
                                         {{"Sec-Fetch-Site", "cross-site"}, kReferer},
                                         {{"Referer", "http://site.example.evil.example/"}},
                                         {{"Referer", "http://site.example:81/"}}};
  for (const auto& headers : without) {
    const auto answer = site_.get(target, headers);
    EXPECT_EQ(answer->status, 403U);
    EXPECT_TRUE(holds(answer->text(), "请登录本系统，从系统的页面里重新操作"));
  }
  // Authorization is evidence for the JSON interface alone.
  const WireRequest bearer{
      "", "POST", "/TarloQuery.Zembra", {{"Authorization", "Bearer x"}}, "action=delSearch&id=1",
      "", 0};
  EXPECT_EQ(site_.send(bearer)->status, 403U);
  EXPECT_EQ(flag(), "1");
  EXPECT_TRUE(holds(site_.log(),
                    "\"tarloquery delsearch\" refused: user \"1\", nothing shows that a "
                    "page of this site sent it, Sec-Fetch-Site \"none\", Host"))
      << site_.log();
  EXPECT_EQ(site_.get(target, {kReferer})->status, 200U);
  EXPECT_EQ(flag(), "0");
}

TEST_F(SiteTest, AProgramWithATokenNeedsNoEvidence) {
  const Header token{"Authorization", "Bearer x"};
  const auto status = [&](std::vector<Header> headers) {
    return site_.send({"", "POST", "/api/controls/1", std::move(headers), "", "", 0})->status;
  };
  EXPECT_EQ(status({token}), 405U);
  EXPECT_EQ(status({}), 403U);
  EXPECT_EQ(status({token, {"Cookie", "a=b"}}), 403U);  // a browser's
  const auto answer = site_.send({"", "POST", "/api/controls/1", {}, "", "", 0});
  EXPECT_EQ(answer->header("Content-Type"), "application/json; charset=utf-8");
  EXPECT_TRUE(holds(answer->body, "\"cross_site\""));
}

TEST_F(SiteTest, EveryAnswerHasThePolicyOfItsKind) {
  site_.files().add("/assets/tarlo.css", "body{}");
  site_.signInAs("admin");
  const std::string page = "script-src 'self' 'unsafe-inline' 'unsafe-eval'; style-src 'self' ";
  const std::string data = "default-src 'none'", own = "script-src 'nonce-";
  const std::tuple<const char*, unsigned, const std::string&> rows[] = {
      {"/TarloQuery.Zembra?action=getDateTime", 200, page},
      {"/demo/form", 200, own},
      {"/", 200, own},
      {"/sign-in?link=x", 403, own},
      {"/nowhere", 404, own},
      {"/TarloQuery.Zembra?action=x", 404, own},
      {"/TarloQuery.Zembra?action=delSearch&k7wwworvane=1&id=1", 200, page},
      {"/assets/tarlo.css", 200, data},
      {"/healthz", 200, data},
      {"/api/openapi.json", 200, data},
      {"/api/controls/99", 404, data}};
  for (const auto& [target, status, expected] : rows) {
    const auto answer = site_.get(target, {kReferer});
    const std::string policy = answer->header("Content-Security-Policy");
    EXPECT_EQ(answer->status, status) << target;
    EXPECT_TRUE(holds(policy, expected)) << target << policy;
    EXPECT_TRUE(holds(policy, "frame-ancestors 'self'")) << target;
    EXPECT_EQ(policy.find('\n'), std::string::npos) << target;  // one header, not several
    EXPECT_EQ(answer->header("Referrer-Policy"), "same-origin");
    const bool isFile = std::string_view(target).starts_with("/assets");
    EXPECT_EQ(answer->header("Cache-Control").ends_with("no-store"), !isFile) << target;
  }
  EXPECT_NE(site_.get("/sign-out", {kReferer})->header("Content-Security-Policy"), "");
}

// What a browser would refuse to run there.
TEST_F(SiteTest, OwnPagesRunScriptsWithTheNonceOnly) {
  site_.signInAs("admin");
  std::string last;
  for (const char* target : {"/", "/?pane=1", "/?cmdID=0", "/?cmdID=120", "/?cmdID=127",
                             "/?cmdID=99999", "/sign-in", "/nowhere"}) {
    const auto answer = site_.get(target);
    const std::string policy = answer->header("Content-Security-Policy"), text = answer->text();
    const auto at = policy.find("'nonce-");
    ASSERT_NE(at, std::string::npos) << target;
    const std::string nonce = policy.substr(at + 7, 32);
    EXPECT_NE(nonce, last) << target;
    last = nonce;
    std::size_t end = 0;
    for (auto tag = text.find('<'); tag != std::string::npos; tag = text.find('<', end)) {
      end = text.find('>', tag);
      const std::string element = text.substr(tag, end - tag);
      for (const char* inPlace : {" style=", " onclick=", " onload=", " onerror=", "javascript:"})
        EXPECT_FALSE(holds(element, inPlace)) << target << element;
      if (!element.starts_with("<script")) continue;
      EXPECT_TRUE(element.starts_with("<script nonce=\"" + nonce + '"')) << target << element;
      end = text.find("</script>", end);
    }
  }
}

TEST_F(SiteTest, WhatWaitsForWhatAndForWhom) {
  site_.files().add("/assets/a.css", "a{}");
  const auto request = [this](std::string target, std::vector<Header> headers = {}) {
    WireRequest made;
    made.target = std::move(target);
    made.headers = std::move(headers);
    return made;
  };
  for (const char* target : {"/healthz", "/readyz", "/assets/a.css", "/ASSETS/a%2ecss?v=1"})
    EXPECT_EQ(site_.site().laneOf(request(target)), Lane::Immediate) << target;
  for (const char* target : {"/sign-in?link=x", "/sign-out"})
    EXPECT_EQ(site_.site().laneOf(request(target)), Lane::SignIn) << target;
  for (const char* target : {"/", "/assets/b.css", "/healthz/x", "/TarloQuery.Zembra", "/api/"})
    EXPECT_EQ(site_.site().laneOf(request(target)), Lane::Operation) << target;

  // Two sessions of one user, and nobody's.
  site_.signInAs("admin");
  const auto first = site_.site().visitorOf(request("/", {{"Cookie", site_.cookie()}}));
  site_.forgetCookie();
  site_.signInAs("admin");
  const auto second = site_.site().visitorOf(request("/", {{"Cookie", site_.cookie()}}));
  EXPECT_EQ(first.user, std::to_string(site_.userId("admin")));
  EXPECT_EQ(second.user, first.user);
  EXPECT_NE(second.session, first.session);
  EXPECT_FALSE(holds(site_.cookie(), second.session));
  const auto nobody = site_.site().visitorOf(request("/", {{"Cookie", "TARLOSESSION=0"}}));
  EXPECT_EQ(nobody.session + nobody.user, "");
}

TEST_F(SiteTest, CookiesOfTlsStayWithinIt) {
  const std::string token =
      makeSignInLink(site_.database(), site_.userId("admin"), std::chrono::milliseconds(60'000));
  WireRequest request;
  request.method = "GET";
  request.target = "/sign-in?link=" + token;
  request.isSecure = true;
  EXPECT_TRUE(holds(site_.send(request)->header("Set-Cookie"), "; Secure"));
}

TEST_F(SiteTest, NotReadyWithoutADatabase) {
  site_.changeConfig().database = "sqlite:/nonexistent/x.db";
  const auto answer = site_.get("/readyz");
  EXPECT_EQ(answer->status, 503U);
  EXPECT_EQ(answer->body, "not ready: database-no-answer\n");
  EXPECT_EQ(site_.get("/healthz")->status, 200U);
  const auto page = site_.post("/sign-in", "user=admin&password=12345678");
  EXPECT_EQ(page->status, 503U);
  EXPECT_TRUE(holds(page->text(), "test-1"));
  EXPECT_FALSE(holds(page->body, "nonexistent"));
  EXPECT_TRUE(holds(site_.log(), "test-1 \"/sign-in\" failed"));
}

// The boundary alone, over a visit of its own.
class BoundaryTest : public ::testing::Test {
 protected:
  std::string run(const std::function<void(Visit&)>& work) {
    Sessions sessions(std::chrono::minutes(1), 10);
    const ObjectFactories none;
    HttpServer server(none, Charset::Utf8);
    HttpApplication application({});
    database::Registry databases;
    spdlog::logger log("test", std::make_shared<spdlog::sinks::ostream_sink_mt>(log_));
    database::RowTotal rowTotal(1 << 20);
    const VisitContext context{Charset::Utf8, 1000,     false,   sessions, server, application,
                               databases,     rowTotal, 1 << 20, {},       log};
    WireRequest request;
    request.id = "run-7";
    request.target = "/x";
    Visit visit(request, answer_, context);
    runWithin(visit, log, [&] { work(visit); });
    return answer_.body;
  }
  Answer answer_;
  std::ostringstream log_;
};

TEST_F(BoundaryTest, FailuresShowAPlainPage) {
  const std::function<void()> failures[] = {
      [] {
        throw database::DatabaseError(1, "secret text", {"sqlite", 5, "HY000", "secret native"});
      },
      [] { throw RuntimeError(ErrorNumber::TypeMismatch, "secret detail"); },
      [] { throw std::bad_alloc(); }, [] { throw 1; }};
  for (const auto& failure : failures) {
    answer_ = Answer();
    const std::string body = run([&](Visit& visit) {
      visit.response.setHeader("Content-Type", "image/gif");
      visit.response.write("half a page");
      failure();
    });
    EXPECT_EQ(answer_.status, 500U);
    EXPECT_EQ(answer_.header("Content-Type"), "text/html; charset=utf-8");
    EXPECT_TRUE(holds(body, "run-7"));
    EXPECT_FALSE(holds(body, "secret"));
    EXPECT_FALSE(holds(body, "half"));
  }
  for (const char* part : {"run-7 \"/x\" failed: ", "secret text", "sqlite code 5, state HY000",
                           "secret native", "error 13", "secret detail", "unknown kind"})
    EXPECT_TRUE(holds(log_.str(), part)) << part;
}

TEST_F(BoundaryTest, WhatAPageHasWrittenStaysInFrontOfTheNotice) {
  const std::function<void()> fails = [] {
    throw database::DatabaseError(1, "secret text", {"sqlite", 5, "HY000", "secret native"});
  };
  struct Row {
    std::function<void()> failure;
    unsigned status;
  };
  for (const Row& row :
       {Row{fails, 500},
        Row{[] { throw RuntimeError(ErrorNumber::PermissionDenied, "x"); }, 403}}) {
    answer_ = Answer();
    const std::string body = run([&](Visit& visit) {
      visit.response.write("<p>half a page</p>");
      row.failure();
    });
    EXPECT_EQ(answer_.status, row.status);
    EXPECT_TRUE(body.starts_with("<p>half a page</p><div class=\"notice\">\r\n<h3>")) << body;
    EXPECT_TRUE(holds(body, "run-7"));
    EXPECT_FALSE(holds(body, "secret"));
    EXPECT_EQ(answer_.header("Content-Type"), "text/html; charset=utf-8");
    EXPECT_EQ(answer_.header("Cache-Control"), "no-store");
    EXPECT_TRUE(holds(answer_.header("Content-Security-Policy"), "'unsafe-inline'"));
  }
  // Where both have no room the notice stands alone, and where nothing is written as well.
  for (const std::size_t written : {std::size_t{0}, std::size_t{900}}) {
    answer_ = Answer();
    const std::string body = run([&](Visit& visit) {
      visit.response.write(std::string(written, 'x'));
      fails();
    });
    EXPECT_TRUE(body.starts_with("<html")) << body;
    EXPECT_FALSE(holds(body, "xxx"));
  }
}

// A page may say that it saved what the database did not take.
TEST_F(BoundaryTest, WhatWasWrittenOverAnOutageDoesNotStay) {
  const database::DatabaseError full(1, "full",
                                     {"sqlite", 13, "", "full", "", database::Outage::Full});
  for (const bool isSwallowed : {true, false}) {
    answer_ = Answer();
    const std::string body = run([&](Visit& visit) {
      visit.refusals.failed(full);
      visit.response.write("saved");
      if (!isSwallowed) throw full;
      throw RuntimeError(ErrorNumber::TypeMismatch, "later");
    });
    EXPECT_EQ(body.starts_with("saved"), !isSwallowed) << body;
  }
}

TEST_F(BoundaryTest, WhatWasSentStaysAndAnEndIsNoFailure) {
  EXPECT_EQ(run([](Visit& visit) {
              visit.response.write("whole page");
              visit.response.end();
            }),
            "whole page");
  EXPECT_EQ(answer_.status, 200U);
  answer_ = Answer();
  EXPECT_EQ(run([](Visit& visit) {
              visit.response.write("sent;");
              visit.response.flush();
              visit.response.write("kept;");
              throw std::runtime_error("x");
            }),
            "sent;kept;");
  answer_ = Answer();
  run([](Visit& visit) { visit.response.write(std::string(2000, 'x')); });
  EXPECT_EQ(answer_.status, 500U);
}

}  // namespace
}  // namespace tarlo::host::testing
