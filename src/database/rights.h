#pragma once
// What statements may touch. Every table belongs to a group, by its name; whoever borrows a
// connection says which groups its statements may read and write, and the connection holds them to
// it: once by what the front end read in the text, and once by what the engine's own compiler says
// that the translation does.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/access.h"

namespace tarlo::database {

enum class TableGroup : std::uint8_t {
  Business,      // any table without a platform's prefix
  Dictionary,    // directories, tables, fields and relations of the business data
  Schemes,       // query schemes and their versions
  Controls,      // control schemes, their kinds and versions
  Organisation,  // users, groups, ranks, positions, icons
  Menu,          // the menu and who may use it
  Workflow,      // workflows, instances, delegations, tasks
  Help,          // help texts of functions
  Policy,
  OperationLog,
  DrawnGrids,  // the statements of the lists that sessions have drawn
  Platform,    // any other table with the platform's prefix
  Server       // the server's own: passwords, links, tokens
};

// By name, without regard to case.
TableGroup groupOf(std::string_view table);
std::string_view nameOf(TableGroup group);

class TableGroups {
 public:
  constexpr TableGroups() = default;
  constexpr TableGroups(std::initializer_list<TableGroup> groups) {
    for (const TableGroup group : groups) add(group);
  }
  constexpr void add(TableGroup group) { bits_ |= 1u << static_cast<unsigned>(group); }
  constexpr bool contains(TableGroup group) const {
    return (bits_ >> static_cast<unsigned>(group) & 1u) != 0;
  }
  constexpr bool containsAll(TableGroups others) const { return (others.bits_ & ~bits_) == 0; }
  constexpr bool empty() const { return bits_ == 0; }
  constexpr TableGroups operator|(TableGroups other) const {
    other.bits_ |= bits_;
    return other;
  }
  friend constexpr bool operator==(TableGroups, TableGroups) = default;

 private:
  std::uint32_t bits_ = 0;
};

// Nothing is allowed unless it is named. What may be written may be read as well. Rows are deleted
// by the server's own housekeeping only: no operation and no page has `deletes`, and without any
// the front end does not even know the statement.
struct StatementRights {
  TableGroups reads;
  TableGroups writes;
  bool executes = false;        // EXEC
  bool readsListedOnly = true;  // of the business tables, those that the borrower lists
  TableGroups deletes = {};

  // Every group but the server's own, read and written: for programs that answer for their
  // statements themselves.
  static StatementRights everything();
};

// What a statement touches, put together so that asking is cheap.
struct Footprint {
  struct Touch {
    tsql::Access access;
    std::string name;
    bool operator==(const Touch&) const = default;
  };
  TableGroups reads;
  TableGroups writes;
  TableGroups deletes;
  bool executes = false;
  std::vector<Touch> touches;  // each once

  void add(tsql::Access access, std::string_view name);
  // By groups alone; which business tables are listed is another question.
  bool isWithin(const StatementRights& rights) const;
};

// Whether the rights cover this alone, listing aside.
bool covers(const StatementRights& rights, tsql::Access access, std::string_view name);

}  // namespace tarlo::database
