// The edges of the functions that statements call, on a bare handle.

#include "database/sqlite/functions.h"

#include "database/procedures.h"
#include "support.h"

namespace tarlo::database {
namespace {

struct Evaluation {
  std::string expressions;
  std::string expected;  // values joined by ","; "error: " and a piece of the message
};

class Functions : public ::testing::Test {
 protected:
  Functions() {
    sqlite3_open(":memory:", &handle_);
    registerSqliteFunctions(handle_, procedures_);
  }
  ~Functions() override { sqlite3_close(handle_); }

  std::string evaluate(const std::string& expressions) {
    sqlite3_stmt* statement = nullptr;
    const std::string sql = "SELECT " + expressions;
    std::string result;
    if (sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
      for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
        result.append(i == 0 ? "" : ",").append(text ? text : "NULL");
      }
    } else {
      result = std::string("error: ") + sqlite3_errmsg(handle_);
    }
    sqlite3_finalize(statement);
    return result;
  }

  void expectValues(const std::vector<Evaluation>& rows) {
    for (const auto& [expressions, expected] : rows) {
      const std::string actual = evaluate(expressions);
      const bool isError = expected.starts_with("error: ") && actual.starts_with("error: ") &&
                           actual.find(expected.substr(7)) != std::string::npos;
      EXPECT_TRUE(isError || actual == expected) << expressions << " gave " << actual;
    }
  }

  ProcedureTable procedures_;
  sqlite3* handle_ = nullptr;
};

TEST_F(Functions, TextsAreCutByUtf16Units) {
  expectValues({
      {"tsql_len('ab  '), tsql_len('   '), tsql_len('中😀'), tsql_len(NULL)", "2,0,3,NULL"},
      {"tsql_datalength('中😀')", "6"},
      {"tsql_substring('abc', 0, 2), tsql_substring('abc', -5, 3)", "a,"},
      {"tsql_substring('abc', 2, 9223372036854775807)", "bc"},
      {"tsql_substring('abc', 1, -1)", "error: negative length"},
      {"tsql_left('中文', 1), tsql_right('abc', 0), tsql_right('abc', 2)", "中,,bc"},
      {"tsql_left('abc', -1)", "error: negative length"},
      {"tsql_stuff('abcdef', 2, 3, 'X'), tsql_stuff('abc', 4, 1, 'X')", "aXef,NULL"},
      {"tsql_replicate('ab', -1), length(tsql_replicate('ab', 9000000000))", "NULL,8000"},
      {"length(tsql_space(3)), tsql_reverse('a中b')", "3,b中a"},
      {"tsql_upper('äя中'), tsql_lower('ÄЯＡ')", "ÄЯ中,äяａ"},
      {"tsql_ascii(''), tsql_char(256)", "NULL,NULL"},
      {"tsql_fit('ab  ', 3, 'C'), tsql_pad('ab', 4)", "ab ,ab  "},
      {"tsql_fit('abcd', 3, 'C')", "error: truncated in column C"},
  });
}

TEST_F(Functions, SearchSeesNeitherCaseNorWidth) {
  expectValues({
      {"tsql_charindex('B', 'abcb', 1), tsql_charindex('b', 'abcb', 3)", "2,4"},
      {"tsql_charindex('b', 'abcb', 9), tsql_charindex('', 'abc', 1)", "0,0"},
      {"tsql_charindex('x', '😀x', 1)", "3"},
      {"tsql_charindex('aab', 'aaaab', 1), tsql_charindex('abab', 'ababcabab', 2)", "3,6"},
      {"tsql_replace('aBAb', 'ab', '-'), tsql_replace('abc', '', 'x')", "--,abc"},
      {"tsql_replace('aaaab', 'aab', 'x'), tsql_replace('aaaa', 'aa', 'b')", "aax,bb"},
      {"length(tsql_replace(tsql_replicate('a', 8000), 'a', tsql_replicate('b', 8000)))",
       "error: too long"},
      {"tsql_like('A_c%', 'abcd'), tsql_like('%', ''), tsql_like('%', NULL)", "1,1,NULL"},
      {"tsql_like('[a-c]x', 'Bx'), tsql_like('[^a-c]x', 'Bx')", "1,0"},
      {"tsql_like('50[%]', '50%'), tsql_like('50[%]', '500')", "1,0"},
      {"tsql_like('abc', 'abc  '), tsql_like('abc  ', 'abc')", "1,0"},
      {"tsql_like('[ab', 'a'), tsql_like('\\_', 'a'), tsql_like('ＡＢ', 'ab')", "0,0,1"},
      {"'ÄB　' = 'äｂ' COLLATE TSQL, 'a' < 'B' COLLATE TSQL", "1,1"},
      {"'ab' = 'a b' COLLATE TSQL, x'ff' || '' = x'fe' || '' COLLATE TSQL", "0,0"},
  });
}

TEST_F(Functions, NumbersAreStrictAndRoundDecimally) {
  expectValues({
      {"tsql_int(' -12 '), tsql_int(''), tsql_int(-3.7)", "-12,0,-3"},
      {"tsql_int('5.5')", "error: '5.5' is not an integer"},
      {"tsql_int('12abc')", "error: not an integer"},
      {"tsql_int(1e30)", "error: overflow"},
      {"tsql_int(300, 8)", "error: overflow"},
      {"tsql_int(-2147483648, 32)", "-2147483648"},
      {"tsql_int(2147483648, 32)", "error: overflow"},
      {"tsql_int(9223372036854775807, 64)", "9223372036854775807"},
      {"tsql_real('1e2')", "100.0"},
      {"tsql_real('inf')", "error: not a number"},
      {"tsql_decimal('1e2', 2, 18)", "error: not a decimal"},
      {"tsql_decimal(2.675, 2, 18), tsql_decimal(-2.5, 0, 18)", "2.68,-3.0"},
      {"tsql_decimal(999.99, 1, 3)", "error: overflow"},
      {"tsql_idiv(-7, 2), tsql_div(7, 2), tsql_mod(7.9, 3), tsql_xor(5, 3)", "-3,3.5,1.9,6"},
      {"tsql_idiv(1, 0)", "error: divide by zero"},
      {"tsql_mod(1, 0.0)", "error: divide by zero"},
      {"tsql_idiv(-9223372036854775807 - 1, -1)", "error: overflow"},
      {"tsql_imod(-9223372036854775807 - 1, -1), tsql_mod(5, 0.0000001) < 0.0000001", "0,1"},
      {"tsql_round(1234, -2, 0), tsql_round(1250, -2, 0)", "1200,1300"},
      {"tsql_round(1234.567, 2, 1), tsql_round(99.99, 1, 0)", "1234.56,100.0"},
      {"tsql_round(748.58, -3, 0), tsql_round(748.58, -4, 0)", "1000.0,0.0"},
      {"tsql_round(0.004, 2, 0)", "0.0"},
      {"tsql_sqrt(-1)", "error: negative"},
      {"tsql_log(0)", "error: not positive"},
      {"tsql_power(10, 400)", "error: overflow"},
      {"tsql_decimal_text(1000, 2), tsql_decimal_text(-0.001, 2)", "1000.00,0.00"},
      {"tsql_float_text(0.1 + 0.2), tsql_float_text(1234567.0)", "0.3,1.23457e+006"},
      {"tsql_str(123.456, 10, 2), tsql_str(123.456, 5, 2), tsql_str(12345, 3, 0)",
       "    123.46,123.5,***"},
      {"tsql_narrow('12345', 3, 1)", "*"},
      {"tsql_narrow('12345', 3, 0)", "error: overflow"},
      {"tsql_isnumeric(NULL), tsql_isnumeric(' '), tsql_isnumeric('-1.5e3')", "0,0,1"},
  });
}

TEST_F(Functions, DatesAreCanonicalAndCountBoundaries) {
  expectValues({
      {"tsql_date('2024-1-5'), tsql_date('')", "2024-01-05 00:00:00.000,1900-01-01 00:00:00.000"},
      {"tsql_date('20240105 9:08:07'), tsql_date(1.5)",
       "2024-01-05 09:08:07.000,1900-01-02 12:00:00.000"},
      {"tsql_date('2024-02-30')", "error: not a date"},
      {"tsql_date(1e9)", "error: out of range"},
      {"tsql_date(-60000)", "error: 1753 to 9999"},
      {"tsql_date_plus('2024-03-01', -1)", "2024-02-29 00:00:00.000"},
      {"tsql_days_between('2024-03-01 12:00', '2024-02-29')", "1.5"},
      {"tsql_date_add('month', 1, '2024-01-31')", "2024-02-29 00:00:00.000"},
      {"tsql_date_add('yy', -1, '2024-02-29 10:11')", "2023-02-28 10:11:00.000"},
      {"tsql_date_add('ms', -1, '2024-01-01')", "2023-12-31 23:59:59.999"},
      {"tsql_date_add('year', 9223372036854775807, '2024-01-01')", "error: out of range"},
      {"tsql_date_add('year', 8000, '2024-01-01')", "error: out of range"},
      {"tsql_date_add('day', 4000000, '2024-01-01')", "error: 1753 to 9999"},
      {"tsql_date_diff('dd', '2024-01-02 00:00:01', '2024-01-01 23:59:59')", "-1"},
      {"tsql_date_diff('qq', '2023-12-31', '2024-01-01')", "1"},
      {"tsql_date_diff('ss', '1960-01-01', '1960-01-01 00:00:01')", "1"},
      {"tsql_date_part('wk', '2024-01-07'), tsql_date_part('dw', '2024-01-07')", "2,1"},
      {"tsql_date_part('qq', '2024-03-31'), tsql_date_part('qq', '2024-04-01')", "1,2"},
      {"tsql_date_part('dy', '2024-12-31'), tsql_date_part('ss', '2024-01-01 0:00:12.700')",
       "366,12"},
      {"tsql_format_date('2024-01-05 00:01', 100)", "Jan  5 2024 12:01AM"},
  });
}

TEST_F(Functions, SingleRefusesASecondRow) {
  expectValues({
      {"(SELECT tsql_single(v) FROM (SELECT 1 AS v UNION SELECT 2))", "error: more than one row"},
      {"(SELECT tsql_single(v) FROM (SELECT 'a' AS v))", "a"},
      {"(SELECT tsql_single(v) FROM (SELECT 1 AS v WHERE 0))", "NULL"},
      {"(SELECT tsql_single(v) FROM (SELECT NULL AS v UNION ALL SELECT NULL))",
       "error: more than one row"},
  });
}

TEST_F(Functions, ExecCallsByNameAndPassesErrorsOn) {
  procedures_.byFoldedName["echo"] = [](std::span<const Variant> arguments) {
    if (arguments.empty()) throw std::runtime_error("no argument");
    return arguments[0];
  };
  expectValues({{"tsql_exec('ECHO', 'x'), tsql_exec('echo', NULL)", "x,NULL"},
                {"tsql_exec('echo')", "error: no argument"},
                {"tsql_exec('other', 1)", "error: unknown procedure other"}});
}

}  // namespace
}  // namespace tarlo::database
