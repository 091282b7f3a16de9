// Pages whose dialog component fails: the operation goes on to its last step and raises nothing.

#include "scheme/dialog.h"

#include <gtest/gtest.h>

#include "database/error.h"
#include "scheme/operations.h"
#include "support/wizard_support.h"

namespace tarlo::scheme {
namespace {

using tarlo::testing::WizardDatabase;

// Writes what is done with it as its like does, and then fails.
class RefusingObject : public tarlo::testing::RecordingObject {
 public:
  using RecordingObject::RecordingObject;
  void put(std::string_view name, const Variant& value) override {
    RecordingObject::put(name, value);
    throw RuntimeError(ErrorNumber::NoSuchMember, name);
  }
  Variant call(std::string_view name, std::span<Variant> arguments) override {
    RecordingObject::call(name, arguments);
    throw RuntimeError(ErrorNumber::NoSuchMember, name);
  }
};

// What the database refused.
struct Failures : database::RefusalLog {
  void refused(std::string_view, std::string_view) noexcept override {}
  void failed(const database::DatabaseError& error) noexcept override {
    statements.push_back(error.native().statement);
  }
  std::vector<std::string> statements;
};

struct Operation {
  void (*run)(Page& page);
  std::string progId;
};
const Operation kOperations[] = {{addSearchDlg, "TarloDialog.WebDialog"},
                                 {showSearchDlg, "TarloDialog.SingleDialog"}};

TEST(Dialog, EveryStepIsTakenWhateverTheDialogRefuses) {
  for (const Operation& operation : kOperations) {
    WizardDatabase data;
    const auto run = [&] { operation.run(data.page()); };
    const std::string expected = data.writtenBy(run);
    ASSERT_TRUE(expected.ends_with("dialog.writeDialog()\r\n")) << operation.progId;
    data.local().registerObject(
        operation.progId, [&] { return std::make_shared<RefusingObject>(data.page(), "dialog"); });
    EXPECT_EQ(data.writtenBy(run), expected) << operation.progId;
  }
}

TEST(Dialog, WithoutADialogTheStatementsAreRunAllTheSame) {
  for (const Operation& operation : kOperations) {
    WizardDatabase data;
    data.local().registerObject(operation.progId, [&]() -> std::shared_ptr<Object> {
      throw RuntimeError(ErrorNumber::CannotCreateObject, operation.progId);
    });
    data.local().session()["usrICID"] = "x";  // no help can be found
    data.ask("id", "x");
    Failures failures;
    data.page().statements.refusals = &failures;
    EXPECT_EQ(data.writtenBy([&] { operation.run(data.page()); }), "") << operation.progId;
    EXPECT_EQ(failures.statements.size(), 2u) << operation.progId;
  }
}

TEST(Dialog, TheNameOfASchemeIsAskedForInFrontOfItsTitles) {
  WizardDatabase data;
  data.ask("id", "x");
  Failures failures;
  data.page().statements.refusals = &failures;
  showSearchDlg(data.page());
  const std::vector<std::string> expected = {
      "select Query_Name from Zembra_Query_Main where Query_ID=x",
      "SELECT Query_Fields FROM Zembra_Query_Main where Query_ID=x"};
  EXPECT_EQ(failures.statements, expected);
}

}  // namespace
}  // namespace tarlo::scheme
