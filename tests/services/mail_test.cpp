// Mail over a real SMTP server.

#include "services/operations.h"

#include <gtest/gtest.h>
#include <sodium.h>

#include <cstdio>
#include <fstream>

#include "services/page_objects.h"
#include "support/platform_database.h"

namespace tarlo::services {
namespace {

using testing::errorOf;
using testing::holds;
using testing::textOf;

// The server's process: its input ends with this object, and it with its input.
class SmtpServer {
 public:
  SmtpServer() {
    const std::string messages = (folder_.path() / "messages").string();
    const std::string command =
        "exec /usr/bin/python3 '" TARLO_TEST_DATA "/smtp_server.py' > '" + messages + "'";
    input_ = ::popen(command.c_str(), "w");
    for (int tries = 0; tries < 200 && port_.empty(); ++tries) {
      ::usleep(50'000);
      std::ifstream file(messages);
      std::getline(file, port_);
      if (file.eof()) port_.clear();  // not the whole line yet
    }
  }
  ~SmtpServer() { ::pclose(input_); }
  SmtpServer(const SmtpServer&) = delete;
  SmtpServer& operator=(const SmtpServer&) = delete;

  MailServer settings() const { return {"smtp://127.0.0.1:" + port_, "", "", {}}; }
  std::string messages() const {
    std::ifstream file(folder_.path() / "messages");
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
  }

 private:
  testing::TemporaryFolder folder_;
  FILE* input_ = nullptr;
  std::string port_;
};

class MailDatabase : public testing::PlatformDatabase {
 public:
  explicit MailDatabase(MailServer server) {
    server.timeout = std::chrono::seconds(10);
    replaceMail([server] { return makeNewMail(server); });
  }
  void replaceMail(std::function<std::shared_ptr<Object>()> make) {
    local().registerObject("CDONTS.NewMail", std::move(make));
  }
};

// The body that the message carries, out of its transfer encoding.
std::string bodyOf(const std::string& messages) {
  const std::size_t begin = messages.find("\r\n\r\n", messages.find("base64"));
  if (begin == std::string::npos) return "";
  std::string text(messages.size(), '\0');
  std::size_t length = 0;
  const char* start = messages.data() + begin + 4;
  sodium_base642bin(reinterpret_cast<unsigned char*>(text.data()), text.size(), start,
                    messages.size() - begin - 4, "\r\n", &length, nullptr,
                    sodium_base64_VARIANT_ORIGINAL);
  text.resize(length);
  return text;
}

TEST(Mail, PaymentGoesFromTheConfiguredSender) {
  const SmtpServer server;
  MailDatabase data(server.settings());
  data.setApplication("mailSender", "pay@example.com");
  data.setApplication("mailTelephone", "0512-1");
  data.setApplication("mailComplaintsTelephone", "0512-2");
  data.setApplication("mailCompany", "甲<公司>");
  Variant body("您好");
  EXPECT_EQ(textOf(SendPayment(data.page(), "a@example.com; b@example.com",
                               "付款\r\nBcc: evil@example.com", body)),
            "1");
  const std::string messages = server.messages();
  EXPECT_TRUE(holds(messages, "from pay@example.com to a@example.com b@example.com"));
  // The subject's line end is gone, so no header of the caller's own stands there.
  EXPECT_FALSE(holds(messages, "\nBcc:"));
  EXPECT_TRUE(holds(messages, "\r\nSubject: =?UTF-8?B?5LuY5qy+QmNjOiBldmlsQGV4YW1wbGUuY29t?=\r\n"))
      << messages;
  EXPECT_TRUE(holds(messages, "text/html; charset=utf-8"));
  EXPECT_EQ(bodyOf(messages), textOf(body));  // the closing stands in the caller's variable too
  for (const char* part :
       {"您好<br><br>&nbsp; &nbsp; &nbsp; &nbsp; （您的所付费用以我们最终确认费用为准）<br>",
        "0512-1", "0512-2", "甲&lt;公司&gt;<br>", "年", "月"}) {
    EXPECT_TRUE(holds(textOf(body), part)) << part;
  }
}

TEST(Mail, APasswordGoesFromThePolicysAddress) {
  const SmtpServer server;
  MailDatabase data(server.settings());
  data.execute(
      "insert into Zembra_Policy (Policy_Name,Policy_ParaB) values "
      "('系统基本参数','system@example.com')");
  Variant body("x");
  EXPECT_EQ(textOf(SendPassWordEmail(data.page(), "a@example.com", "s", body)), "1");
  EXPECT_TRUE(holds(server.messages(), "from system@example.com to a@example.com"));
  EXPECT_TRUE(holds(textOf(body),
                    "x<br><br>&nbsp; &nbsp; &nbsp; &nbsp; 请您登录后立即修改密码<br>"
                    "&nbsp; &nbsp;  &nbsp; &nbsp; 如果仍然无法登录，请向系统管理员寻求帮助<br>"
                    " &nbsp; &nbsp; &nbsp; &nbsp; Zembra 系统密码取回时间 ： "));
}

// Keeps what is done with it, and what stood in the body when it was addressed.
struct RecordingMail : Object {
  explicit RecordingMail(const Variant& given) : body(given) {}
  void put(std::string_view name, const Variant& value) override {
    const bool isBody = name == "Body";
    calls += std::string(name) + "=" + (isBody ? "" : textOf(value)) + ";";
    if (name == "Subject") bodyWhenAddressed = textOf(body);
    if (isBody) {
      EXPECT_EQ(textOf(value), textOf(body));
    }
  }
  Variant call(std::string_view name, std::span<Variant>) override {
    calls += std::string(name) + ";";
    return {};
  }
  const Variant& body;  // the caller's variable
  std::string calls, bodyWhenAddressed;
};

TEST(Mail, IsMadeAndAddressedBeforeTheClosingIsAppended) {
  struct Row {
    Variant (*send)(Page&, const Variant&, const Variant&, Variant&);
    const char* sender;
  };
  for (const Row& row : {Row{SendPayment, "pay@example.com"}, Row{SendPassWordEmail, "0"}}) {
    MailDatabase data({});
    data.setApplication("mailSender", "pay@example.com");
    Variant body("x");
    const auto mail = std::make_shared<RecordingMail>(body);
    data.replaceMail([mail] { return mail; });
    EXPECT_EQ(textOf(row.send(data.page(), "a@example.com", "s", body)), "1");
    EXPECT_EQ(mail->calls, "From=" + std::string(row.sender) +
                               ";To=a@example.com;Subject=s;Body=;BodyFormat=0;MailFormat=0;Send;");
    EXPECT_EQ(mail->bodyWhenAddressed, "x");
    // Without the component nothing is appended.
    data.replaceMail([]() -> std::shared_ptr<Object> {
      throw RuntimeError(ErrorNumber::CannotCreateObject, "CDONTS.NewMail");
    });
    Variant unsent("y");
    EXPECT_EQ(errorOf([&] { row.send(data.page(), "a@example.com", "s", unsent); }), 429);
    EXPECT_EQ(textOf(unsent), "y");
  }
}

TEST(Mail, WhatCannotBeSentRaises) {
  const SmtpServer server;
  MailDatabase data(server.settings());
  MailDatabase nowhere({"smtp://127.0.0.1:1", "", "", {}});
  MailDatabase unset({});
  Variant body("x");
  const auto send = [&](MailDatabase& from, const char* to) {
    from.setApplication("mailSender", "pay@example.com");
    return errorOf([&] { SendPayment(from.page(), to, "s", body); });
  };
  EXPECT_EQ(send(data, "nobody@example.com"), 31);
  EXPECT_EQ(send(data, " ; "), 5);
  EXPECT_EQ(send(nowhere, "a@example.com"), 31);
  EXPECT_EQ(send(unset, "a@example.com"), 70);
  EXPECT_FALSE(holds(server.messages(), "end of message"));
}

}  // namespace
}  // namespace tarlo::services
