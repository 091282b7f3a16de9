#pragma once
// Tarlo.menu: the menu bar of a full page, with the page's title in front.

#include <memory>
#include <string>
#include <vector>

#include "frame/member_table.h"

namespace tarlo::siblings {

// `title` is markup and stands in the menu as it is; `Left` is the bar's distance from the left in
// pixels. `Top`, where pull-downs once opened, is kept and not used: they open under their entry.
// AddMenu0 and AddSubMenu take caption, href, target, sub-menu: AddMenu0 names the pull-down that
// opens, AddSubMenu the one that the entry belongs to. Caption and href empty: a separator.
// WriteMenu gives the markup.
class Menu : public frame::MemberObject<Menu> {
 public:
  struct Members {
    static std::span<const frame::Property<Menu>> properties();
    static std::span<const frame::Method<Menu>> methods();
  };

 private:
  struct Entry {
    std::string caption;
    std::string href;
    std::string target;
    std::string subMenu;
    bool isSeparator() const { return caption.empty() && href.empty(); }
  };

  static Entry entryOf(std::span<Variant> arguments);
  static std::string linkMarkup(const Entry& entry, bool opens);
  std::string pullDownMarkup(const Entry& top) const;
  std::string topMarkup(const Entry& top) const;

  Variant addMenu0(std::span<Variant> arguments);
  Variant addSubMenu(std::span<Variant> arguments);
  Variant writeMenu(std::span<Variant> arguments);

  Variant title_ = "";
  Variant left_ = 0;
  Variant top_ = 0;
  std::vector<Entry> entries_;
  std::vector<Entry> subEntries_;
};

std::shared_ptr<Object> makeMenu();

}  // namespace tarlo::siblings
