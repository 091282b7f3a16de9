// Sessions in memory: how long they live and how many there are.

#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "host/context/sessions.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

using std::chrono::minutes;

TEST(Sessions, EndWhenIdleAndNotBefore) {
  auto now = Sessions::Clock::time_point{} + minutes(1000);
  Sessions sessions(minutes(30), 10, [&] { return now; });
  const std::string id = sessions.create()->id();
  for (int i = 0; i < 3; ++i) {
    now += minutes(29);
    EXPECT_NE(sessions.find(id), nullptr);
  }
  now += minutes(31);
  EXPECT_EQ(sessions.find(id), nullptr);
  EXPECT_EQ(sessions.count(), 0U);
}

TEST(Sessions, TheLongestIdleMakesRoom) {
  Sessions sessions(minutes(30), 3);
  std::vector<std::string> ids;
  for (int i = 0; i < 3; ++i) ids.push_back(sessions.create()->id());
  sessions.find(ids[0]);
  sessions.create();
  EXPECT_EQ(sessions.count(), 3U);
  EXPECT_NE(sessions.find(ids[0]), nullptr);
  EXPECT_EQ(sessions.find(ids[1]), nullptr);
}

TEST(Sessions, IdsAreLongAndNeverTheSame) {
  Sessions sessions(minutes(30), 1000);
  std::set<std::string> ids;
  for (int i = 0; i < 500; ++i) ids.insert(sessions.create()->id());
  EXPECT_EQ(ids.size(), 500U);
  EXPECT_EQ(ids.begin()->size(), 64U);
  EXPECT_EQ(sessions.find(""), nullptr);
  sessions.end(*ids.begin());
  sessions.end("unknown");
  EXPECT_EQ(sessions.find(*ids.begin()), nullptr);
}

TEST(Sessions, AreSharedBetweenThreads) {
  Sessions sessions(minutes(30), 50);
  const auto kept = sessions.create();
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 300; ++i) {
        sessions.end(sessions.create()->id());
        if (const auto found = sessions.find(kept->id())) found->put("key" + std::to_string(t), i);
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(sessions.count(), 1U);
  EXPECT_EQ(variant::spliced(kept->get("KEY3")), "299");
}

TEST(HttpSession, IsMadeWithItsFirstValue) {
  int made = 0;
  HttpSession session(nullptr, [&] {
    ++made;
    return std::make_shared<SessionData>("secret", "id");
  });
  EXPECT_TRUE(session.get("usrID").isEmpty());
  EXPECT_EQ(session.id(), "");
  session.put("a", 1);
  session.put("b", 2);
  EXPECT_EQ(made, 1);
  EXPECT_EQ(session.id(), "id");
}

}  // namespace
}  // namespace tarlo::host
