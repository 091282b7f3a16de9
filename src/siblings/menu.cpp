#include <fmt/format.h>

#include <algorithm>

#include "frame/member_table.h"
#include "frame/place.h"
#include "siblings/components.h"
#include "variant/convert.h"

namespace tarlo::siblings {
namespace {

using frame::inPlace;
using frame::Place;

constexpr std::string_view kSeparator =
    "<li role=\"separator\" class=\"tarlo-menu-separator\"></li>";

int pixelsOf(const Variant& value) {
  constexpr int kMost = 2000;
  return variant::isNumeric(value)
             ? static_cast<int>(std::clamp(variant::toDouble(value), 0.0, double{kMost}))
             : 0;
}

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

template <Variant Menu::*kValue>
constexpr frame::Property<Menu> value(std::string_view name) {
  return {name, [](const Menu& menu) { return menu.*kValue; },
          [](Menu& menu, const Variant& value) { menu.*kValue = value; }};
}

std::span<const frame::Property<Menu>> Menu::Members::properties() {
  static constexpr frame::Property<Menu> kRows[] = {
      value<&Menu::title_>("title"), value<&Menu::left_>("Left"), value<&Menu::top_>("Top")};
  return kRows;
}

std::span<const frame::Method<Menu>> Menu::Members::methods() {
  static constexpr frame::Method<Menu> kRows[] = {{"AddMenu0", 4, &Menu::addMenu0},
                                                  {"AddSubMenu", 4, &Menu::addSubMenu},
                                                  {"WriteMenu", 0, &Menu::writeMenu}};
  return kRows;
}

Menu::Entry Menu::entryOf(std::span<Variant> arguments) {
  using variant::spliced;
  return {spliced(arguments[0]), spliced(arguments[1]), spliced(arguments[2]),
          spliced(arguments[3])};
}

Variant Menu::addMenu0(std::span<Variant> arguments) {
  entries_.push_back(entryOf(arguments));
  return {};
}

Variant Menu::addSubMenu(std::span<Variant> arguments) {
  subEntries_.push_back(entryOf(arguments));
  return {};
}

// Pages write addresses of scripts with a blank behind the colon; browsers take that.
std::string Menu::linkMarkup(const Entry& entry, bool opens) {
  const std::string target =
      entry.target.empty() ? "" : " target=\"" + inPlace(Place::Encoded, entry.target) + "\"";
  return fmt::format(
      "<a role=\"menuitem\" tabindex=\"-1\" href=\"{}\"{}{}>{}</a>",
      inPlace(Place::Encoded, entry.href.empty() ? "javascript:void(0)" : entry.href), target,
      opens ? " aria-haspopup=\"true\" aria-expanded=\"false\"" : "",
      inPlace(Place::Encoded, entry.caption));
}

std::string Menu::pullDownMarkup(const Entry& top) const {
  std::string items;
  for (const Entry& entry : subEntries_) {
    if (!text::equalsNoCase(entry.subMenu, top.subMenu)) continue;
    items += entry.isSeparator() ? std::string(kSeparator)
                                 : "<li role=\"none\">" + linkMarkup(entry, false) + "</li>";
  }
  if (items.empty()) return {};
  return "<ul role=\"menu\" class=\"tarlo-menu-list\" aria-label=\"" +
         inPlace(Place::Encoded, top.caption) + "\" hidden>" + items + "</ul>";
}

std::string Menu::topMarkup(const Entry& top) const {
  if (top.isSeparator()) return std::string(kSeparator);
  const std::string pullDown = top.subMenu.empty() ? "" : pullDownMarkup(top);
  return "<li role=\"none\">" + linkMarkup(top, !pullDown.empty()) + pullDown + "</li>";
}

Variant Menu::writeMenu(std::span<Variant>) {
  std::string items;
  for (const Entry& entry : entries_) items += topMarkup(entry);
  return fmt::format(
      "<div class=\"tarlo-menu\" style=\"padding-left:{}px\">"
      "<span class=\"tarlo-menu-title\">{}</span>"
      "<ul role=\"menubar\" class=\"tarlo-menu-bar\">{}</ul></div>\r\n",
      pixelsOf(left_), variant::spliced(title_), items);
}

}  // namespace

std::shared_ptr<Object> makeMenu() {
  return std::make_shared<Menu>();
}

}  // namespace tarlo::siblings
