#pragma once
// TarloTable.table: the grid that pages list their rows with.

#include <memory>

#include "frame/page.h"
#include "siblings/grid_definition.h"
#include "variant/object.h"

namespace tarlo::siblings {

class Table : public Object {
 public:
  // Every property can be read back. Flags are Booleans or texts.
  Variant get(std::string_view name, std::span<Variant> arguments = {}) override;
  void put(std::string_view name, const Variant& value) override;
  // A grid that is drawn before ASPConnect raises error 91, one without an id or whose id is no
  // script name error 5. A refused statement raises nothing: the grid then says so in the place of
  // its rows.
  Variant call(std::string_view name, std::span<Variant> arguments) override;

 private:
  struct Members;

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
