// Who may come in: passwords, one-time links, trusted headers, and who is kept out.

#include <gtest/gtest.h>

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
  struct Row {
    std::string login, password;
    Outcome outcome;
  };
  const Row rows[] = {{"admin", kPassword, Outcome::Done},
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
  for (const Row& row : rows)
    EXPECT_EQ(site_.signIn().byPassword(row.login, row.password, std::to_string(++address)).outcome,
              row.outcome)
        << row.login;
  EXPECT_NE(site_.log().find("failed: user \"nobody\""), std::string::npos);
  EXPECT_EQ(site_.log().find(kPassword), std::string::npos);
  storePasswordHash(site_.database(), site_.userId("admin"), hashPassword("another one"));
  EXPECT_EQ(site_.signIn().byPassword("admin", kPassword, "a").outcome, Outcome::Refused);
  EXPECT_EQ(site_.signIn().byPassword("admin", "another one", "a").outcome, Outcome::Done);
}

TEST_F(SignInTest, KeepsOutWhoFailsTooOften) {
  site_.changeConfig().signInAttempts = 2;
  SignIn& signIn = site_.signIn();
  // A user from many addresses, then an address with many users.
  EXPECT_EQ(signIn.byPassword("admin", "x", "1").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("Admin", "x", "2").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("admin", kPassword, "3").outcome, Outcome::Throttled);
  EXPECT_EQ(signIn.byPassword("guqy", "x", "4").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byLink("x", "4").outcome, Outcome::Refused);
  EXPECT_EQ(signIn.byPassword("duxm", "x", "4").outcome, Outcome::Throttled);
  EXPECT_EQ(signIn.byLink("x", "4").outcome, Outcome::Throttled);
}

TEST(Throttle, ForgetsAfterTheWindowAndStaysBounded) {
  auto now = Throttle::Clock::time_point{} + std::chrono::hours(100);
  Throttle throttle(2, std::chrono::seconds(60), [&] { return now; });
  throttle.noteFailure("a");
  throttle.noteFailure("a");
  EXPECT_TRUE(throttle.isBlocked("a"));
  now += std::chrono::seconds(61);
  EXPECT_FALSE(throttle.isBlocked("a"));
  throttle.noteFailure("a");
  EXPECT_FALSE(throttle.isBlocked("a"));
  throttle.noteFailure("a");
  for (std::size_t i = 0; i < Throttle::kMostKeys + 10; ++i)
    throttle.noteFailure("made up " + std::to_string(i));
  EXPECT_TRUE(throttle.isBlocked("a"));
  throttle.forget("a");
  EXPECT_FALSE(throttle.isBlocked("a"));
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
    EXPECT_NE(cookie.find(part), std::string::npos) << part;
  EXPECT_EQ(cookie.find("Secure"), std::string::npos);
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
  EXPECT_NE(out->header("Set-Cookie").find("Max-Age=0"), std::string::npos);
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
