#pragma once
// What a page says about one grid: filled through the late-bound members of TarloTable.table, read
// by everything that draws the grid or asks for its rows. And what the browser may send back of it.

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarlo::siblings {

// An entry of a pull-down: its script, run in the page, shows another view. Both empty: a
// separator.
struct GridView {
  std::string caption;  // may hold <b> and </b>, no other markup
  std::string script;   // as it stands between the double quotes of a script string
};

struct GridMenu {
  std::string caption;
  std::string key;
  std::vector<GridView> views;
};

struct GridButton {
  std::string tip;
  std::string caption;
  std::string script;
  std::string cssClass;
};

// A grid without pages shows this many of its first rows.
inline constexpr std::int64_t kMostRows = 2000;

struct GridDefinition {
  std::string id;                     // a script name: the page's scripts call the grid by it
  std::vector<std::string> captions;  // of the columns behind the first, which is the row's id
  std::string sql;
  std::string orderBy;  // without the words ORDER BY; "" for none
  std::string width = "100%";
  std::string onRowDoubleClick;
  std::string onRowSelect;
  int selectionStyle = 1;  // 0: none, 1: one row at a time, 2: several
  int pageSize = 15;
  bool showButton = true;
  bool showMenu = true;
  bool search = true;
  bool multiPage = true;  // false: all rows at once, `pageSize` of them in view
  std::vector<GridMenu> menus;
  std::vector<GridButton> buttons;

  std::int64_t rowsPerPage() const { return multiPage ? pageSize : kMostRows; }
};

// A text as it stands between the double quotes of a script string, without the backslashes of the
// string.
std::string unescapedScript(std::string_view text);

// Without blanks at its ends and without a leading AND; "" for none.
std::string_view bareCondition(std::string_view condition);

// The conditions that the browser may send back for a grid. They are SQL, so the server takes none
// but those that it wrote into the page itself.
class GridConditions {
 public:
  // Collects the first argument of each view script that begins with a call of gotoView.
  explicit GridConditions(const GridDefinition& grid);
  // True for "" and for a condition of the page, alone or behind AND.
  bool allows(std::string_view condition) const;

 private:
  std::set<std::string, std::less<>> conditions_;
};

}  // namespace tarlo::siblings
