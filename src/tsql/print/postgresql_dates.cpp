// Dates on PostgreSQL: parts, sums, differences and their texts.

#include <fmt/format.h>

#include <algorithm>

#include "tsql/print/postgresql_engine.h"
#include "tsql/resolve/date_parts.h"

namespace tarlo::tsql::print {
namespace {

// By DatePart: its value, and the interval that DATEADD counts.
struct Part {
  std::string_view value;
  std::string_view interval;
};
constexpr Part kParts[] = {
    {"extract(year from {})::int4", "1 year"},
    {"extract(quarter from {})::int4", "3 months"},
    {"extract(month from {})::int4", "1 month"},
    {"extract(doy from {})::int4", "1 day"},
    {"extract(day from {})::int4", "1 day"},
    {"tarlo.week({})", "7 days"},
    {"(extract(dow from {})::int4 + 1)", "1 day"},
    {"extract(hour from {})::int4", "1 hour"},
    {"extract(minute from {})::int4", "1 minute"},
    {"floor(extract(second from {}))::int4", "1 second"},
    {"(extract(milliseconds from {})::int4 % 1000)", "1 millisecond"},
};

const Part& partOf(DatePart which) {
  return kParts[static_cast<std::size_t>(which)];
}

std::string partValue(DatePart which, const std::string& date) {
  return fmt::format(fmt::runtime(partOf(which).value), date);
}

// Names are those of a Chinese login: months as two digits.
std::string partName(DatePart which, const std::string& date) {
  if (which == DatePart::Month) return fmt::format("to_char({}, 'MM')", date);
  if (which != DatePart::Weekday) return partValue(which, date) + "::text";
  return fmt::format("('星期' || substr('日一二三四五六', {}, 1))", partValue(which, date));
}

// Boundaries crossed: the difference of the steps that both dates lie in.
std::string difference(DatePart which, const std::string& from, const std::string& to) {
  const auto steps = [&](std::string_view step) {
    const auto at = [&](const std::string& date) { return fmt::format(fmt::runtime(step), date); };
    return fmt::format("({} - {})", at(to), at(from));
  };
  const auto seconds = [&](std::string_view field, int size) {
    return fmt::format(
        "(extract(epoch from date_trunc('{0}', {2}) - date_trunc('{0}', {1})) / {3})::int4", field,
        from, to, size);
  };
  switch (which) {
    case DatePart::Year:
      return steps("extract(year from {})::int4");
    case DatePart::Quarter:
      return steps("tarlo.months({}) / 3");
    case DatePart::Month:
      return steps("tarlo.months({})");
    case DatePart::Week:
      // From a Sunday before all dates.
      return steps("({}::date - date '1700-01-03') / 7");
    case DatePart::Hour:
      return seconds("hour", 3600);
    case DatePart::Minute:
      return seconds("minute", 60);
    case DatePart::Second:
      return seconds("second", 1);
    case DatePart::Millisecond:
      return fmt::format("(extract(epoch from {} - {}) * 1000)::int4", to, from);
    default:
      return steps("{}::date");
  }
}

struct Style {
  int number;
  std::string_view form;
};
constexpr Style kStyles[] = {
    {101, "MM/DD/YYYY"},
    {102, "YYYY.MM.DD"},
    {103, "DD/MM/YYYY"},
    {104, "DD.MM.YYYY"},
    {105, "DD-MM-YYYY"},
    {108, "HH24:MI:SS"},
    {111, "YYYY/MM/DD"},
    {112, "YYYYMMDD"},
    {20, "YYYY-MM-DD HH24:MI:SS"},
    {120, "YYYY-MM-DD HH24:MI:SS"},
    {21, "YYYY-MM-DD HH24:MI:SS.MS"},
    {121, "YYYY-MM-DD HH24:MI:SS.MS"},
    {23, "YYYY-MM-DD"},
    {126, "YYYY-MM-DD\"T\"HH24:MI:SS.MS"},
};

}  // namespace

std::string postgresqlDateText(const std::string& date, int style) {
  const auto* found = std::ranges::find(kStyles, style, &Style::number);
  if (found == std::end(kStyles)) return fmt::format("tarlo.long_date({})", date);
  return fmt::format("to_char({}, '{}')", date, found->form);
}

std::string postgresqlDateCall(const ast::FunctionCall& call,
                               const std::vector<std::string>& arguments) {
  const std::string& name = call.name;
  if (name == "GETDATE" || name == "CURRENT_TIMESTAMP")
    return "statement_timestamp()::timestamp(3)";
  constexpr std::string_view kPartFunctions[] = {"YEAR", "MONTH",  "DAY",
                                                 "HOUR", "MINUTE", "SECOND"};
  if (std::ranges::find(kPartFunctions, name) != std::end(kPartFunctions)) {
    return partValue(*findDatePart(name), arguments[0]);
  }
  if (call.part.empty()) return {};
  const DatePart which = *findDatePart(call.part);
  if (name == "DATEPART") return partValue(which, arguments[0]);
  if (name == "DATENAME") return partName(which, arguments[0]);
  if (name == "DATEDIFF") return difference(which, arguments[0], arguments[1]);
  return fmt::format("tarlo.in_range({} + {} * interval '{}')", arguments[1], arguments[0],
                     partOf(which).interval);
}

std::string postgresqlDatePlus(const std::string& date, const std::string& days, Kind kind) {
  if (kind == Kind::Int)
    return fmt::format("tarlo.in_range({} + {} * interval '1 day')", date, days);
  return fmt::format("tarlo.in_range(({} + {}::float8 * interval '1 day')::timestamp(3))", date,
                     days);
}

}  // namespace tarlo::tsql::print
