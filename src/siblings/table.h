#pragma once
// TarloTable.table: the grid that pages list their rows with.

#include <memory>

#include "frame/member_table.h"
#include "frame/page.h"
#include "siblings/grid_definition.h"

namespace tarlo::siblings {

// Every property can be read back. Flags are Booleans or texts. A grid that is drawn before
// ASPConnect raises error 91, one without an id or whose id is no script name error 5. A refused
// statement raises nothing: the grid then says so in the place of its rows.
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

std::shared_ptr<Object> makeTable();

}  // namespace tarlo::siblings
