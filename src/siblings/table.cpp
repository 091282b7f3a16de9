#include <fmt/format.h>

#include <algorithm>

#include "frame/data.h"
#include "frame/member_table.h"
#include "frame/statement_scope.h"
#include "siblings/components.h"
#include "siblings/grid_rows.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::siblings {
namespace {

using text::sqlText;
using variant::spliced;
using variant::toInt32;

constexpr int kMostPageSize = 500;

std::vector<std::string> captionsOf(std::string_view title) {
  std::vector<std::string> captions;
  for (const std::string_view caption : text::split(title, "|")) captions.emplace_back(caption);
  return captions;
}

std::string titleOf(const GridDefinition& grid) {
  std::vector<std::string_view> captions(grid.captions.begin(), grid.captions.end());
  return text::join(captions, "|");
}

bool isScriptName(std::string_view name) {
  const auto isPart = [](char c) { return text::isLetterOrDigit(c) || c == '_'; };
  return !name.empty() && !text::isDigit(name[0]) && std::ranges::all_of(name, isPart);
}

// "95%", "600" and "600px" as they are; anything else does not reach the page's style.
std::string widthOf(std::string_view text) {
  text = text::trim(text);
  const auto digits = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::string_view unit = text.substr(digits);
  if (digits == 0 || (unit != "%" && unit != "px" && !unit.empty())) return "100%";
  return std::string(text) + (unit.empty() ? "px" : "");
}

std::shared_ptr<const PreparedGrid> prepare(Page& page, const SessionGrids& grids,
                                            const GridDefinition& grid) {
  if (auto prepared = grids.preparedFor(grid)) return prepared;
  database::Lease connection = frame::borrowConnection(page);
  return std::make_shared<PreparedGrid>(grid, connection->catalogue());
}

// One row for each list that a session draws; one that is drawn again at once keeps its row. Beyond
// the bound the session's newest row is written again and no older one, since readers take the row
// with the highest number.
void noteDrawn(Page& page, const std::string& sql, const std::string& ordered) {
  const frame::StatementScope scope(page,
                                    {.reads = {}, .writes = {database::TableGroup::DrawnGrids}});
  const frame::DispensableScope dispensable(page);
  constexpr int kMostRowsOfSession = 20;
  const std::string session = sqlText(page.session.id());
  const frame::Rows kept =
      frame::rows(page,
                  "select count(*),max(TarloTable_ID) from Zembra_Temp_TarloTable "
                  "where TarloTable_SessionID = " +
                      session);
  const bool isFull = toInt32(kept.front().value(0)) >= kMostRowsOfSession;
  frame::execSQL(
      page, isFull ? fmt::format("update Zembra_Temp_TarloTable set TarloTable_SQLString = {},"
                                 "TarloTable_SQLString2 = {} where TarloTable_ID = {}",
                                 sqlText(sql), sqlText(ordered), kept.front().text(1))
                   : fmt::format("insert into Zembra_Temp_TarloTable (TarloTable_SessionID,"
                                 "TarloTable_SQLString,TarloTable_SQLString2) values ({},{},{})",
                                 session, sqlText(sql), sqlText(ordered)));
}

// The grid's markup: its statement is prepared and kept in the session, its first page is read, and
// the statement is noted where task panels look for what a session has listed last. Captions that
// the page did not give are the titles of the statement.
std::string drawGrid(Page& page, GridDefinition grid) {
  // A page without a statement has nothing to list: its grid is empty, and not broken.
  if (text::trim(grid.sql).empty()) return gridMarkup(grid, {});
  ErrorState err;
  DrawnGrid drawn;
  std::shared_ptr<GridState> state;
  const std::shared_ptr<SessionGrids> grids = SessionGrids::of(page);
  err.run([&] {
    auto prepared = prepare(page, *grids, grid);
    if (grid.captions.empty()) {
      const auto& titles = prepared->statement.titles();
      grid.captions.assign(titles.begin() + 1, titles.end());
    }
    state = std::make_shared<GridState>(page, grid, std::move(prepared));
    drawn.rows = readRows(page, *state, {});
  });
  if (state != nullptr) drawn.key = grids->add(state);
  if (err.failed()) {
    drawn.error = messageOf(err.number());
  } else if (grids->noteDrawn(state->prepared)) {
    err.run([&] { noteDrawn(page, grid.sql, state->prepared->ordered); });
  }
  return gridMarkup(grid, drawn);
}

class Table : public frame::MemberObject<Table> {
 public:
  struct Members {
    template <bool GridDefinition::*kFlag>
    static constexpr frame::Property<Table> flag(std::string_view name);
    template <std::string GridDefinition::*kText>
    static constexpr frame::Property<Table> text(std::string_view name);
    static std::span<const frame::Property<Table>> properties();
    static std::span<const frame::Method<Table>> methods();
  };

 private:
  Variant connect(std::span<Variant> arguments);
  Variant addSubMenuTitle(std::span<Variant> arguments);
  Variant addSubMenu(std::span<Variant> arguments);
  Variant addActions(std::span<Variant> arguments);
  Variant writeTable(std::span<Variant> arguments);
  Variant getTableHtml(std::span<Variant> arguments);

  Page& page() const;

  Page* page_ = nullptr;
  GridDefinition grid_;
};

template <bool GridDefinition::*kFlag>
constexpr frame::Property<Table> Table::Members::flag(std::string_view name) {
  return {name, [](const Table& table) { return Variant(table.grid_.*kFlag); },
          [](Table& table, const Variant& value) { table.grid_.*kFlag = frame::toFlag(value); }};
}

template <std::string GridDefinition::*kText>
constexpr frame::Property<Table> Table::Members::text(std::string_view name) {
  return {name, [](const Table& table) { return Variant(table.grid_.*kText); },
          [](Table& table, const Variant& value) { table.grid_.*kText = spliced(value); }};
}

std::span<const frame::Property<Table>> Table::Members::properties() {
  static constexpr frame::Property<Table> kRows[] = {
      text<&GridDefinition::id>("id"),
      text<&GridDefinition::sql>("sql"),
      text<&GridDefinition::orderBy>("orderBy"),
      text<&GridDefinition::onRowDoubleClick>("onRowDoubleClick"),
      text<&GridDefinition::onRowSelect>("onRowSelect"),
      flag<&GridDefinition::showButton>("showButton"),
      flag<&GridDefinition::showMenu>("showMenu"),
      flag<&GridDefinition::search>("Search"),
      flag<&GridDefinition::multiPage>("MultiPage"),
      {"title", [](const Table& table) { return Variant(titleOf(table.grid_)); },
       [](Table& table, const Variant& value) {
         table.grid_.captions = captionsOf(spliced(value));
       }},
      {"Width", [](const Table& table) { return Variant(table.grid_.width); },
       [](Table& table, const Variant& value) { table.grid_.width = widthOf(spliced(value)); }},
      {"SelectionStyle", [](const Table& table) { return Variant(table.grid_.selectionStyle); },
       [](Table& table, const Variant& value) { table.grid_.selectionStyle = toInt32(value); }},
      {"Pagesize", [](const Table& table) { return Variant(table.grid_.pageSize); },
       [](Table& table, const Variant& value) {
         table.grid_.pageSize = std::clamp(toInt32(value), 1, kMostPageSize);
       }},
  };
  return kRows;
}

std::span<const frame::Method<Table>> Table::Members::methods() {
  static constexpr frame::Method<Table> kRows[] = {
      {"ASPConnect", frame::kAnyNumber, &Table::connect},
      {"AddSubMenuTitle", 2, &Table::addSubMenuTitle},
      {"AddSubMenu", 3, &Table::addSubMenu},
      {"addActions", 4, &Table::addActions},
      {"WriteTable", 0, &Table::writeTable},
      {"getTableHtml", 0, &Table::getTableHtml},
  };
  return kRows;
}

Variant Table::connect(std::span<Variant> arguments) {
  page_ = frame::connectedPage(arguments);
  return {};
}

Variant Table::addSubMenuTitle(std::span<Variant> arguments) {
  grid_.menus.push_back({spliced(arguments[0]), spliced(arguments[1]), {}});
  return {};
}

// An entry for a pull-down that was not declared makes one without a caption.
Variant Table::addSubMenu(std::span<Variant> arguments) {
  const std::string key = spliced(arguments[2]);
  auto menu = std::ranges::find(grid_.menus, key, &GridMenu::key);
  if (menu == grid_.menus.end()) menu = grid_.menus.insert(menu, {"", key, {}});
  menu->views.push_back({spliced(arguments[0]), spliced(arguments[1])});
  return {};
}

Variant Table::addActions(std::span<Variant> arguments) {
  grid_.buttons.push_back(
      {spliced(arguments[0]), spliced(arguments[1]), spliced(arguments[2]), spliced(arguments[3])});
  return {};
}

Variant Table::writeTable(std::span<Variant> arguments) {
  page().response.write(spliced(getTableHtml(arguments)));
  return {};
}

Variant Table::getTableHtml(std::span<Variant>) {
  if (!isScriptName(grid_.id)) throw RuntimeError(ErrorNumber::InvalidCall, "id");
  return drawGrid(page(), grid_);
}

Page& Table::page() const {
  if (page_ == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet, "ASPConnect");
  return *page_;
}

}  // namespace

std::shared_ptr<Object> makeTable() {
  return std::make_shared<Table>();
}

}  // namespace tarlo::siblings
