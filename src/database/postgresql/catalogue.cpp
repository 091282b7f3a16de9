#include "database/postgresql/catalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/print/postgresql_types.h"

namespace tarlo::database {
namespace {

// Of a domain, what it is of. A key's place is that of the column in it, 0 outside. A column is
// numbered by the server when a sequence belongs to it.
enum Field { kName, kTypeName, kModifier, kNotNull, kNumbered, kComputed, kPlace, kSort, kStamp };

std::string_view text(const PGresult* rows, int row, int field) {
  return {PQgetvalue(rows, row, field), static_cast<std::size_t>(PQgetlength(rows, row, field))};
}

template <class Number = int>
Number number(const PGresult* rows, int row, int field) {
  const std::string_view digits = text(rows, row, field);
  Number value{};
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

}  // namespace

const char* const PostgresqlCatalogue::kColumnsText =
    "SELECT a.attname, t.typname, CASE WHEN d.typtype='d' AND d.typtypmod>0 THEN d.typtypmod "
    "ELSE a.atttypmod END, (a.attnotnull OR d.typnotnull)::int, "
    "(a.attidentity<>'' OR EXISTS (SELECT 1 FROM pg_catalog.pg_depend p "
    "JOIN pg_catalog.pg_class s ON s.oid=p.objid AND s.relkind='S' "
    "WHERE p.refclassid='pg_class'::regclass AND p.refobjid=a.attrelid "
    "AND p.refobjsubid=a.attnum AND p.deptype IN ('a','i')))::int, (a.attgenerated<>'')::int, "
    "coalesce((SELECT array_position(string_to_array(i.indkey::text,' '),a.attnum::text) "
    "FROM pg_catalog.pg_index i WHERE i.indrelid=a.attrelid AND i.indisprimary),0), "
    "CASE WHEN a.attisdropped THEN 'x' WHEN t.typcategory='A' THEN 'A' ELSE t.typtype::text END, "
    "a.xmin::text::bigint FROM pg_catalog.pg_attribute a "
    "LEFT JOIN pg_catalog.pg_type d ON d.oid=a.atttypid LEFT JOIN pg_catalog.pg_type t "
    "ON t.oid=CASE WHEN d.typtype='d' THEN d.typbasetype ELSE d.oid END "
    "WHERE a.attrelid=$1::oid AND a.attnum>0 ORDER BY a.attnum";

void PostgresqlCatalogue::readNames() {
  const PostgresqlResult rows = ask_(kNames, {});
  names_.clear();
  hasNames_ = true;
  for (int row = 0; row < PQntuples(rows.get()); ++row) {
    Named named{std::string(text(rows.get(), row, 0)), std::string(text(rows.get(), row, 1)),
                std::string(text(rows.get(), row, 2)), number<std::int64_t>(rows.get(), row, 3)};
    const auto [found, isNew] = names_.try_emplace(text::foldedName(named.name), named);
    // The schemas come in the order in which they are searched.
    if (!isNew && found->second.schema == named.schema) found->second.isTwice = true;
  }
}

const tsql::Table* PostgresqlCatalogue::findTable(std::string_view name) {
  const std::string folded = text::foldedName(name);
  auto known = tables_.find(folded);
  if (known == tables_.end()) {
    if (!hasNames_ || !names_.contains(folded)) readNames();
    const auto named = names_.find(folded);
    if (named == names_.end()) return nullptr;
    known = tables_.emplace(folded, load(named->second)).first;
  }
  const Known& found = *known->second;
  if (!found.fault.empty()) throw tsql::StatementError(tsql::Refusal::Name, {}, found.fault);
  return &found.table;
}

std::unique_ptr<PostgresqlCatalogue::Known> PostgresqlCatalogue::load(const Named& named) {
  auto known = std::make_unique<Known>();
  known->number = named.number;
  known->stamp = named.stamp;
  known->table.name = named.name;
  if (named.isTwice) {
    known->fault =
        fmt::format("there are several tables {}, which differ in case only", named.name);
    return known;
  }
  const char* const values[] = {named.number.c_str()};
  const PostgresqlResult rows = ask_(kColumns, values);
  std::vector<std::pair<int, std::size_t>> key;  // place in the key, column
  for (int row = 0; row < PQntuples(rows.get()); ++row) addColumn(*known, rows.get(), row, key);
  std::sort(key.begin(), key.end());
  for (const auto& [place, index] : key) known->table.key.push_back(index);
  return known;
}

void PostgresqlCatalogue::addColumn(Known& known, const PGresult* rows, int row,
                                    std::vector<std::pair<int, std::size_t>>& key) const {
  known.stamp += number<std::int64_t>(rows, row, kStamp);
  const std::string_view sort = text(rows, row, kSort);
  if (sort == "x") return;  // dropped
  std::string name(text(rows, row, kName));
  const std::string_view type = text(rows, row, kTypeName);
  const auto stored = tsql::typeOfPostgresql(type, number(rows, row, kModifier));
  if (!stored || sort == "A") {
    known.leftOut.emplace_back(
        name, fmt::format("column {} of table {} is of the type {}, which cannot be read here",
                          name, known.table.name, type));
    return;
  }
  if (known.table.find(name) >= 0) {
    known.fault = fmt::format("table {} has several columns {}, which differ in case only",
                              known.table.name, name);
    return;
  }
  tsql::Column column;
  column.name = std::move(name);
  column.type = stored->type;
  column.storedAs = stored->storedAs;
  column.isNullable = number(rows, row, kNotNull) == 0;
  column.isIdentity = number(rows, row, kNumbered) != 0;
  column.isGenerated = number(rows, row, kComputed) != 0;
  const int place = number(rows, row, kPlace);
  if (place > 0) key.emplace_back(place, known.table.columns.size());
  known.table.columns.push_back(std::move(column));
}

bool PostgresqlCatalogue::hasProcedure(std::string_view name) {
  return procedures_.byFoldedName.contains(text::foldedName(name));
}

PostgresqlCatalogue::Stamp PostgresqlCatalogue::stampOf(
    std::span<const tsql::Touched> touched) const {
  Stamp stamp;
  std::vector<const Known*> counted;
  for (const tsql::Touched& each : touched) {
    const auto known = tables_.find(text::foldedName(each.name));
    if (known == tables_.end()) continue;
    const Known* table = known->second.get();
    if (std::find(counted.begin(), counted.end(), table) != counted.end()) continue;
    counted.push_back(table);
    add(stamp, *table);
  }
  if (!stamp.tables.empty()) stamp.tables += '}';
  return stamp;
}

bool PostgresqlCatalogue::refresh() {
  hasNames_ = false;
  if (tables_.empty()) return false;
  Stamp stamp;
  for (const auto& [name, known] : tables_) add(stamp, *known);
  stamp.tables += '}';
  const char* const values[] = {stamp.tables.c_str()};
  const PostgresqlResult now = ask_(kSum, values);
  if (number<std::int64_t>(now.get(), 0, 0) == stamp.sum) return false;
  forget();
  return true;
}

void PostgresqlCatalogue::add(Stamp& stamp, const Known& known) {
  stamp.tables += (stamp.tables.empty() ? "{" : ",") + known.number;
  stamp.sum += known.stamp;
}

void PostgresqlCatalogue::forget() {
  tables_.clear();
  names_.clear();
  hasNames_ = false;
}

std::string PostgresqlCatalogue::whyLeftOut(std::string_view column) const {
  for (const auto& [name, known] : tables_) {
    for (const auto& [left, why] : known->leftOut) {
      if (text::equalsNoCase(left, column)) return why;
    }
  }
  return {};
}

}  // namespace tarlo::database
