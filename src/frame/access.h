#pragma once
// Who may call an operation, as its row in the table of operations says it.

#include <cstdint>

namespace tarlo::frame {

// The least that a caller must be.
enum class Caller : std::uint8_t {
  Program,       // components and programs; by address it does not exist
  SignedIn,      // everybody who has signed in
  FormUser,      // users who may open any entry of the menu: they work with the platform's forms
  Designer,      // users whose menu has one of the managers
  Administrator  // those that the configuration names
};

// The entries of the menu that open a manager.
enum class Manager : std::uint8_t { None, Schemes, UserControls, TemplateControls };

// What Zembra_Permission grants beside an entry of the menu. AddOrModify: modify when the request's
// "type" is 1, as the wizards send it for what is there already, else add.
enum class SubAction : std::uint8_t { None, Browse, Preview, Add, Modify, Delete, AddOrModify };

struct Access {
  Caller caller = Caller::Program;
  // With a manager: the sub-action of that manager's entry is asked for as well.
  Manager manager = Manager::None;
  SubAction subAction = SubAction::None;

  friend constexpr bool operator==(const Access&, const Access&) = default;
};

constexpr Access manages(Manager manager, SubAction subAction) {
  return {Caller::Designer, manager, subAction};
}

}  // namespace tarlo::frame
