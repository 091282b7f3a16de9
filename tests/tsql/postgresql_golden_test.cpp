// Statements and what PostgreSQL is given for them: the steps, then the parameters as
// "ordinal:kind". TARLO_REWRITE_GOLDEN=1 writes the expectations anew.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "resolve_support.h"
#include "support/golden_file.h"
#include "tsql/print/postgresql_types.h"
#include "tsql/translation.h"

namespace tarlo::tsql::testing {
namespace {

const std::string kFolder = TARLO_TEST_DATA "/golden/";
constexpr TranslateOptions kOptions{Dialect::Postgresql, true, true};

std::string shown(const Step& step) {
  std::string text = step.text;
  std::string separator = "\n  ";
  for (const Parameter& parameter : step.parameters) {
    text += separator + std::to_string(parameter.ordinal) + ":" + nameOf(parameter.target);
    separator = " ";
  }
  return text;
}

std::string resultOf(const std::string& sql) {
  FixtureCatalogue catalogue;
  try {
    std::string text;
    for (const Step& step : translate(sql, catalogue, kOptions).steps) {
      text += (text.empty() ? "" : "\n") + shown(step);
    }
    return text;
  } catch (const StatementError& error) {
    return std::string("refused: ") + error.what();
  }
}

TEST(PostgresqlGolden, Printed) {
  const auto statements = tarlo::testing::goldenEntries(kFolder + "postgresql.sql");
  const std::string path = kFolder + "postgresql.expected";
  if (std::getenv("TARLO_REWRITE_GOLDEN") != nullptr) {
    std::ofstream out(path, std::ios::binary);
    for (const std::string& sql : statements) out << resultOf(sql) << "\nGO\n";
    return;
  }
  const auto expected = tarlo::testing::goldenEntries(path);
  ASSERT_EQ(statements.size(), expected.size());
  for (std::size_t i = 0; i < statements.size(); ++i) {
    EXPECT_EQ(resultOf(statements[i]), expected[i]) << statements[i];
  }
}

// What one engine is given, the other is given as well.
TEST(PostgresqlGolden, TakesWhatSqliteTakes) {
  const auto isTaken = [](const std::string& sql, Dialect dialect) {
    FixtureCatalogue catalogue;
    try {
      translate(sql, catalogue, {dialect, true, true});
      return true;
    } catch (const StatementError&) {
      return false;
    }
  };
  for (const char* file : {"business", "language", "platform", "refused", "unresolved"}) {
    for (const auto& sql : tarlo::testing::goldenEntries(kFolder + file + ".sql")) {
      EXPECT_EQ(isTaken(sql, Dialect::Postgresql), isTaken(sql, Dialect::Sqlite)) << sql;
    }
  }
  for (const auto& expression : tarlo::testing::goldenLines(kFolder + "expressions.txt")) {
    const std::string sql = "select " + expression + " as [v] from [UserTb_Contract]";
    EXPECT_TRUE(isTaken(sql, Dialect::Postgresql)) << sql;
  }
}

std::string literalOf(ast::LiteralClass literalClass, std::string_view text, Type target) {
  try {
    return literalText(literalClass, text, {0, target, "C"});
  } catch (const StatementError& error) {
    return "refused";
  }
}

TEST(PostgresqlLiterals, KeepEveryDigit) {
  using enum ast::LiteralClass;
  const std::tuple<ast::LiteralClass, std::string_view, Type, const char*> cases[] = {
      {Decimal, "12345678901234567890123456789012345.675", decimalType(38, 2),
       "12345678901234567890123456789012345.68"},
      {Text, " -0.005 ", decimalType(18, 2), "-0.01"},
      {Text, "-0.004", decimalType(18, 2), "0.00"},
      {Decimal, "9.995", decimalType(18, 2), "10.00"},
      {Decimal, "99.5", decimalType(18, 0), "100"},
      {Decimal, ".5", decimalType(18, 2), "0.5"},
      {Decimal, "5.", decimalType(18, 2), "5"},
      {Integer, "007", decimalType(18, 2), "7"},
      {Integer, "0", {}, "0"},
      {Decimal, "00.10", {}, "0.10"},
      {Text, "", decimalType(18, 2), "0"},
      {Text, "+5", decimalType(18, 2), "5"},
      {Text, "1e2", decimalType(18, 2), "refused"},
      {Float, "1.5e3", decimalType(18, 2), "1500"},
      {Float, "0.1e0", kFloatType, "0.1"},
      {Integer, "0x1F", decimalType(10, 0), "31"},
      {Integer, "2147483647", kIntType, "2147483647"},
      {Integer, "2147483648", kIntType, "refused"},
      {Text, "-2147483648", kIntType, "-2147483648"},
      {Text, "5.5", kIntType, "refused"},
      {Decimal, "5.9", kIntType, "5"},
      {Text, "2024/1/5", kDateType, "2024-01-05 00:00:00.000"},
      {Integer, "1", kDateType, "1900-01-02 00:00:00.000"},
      {Text, std::string_view("a\0b", 3), kTextType, "refused"},
      {Integer, "07", kTextType, "7"},
  };
  for (const auto& [literalClass, text, target, expected] : cases) {
    EXPECT_EQ(literalOf(literalClass, text, target), expected) << text;
  }
}

TEST(PostgresqlTypes, OfColumns) {
  constexpr int kHeader = 4;
  const auto typmod = [](int precision, int scale) { return (precision << 16) + scale + kHeader; };
  const std::tuple<const char*, int, std::string, const char*> cases[] = {
      {"int4", -1, "int", ""},
      {"int8", -1, "int", ""},
      {"bool", -1, "int", "bool"},
      {"numeric", typmod(18, 2), "dec(18,2)", ""},
      {"numeric", -1, "dec(38,10)", ""},
      {"numeric", typmod(100, 50), "dec(38,10)", ""},
      {"float4", -1, "float", ""},
      {"timestamp", 3, "date", ""},
      {"timestamp", -1, "date", "timestamp"},
      {"timestamptz", 3, "date", "timestamptz"},
      {"date", -1, "date", "date"},
      {"varchar", 24, "text", ""},
      {"uuid", -1, "text", "uuid"},
      {"bytea", -1, "nothing", ""},
      {"_int4", -1, "nothing", ""},
  };
  for (const auto& [name, sizes, kind, storedAs] : cases) {
    const auto column = typeOfPostgresql(name, sizes);
    EXPECT_EQ(column ? nameOf(column->type) : "nothing", kind) << name;
    EXPECT_EQ(column ? column->storedAs : "", storedAs) << name;
  }
  EXPECT_EQ(typeOfPostgresql("varchar", 24)->type.length, 20);
}

// Columns that another program made are cast where they are read and written.
TEST(PostgresqlTypes, AreCastBothWays) {
  class Foreign : public Catalogue {
   public:
    Foreign() {
      for (const char* name : {"bool", "date", "uuid"}) {
        const auto type = typeOfPostgresql(name, -1);
        table_.columns.push_back({name, type->type, false, false, true, type->storedAs});
      }
    }
    const Table* findTable(std::string_view) override { return &table_; }
    bool hasProcedure(std::string_view) override { return false; }

   private:
    Table table_{"t", {}, {}};
  } catalogue;
  const auto textOf = [&](std::string_view sql) {
    return translate(sql, catalogue, kOptions).steps.at(0).text;
  };
  EXPECT_EQ(textOf("select bool, date from t where uuid = 'x'"),
            R"(SELECT t1."bool"::int4 AS c1, t1."date"::timestamp(3) AS c2 FROM "t" AS t1 WHERE )"
            R"((tarlo.fold(t1."uuid"::text) = (SELECT tarlo.fold($1))))");
  EXPECT_EQ(textOf("update t set bool = 1, date = '2024-1-5', uuid = 'x'"),
            R"(UPDATE "t" AS t1 SET "bool" = $1::bool, "date" = $2::date, "uuid" = $3::uuid)");
}

}  // namespace
}  // namespace tarlo::tsql::testing
