#pragma once
// A menu with its permissions, directories and schemes, and siblings that write what is done with
// them into the page, in order.

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "frame/context_object.h"
#include "support/database_page.h"
#include "text/fold.h"
#include "variant/convert.h"

namespace tarlo::testing {

// A fixture that has a database of its own for each test.
template <class Database>
struct On : ::testing::Test {
  Database data;
};

inline constexpr std::string_view kPageTables = R"sql(
CREATE TABLE Zembra_Menu (Menu_ID int, Menu_Name nvarchar(100), Menu_Href nvarchar(500),
  Menu_ParentID int, Menu_AddType int DEFAULT 0, Menu_AddValue int, Menu_Desc nvarchar(500),
  Menu_Order int DEFAULT 0)
GO
CREATE TABLE Zembra_Permission (Permission_UserID int, Permission_MenuID int,
  permission_forbid int DEFAULT 0)
GO
CREATE TABLE Zembra_WorkFlow_Custom (Zembra_ID int, WF_SameFlag int)
GO
CREATE TABLE Zembra_Dict_TableDir (Zembra_ID int, TD_Name nvarchar(100), Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Zembra_Query_Main (Query_ID int, Query_Name nvarchar(200), Query_Desc nvarchar(max),
  Query_System int DEFAULT 0, Query_Dic int, Query_IsDataAlert int DEFAULT 0,
  Zembra_WriteDate datetime, Zembra_Flag int DEFAULT 1)
GO
insert into Zembra_Menu (Menu_ID,Menu_Name,Menu_Href,Menu_ParentID,Menu_AddType,Menu_AddValue,
  Menu_Desc,Menu_Order) values
  (100,N'系统设计',null,0,0,null,N'工具',1),(101,N'查询方案','/q',100,0,null,N'it''s',2),
  (102,N'控件方案','/c',100,1,7,null,1),(103,N'更多','',100,0,null,N'夹',3),
  (104,N'帮助','/h',103,0,null,N'说明',1),(105,N'空',null,103,0,null,null,2),
  (106,N'禁止','/f',100,0,null,null,4),(107,'','/n',100,0,null,null,5),
  (205,N'流程','/w',204,1,8,null,1)
GO
insert into Zembra_Permission (Permission_UserID,Permission_MenuID,permission_forbid) values
  (1,101,0),(1,102,0),(1,103,0),(1,104,0),(1,105,0),(1,106,1),(1,107,0),(2,205,0)
GO
insert into Zembra_WorkFlow_Custom (Zembra_ID,WF_SameFlag) values (1,7),(3,7),(2,7)
GO
insert into Zembra_Dict_TableDir (Zembra_ID,TD_Name,Zembra_Flag) values
  (5,N' 销售 ',1),(6,N'旧',0),(7,N'采购',1)
GO
insert into Zembra_Query_Main (Query_ID,Query_Name,Query_System,Query_Dic,Query_IsDataAlert,
  Zembra_Flag) values (1,'user',0,5,0,1),(2,'system',1,7,0,1),(3,'no directory',0,99,0,1),
  (4,'deleted',0,5,0,0),(5,'alert',0,5,1,1)
GO
)sql";

// Writes each assignment and call into the page, one line each; parts of the page's context stand
// there by their names. WriteMenu gives a text.
class RecordingObject : public Object {
 public:
  RecordingObject(Page& page, std::string name) : page_(page), name_(std::move(name)) {}

  Variant get(std::string_view name, std::span<Variant>) override {
    return text::equalsNoCase(name, "title") ? title_ : Object::get(name);
  }
  void put(std::string_view name, const Variant& value) override {
    if (text::equalsNoCase(name, "title")) title_ = value;
    page_.response.write(name_ + "." + std::string(name) + " = " + shown(value) + "\r\n");
  }
  Variant call(std::string_view name, std::span<Variant> arguments) override {
    std::string line = name_ + "." + std::string(name) + "(";
    for (const Variant& argument : arguments) {
      line += (&argument == arguments.data() ? "" : ", ") + shown(argument);
    }
    page_.response.write(line + ")\r\n");
    return name == "WriteMenu" ? Variant("[the menu]") : Variant();
  }

 private:
  std::string shown(const Variant& value) const {
    if (value.isText()) return "<" + value.text() + ">";
    if (!value.isObject()) return variant::toText(value);
    const auto context = std::dynamic_pointer_cast<frame::ContextObject>(value.object());
    if (!context || &context->page() != &page_) return "another object";
    constexpr std::array kParts = {"Scripting", "Application", "Request",
                                   "Response",  "Server",      "Session"};
    return kParts.at(static_cast<std::size_t>(context->part()));
  }

  Page& page_;
  std::string name_;
  Variant title_;
};

class PageDatabase : public DatabasePage {
 public:
  PageDatabase() {
    runScript(kPageTables);
    local().session()["usrID"] = 1;
    local().session()["usrICID"] = 101;
    registerRecorder("TarloTable.table", "grid");
    registerRecorder("Tarlo.menu", "menu");
  }

  void setSession(std::string_view key, const Variant& value) { page().session.put(key, value); }

 private:
  void registerRecorder(std::string progId, std::string name) {
    local().registerObject(std::move(progId), [this, name] {
      return std::make_shared<RecordingObject>(page(), name);
    });
  }
};

}  // namespace tarlo::testing
