// Who may come in: passwords, one-time links, trusted headers, and who is kept out.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <atomic>
#include <thread>

#include "host/sign_in/passwords.h"
#include "host/site/sign_in_pages.h"
#include "site_support.h"

namespace tarlo::host::testing {
namespace {

using Outcome = SignIn::Outcome;
using std::chrono::milliseconds;

constexpr const char* kPassword = "正确的密码 8";

class SignInTest : public ::testing::Test {
 protected:
  void SetUp() override {
    storePasswordHash(site_.database(), site_.userId("admin"), hashPassword(kPassword));
  }
  TestSite site_;
};

TEST_F(SignInTest, TakesTheRightPasswordOnly) {
  const std::tuple<std::string, std::string, Outcome> rows[] = {
      {"admin", kPassword, Outcome::Done},
      {"ADMIN", kPassword, Outcome::Done},
      {"admin", "正确的密码 9", Outcome::Refused},
      {"admin", "", Outcome::Refused},
      {"admin", std::string(kPassword) + std::string(300, ' '), Outcome::Refused},
      {"shenwy", "", Outcome::Refused},  // has no password
      {"nobody", kPassword, Outcome::Refused},
      {"", kPassword, Outcome::Refused},
      {"' or 1=1 --", kPassword, Outcome::Refused},
      {"a\nb", kPassword, Outcome::Refused},
      {std::string(5000, 'a'), kPassword, Outcome::Refused}};
  int address = 0;
  for (const auto& [login, password, outcome] : rows)
    EXPECT_EQ(site_.signIn().byPassword(login, password, std::to_string(++address)).outcome,
              outcome)
        << login;
  EXPECT_TRUE(holds(site_.log(), "failed: user \"nobody\""));
  EXPECT_FALSE(holds(site_.log(), kPassword));
  storePasswordHash(site_.database(), site_.userId("admin"), hashPassword("another one"));
  EXPECT_EQ(site_.signIn().byPassword("admin", kPassword, "a").outcome, Outcome::Refused);
  EXPECT_EQ(site_.signIn().byPassword("admin", "another one", "a").outcome, Outcome::Done);
}

TEST_F(SignInTest, KeepsOutWhoFailsTooOften) {
  site_.changeConfig().signInAttempts = 2;
  SignIn& signIn = site_.signIn();
  // A user from many addresses, however the name is written, then an address with many users.
  EXPECT_EQ(signIn.byPassword("admin", "x", "1").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("ＡDmin  ", "x", "2").outcome, Outcome::Refused);
  for (const char* writing : {"admin", "admin ", "ａdmin"})
    EXPECT_EQ(signIn.byPassword(writing, kPassword, "3").outcome, Outcome::Throttled) << writing;
  EXPECT_EQ(signIn.byPassword("guqy", "x", "4").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("nobody", "x", "::ffff:4").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("duxm", "x", "4").outcome, Outcome::Throttled);
  EXPECT_EQ(signIn.byPassword("ＮOBODY ", "x", "5").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("nobody", "x", "6").outcome, Outcome::Throttled);
}

TEST_F(SignInTest, SuccessGivesTheCountBack) {
  site_.changeConfig().signInAttempts = 2;
  SignIn& signIn = site_.signIn();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(signIn.byPassword("admin", "x", std::to_string(i)).outcome, Outcome::Refused);
    EXPECT_EQ(signIn.byPassword("admin", kPassword, "own").outcome, Outcome::Done);
  }
  // What others have failed with from the same address stays.
  EXPECT_EQ(signIn.byPassword("nobody", "x", "own").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("admin", kPassword, "own").outcome, Outcome::Done);
  EXPECT_EQ(signIn.byPassword("nobody", "x", "own").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("admin", kPassword, "own").outcome, Outcome::Throttled);
}

TEST_F(SignInTest, OfGuessesAtTheSameTimeNoMorePassThanInARow) {
  site_.changeConfig().signInAttempts = 3;
  SignIn& signIn = site_.signIn();
  std::atomic<int> looked{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&, i] {
      const auto result = signIn.byPassword("admin", "guess", std::to_string(i));
      looked += result.outcome == Outcome::Refused;
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(looked, 3);
}

TEST_F(SignInTest, LinksAndTokensAreCountedApartAndAGoodOnePasses) {
  site_.changeConfig().signInAttempts = 2;
  SignIn& signIn = site_.signIn();
  const int id = site_.userId("admin");
  const std::string token = makeApiToken(site_.database(), id, milliseconds(60'000));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(signIn.byPassword("nobody " + std::to_string(i), "x", "a").outcome, Outcome::Refused);
    EXPECT_EQ(signIn.byToken("x", "a").outcome, Outcome::Refused);
  }
  EXPECT_EQ(signIn.byPassword("admin", kPassword, "a").outcome, Outcome::Throttled);
  EXPECT_EQ(signIn.byToken("x", "a").outcome, Outcome::Throttled);
  EXPECT_EQ(signIn.byToken(token, "a").outcome, Outcome::Done);
  EXPECT_EQ(signIn.byLink("x", "a").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byLink("x", "a").outcome, Outcome::Refused);
  const std::string link = makeSignInLink(site_.database(), id, milliseconds(60'000));
  EXPECT_EQ(signIn.byLink("x", "a").outcome, Outcome::Throttled);
  EXPECT_EQ(signIn.byLink(link, "a").outcome, Outcome::Done);
  EXPECT_EQ(signIn.byLink(link, "a").outcome, Outcome::Throttled);
}

TEST(Throttle, ForgetsAfterTheWindowAndStaysBounded) {
  auto now = Throttle::Clock::time_point{} + std::chrono::hours(100);
  Throttle throttle(2, std::chrono::seconds(60), [&] { return now; });
  EXPECT_TRUE(throttle.take({"a", "b"}));
  EXPECT_TRUE(throttle.take({"a"}));
  EXPECT_FALSE(throttle.take({"a"}));
  // A refused attempt counts for none of its keys.
  EXPECT_FALSE(throttle.take({"b", "a"}));
  EXPECT_TRUE(throttle.take({"b"}));
  throttle.giveBack({"a", "unknown"});
  EXPECT_TRUE(throttle.take({"a"}));
  now += std::chrono::seconds(61);
  EXPECT_TRUE(throttle.take({"a"}));
  EXPECT_TRUE(throttle.take({"a"}));
  for (std::size_t i = 0; i < Throttle::kMostKeys + 10; ++i)
    throttle.take({"made up " + std::to_string(i)});
  EXPECT_FALSE(throttle.take({"a"}));
  throttle.forget("a");
  EXPECT_TRUE(throttle.take({"a"}));
}

// How long a change of the user's row goes unnoticed is the configuration's; here not at all.
class StaleSessionTest : public SignInTest {
 protected:
  StaleSessionTest() {
    Config& config = site_.changeConfig();
    config.sessionCheck = milliseconds(0);
    file_ = config.database.substr(config.database.find(':') + 1);
  }
  // With the engine's own means, as the platform's other programs change its tables.
  void run(const std::string& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file_.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle);
    sqlite3_close(handle);
  }
  unsigned page(const std::string& action = "getDateTime") {
    return site_.get("/TarloQuery.Zembra?action=" + action, {kReferer_})->status;
  }

  const Header kReferer_{"Referer", "http://site.example/"};
  std::string file_;
};

TEST_F(StaleSessionTest, EndsWhenTheUserIsNoLongerTheSame) {
  const std::string user = std::to_string(site_.userId("guqy"));
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"update Zembra_User set User_user='x'", "update Zembra_User set User_user='guqy'", false},
      {"update Zembra_User set User_RankID=null", "update Zembra_User set User_RankID=3", false},
      {"update Zembra_User set User_user=''", "update Zembra_User set User_user='guqy'", true},
      {"delete from Zembra_User", "", true}};
  for (const auto& [change, undo, isGone] : rows) {
    site_.signInAs("guqy");
    run("update Zembra_User set User_DeptID=User_DeptID+1 where User_ID=" + user);
    EXPECT_EQ(page(), 200U) << change;
    const std::string token = makeApiToken(site_.database(), std::stoi(user), milliseconds(60'000));
    const std::string cookie = site_.cookie();
    run(change + std::string(" where User_ID=") + user);
    const auto answer = site_.get("/");
    EXPECT_TRUE(holds(answer->text(), "password")) << change;
    EXPECT_TRUE(holds(answer->header("Set-Cookie"), "Max-Age=0")) << change;
    site_.forgetCookie();
    EXPECT_EQ(site_.get("/api/controls/1", {{"Cookie", cookie}})->status, 401U) << change;
    EXPECT_EQ(userOfToken(site_.database(), token).has_value(), !isGone) << change;
    if (*undo != '\0') run(undo + std::string(" where User_ID=") + user);
  }
  EXPECT_TRUE(holds(site_.log(), "the session of \"guqy\" (user " + user + ") ended: name, rank"));
  EXPECT_TRUE(holds(site_.log(), "there is no such user any longer"));
}

TEST_F(StaleSessionTest, ANewPasswordEndsWhatTheOldOneOpened) {
  const int id = site_.userId("admin");
  site_.signInAs("admin");
  const std::string token = makeApiToken(site_.database(), id, milliseconds(60'000));
  const std::string link = makeSignInLink(site_.database(), id, milliseconds(60'000));
  EXPECT_EQ(page(), 200U);
  storePasswordHash(site_.database(), id, "another hash");
  EXPECT_EQ(page(), 403U);
  EXPECT_FALSE(userOfToken(site_.database(), token).has_value());
  EXPECT_FALSE(useSignInLink(site_.database(), link).has_value());
  site_.signInAs("admin");
  EXPECT_EQ(page(), 200U);
}

TEST_F(StaleSessionTest, IsLookedAtNoOftenerThanConfigured) {
  site_.changeConfig().sessionCheck = std::chrono::hours(1);
  site_.signInAs("guqy");
  run("delete from Zembra_User where User_user='guqy'");
  EXPECT_EQ(page(), 200U);
  const auto now = SessionData::Clock::now();
  SessionData session("a", "b");
  session.setStamp("x");
  EXPECT_FALSE(session.takeCheck(now, milliseconds(60'000)));
  EXPECT_TRUE(session.takeCheck(now + milliseconds(70'000), milliseconds(60'000)));
  EXPECT_FALSE(session.takeCheck(now + milliseconds(70'000), milliseconds(60'000)));
}

// What a user may do is read anew at every request, within a session too.
TEST_F(StaleSessionTest, RightsAreThoseOfTheMoment) {
  site_.signInAs("admin");
  EXPECT_EQ(page("getQueryTable"), 200U);
  run("update Zembra_Permission set permission_forbid=1");
  EXPECT_EQ(page("getQueryTable"), 403U);
}

TEST_F(SignInTest, ALinkWorksOnceAndInTime) {
  const int id = site_.userId("guqy");
  const std::string token = makeSignInLink(site_.database(), id, milliseconds(60'000));
  EXPECT_FALSE(useSignInLink(site_.database(), token.substr(1)).has_value());
  EXPECT_FALSE(useSignInLink(site_.database(), tokenHash(token)).has_value());
  EXPECT_EQ(useSignInLink(site_.database(), token)->id, id);
  EXPECT_FALSE(useSignInLink(site_.database(), token).has_value());
  const std::string old = makeSignInLink(site_.database(), id, milliseconds(-2000));
  EXPECT_FALSE(useSignInLink(site_.database(), old).has_value());
  EXPECT_FALSE(useSignInLink(site_.database(), "' or ''='").has_value());
}

TEST_F(SignInTest, OfManyWithOneLinkOneGetsIn) {
  const std::string token =
      makeSignInLink(site_.database(), site_.userId("guqy"), milliseconds(60'000));
  std::atomic<int> in{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 6; ++i)
    threads.emplace_back([&] { in += useSignInLink(site_.database(), token).has_value(); });
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(in, 1);
}

TEST_F(SignInTest, FormBeginsANewSessionAndLeadsOn) {
  const auto wrong = site_.post("/sign-in", "user=admin&password=x&next=/TarloQuery.Zembra");
  EXPECT_EQ(wrong->status, 403U);
  EXPECT_EQ(site_.cookie(), "");
  const std::string form = "user=admin&password=%E6%AD%A3%E7%A1%AE%E7%9A%84%E5%AF%86%E7%A0%81+8";
  const auto right = site_.post("/sign-in", form + "&next=/a%3Fb=1");
  EXPECT_EQ(right->status, 303U);
  EXPECT_EQ(right->header("Location"), "/a?b=1");
  const std::string cookie = right->header("Set-Cookie");
  for (const char* part : {"TARLOSESSION=", "Path=/", "HttpOnly", "SameSite=Lax"})
    EXPECT_TRUE(holds(cookie, part)) << part;
  EXPECT_FALSE(holds(cookie, "Secure"));
  const std::string first = site_.cookie();
  EXPECT_EQ(site_.post("/sign-in", form + "&next=//evil.example")->header("Location"), "/");
  EXPECT_NE(site_.cookie(), first);
  // The id from before the second sign-in is worth nothing.
  site_.forgetCookie();
  EXPECT_EQ(site_
                .get("/TarloQuery.Zembra?action=getDateTime",
                     {{"Cookie", first}, {"Referer", "http://site.example/"}})
                ->status,
            403U);
}

TEST_F(SignInTest, SignOutEndsTheSession) {
  site_.signInAs("admin");
  const std::string cookie = site_.cookie();
  const auto out = site_.post("/sign-out", "");
  EXPECT_EQ(out->status, 303U);
  EXPECT_TRUE(holds(out->header("Set-Cookie"), "Max-Age=0"));
  site_.forgetCookie();
  EXPECT_EQ(site_.get("/TarloQuery.Zembra?action=getDateTime", {{"Cookie", cookie}})->status, 403U);
}

TEST_F(SignInTest, AHeadRequestLeavesALinkAlone) {
  const std::string token =
      makeSignInLink(site_.database(), site_.userId("guqy"), milliseconds(60'000));
  site_.send({"", "HEAD", "/sign-in?link=" + token, {}, "", "", 0});
  EXPECT_EQ(site_.get("/sign-in?link=" + token)->status, 303U);
  EXPECT_EQ(site_.get("/sign-in?link=" + token)->status, 403U);
}

TEST_F(SignInTest, TrustsAHeaderFromNamedAddressesOnly) {
  const auto statusFrom = [&](const char* address, const char* header, const char* user) {
    site_.forgetCookie();
    site_.remoteAddress = address;
    return site_
        .get("/TarloQuery.Zembra?action=getDateTime",
             {{header, user}, {"Referer", "http://site.example/"}})
        ->status;
  };
  EXPECT_EQ(statusFrom("10.0.0.1", "X-User", "admin"), 403U);
  site_.changeConfig().trustedHeader = "X-User";
  site_.changeConfig().trustedAddresses = {"10.0.0.1"};
  EXPECT_EQ(statusFrom("10.0.0.1", "X-User", "admin"), 200U);
  EXPECT_EQ(statusFrom("::ffff:10.0.0.1", "x-user", "admin"), 200U);
  EXPECT_EQ(statusFrom("10.0.0.2", "X-User", "admin"), 403U);
  EXPECT_EQ(statusFrom("10.0.0.1", "X-User", "nobody"), 403U);
  EXPECT_EQ(statusFrom("10.0.0.1", "X-Other", "admin"), 403U);
}

TEST(LocalAddress, LeadsToNoOtherSite) {
  for (const char* address : {"//evil", "/\\evil", "http://evil", "javascript:x", "", "a", "/\t/e",
                              "/a\r\nSet-Cookie: x"})
    EXPECT_EQ(localAddress(address), "") << address;
  EXPECT_EQ(localAddress("/a?b=//c"), "/a?b=//c");
}

}  // namespace
}  // namespace tarlo::host::testing
