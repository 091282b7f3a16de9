#include <gtest/gtest.h>

#include "database/function_support.h"

namespace tarlo::database {
namespace {

void expectRows(const std::vector<FunctionRowCase>& rows) {
  FunctionHandle handle;
  for (const auto& row : rows) {
    std::string actual;
    EXPECT_TRUE(handle.gives(row, actual)) << row.expression << " gave " << actual;
  }
}

TEST(Functions, TextsAreCutByUtf16Units) {
  expectRows({
      {"tsql_len('ab  ')", "2"},
      {"tsql_len('   ')", "0"},
      {"tsql_len('中😀')", "3"},
      {"tsql_datalength('中😀')", "6"},
      {"tsql_len(NULL)", "NULL"},
      {"tsql_substring('abc', 0, 2)", "a"},
      {"tsql_substring('abc', -5, 3)", ""},
      {"tsql_substring('abc', 2, 9223372036854775807)", "bc"},
      {"tsql_substring('abc', 1, -1)", "error: negative length"},
      {"tsql_left('中文', 1) || tsql_right('abc', 0) || tsql_right('abc', 2)", "中bc"},
      {"tsql_left('abc', -1)", "error: negative length"},
      {"tsql_stuff('abcdef', 2, 3, 'X')", "aXef"},
      {"tsql_stuff('abc', 4, 1, 'X')", "NULL"},
      {"tsql_replicate('ab', -1)", "NULL"},
      {"length(tsql_replicate('ab', 9000000000))", "8000"},
      {"length(tsql_space(3))", "3"},
      {"tsql_reverse('a中b')", "b中a"},
      {"tsql_upper('äя中') || tsql_lower('ÄЯＡ')", "ÄЯ中äяａ"},
      {"tsql_ascii('')", "NULL"},
      {"tsql_char(256)", "NULL"},
      {"tsql_fit('ab  ', 3, 'C')", "ab "},
      {"tsql_fit('abcd', 3, 'C')", "error: truncated in column C"},
      {"tsql_pad('ab', 4) || '|'", "ab  |"},
  });
}

TEST(Functions, SearchSeesNeitherCaseNorWidth) {
  expectRows({
      {"tsql_charindex('B', 'abcb', 1)", "2"},
      {"tsql_charindex('b', 'abcb', 3)", "4"},
      {"tsql_charindex('b', 'abcb', 9)", "0"},
      {"tsql_charindex('', 'abc', 1)", "0"},
      {"tsql_charindex('x', '😀x', 1)", "3"},
      {"tsql_replace('aBAb', 'ab', '-')", "--"},
      {"tsql_replace('abc', '', 'x')", "abc"},
      {"length(tsql_replace(tsql_replicate('a', 8000), 'a', tsql_replicate('b', 8000)))",
       "error: too long"},
      {"tsql_like('A_c%', 'abcd')", "1"},
      {"tsql_like('[a-c]x', 'Bx') + tsql_like('[^a-c]x', 'Bx')", "1"},
      {"tsql_like('50[%]', '50%') + tsql_like('50[%]', '500')", "1"},
      {"tsql_like('abc', 'abc  ') + tsql_like('abc  ', 'abc')", "1"},
      {"tsql_like('[ab', 'a')", "0"},
      {"tsql_like('%', '')", "1"},
      {"tsql_like('\\_', 'a')", "0"},
      {"tsql_like('ＡＢ', 'ab')", "1"},
      {"tsql_like('%', NULL)", "NULL"},
      {"'ÄB　' = 'äｂ' COLLATE TSQL", "1"},
      {"'a' < 'B' COLLATE TSQL", "1"},
      {"'ab' = 'a b' COLLATE TSQL", "0"},
      {"x'ff' || '' = x'fe' || '' COLLATE TSQL", "0"},
  });
}

TEST(Functions, NumbersAreStrictAndRoundDecimally) {
  expectRows({
      {"tsql_int(' -12 ')", "-12"},
      {"tsql_int('')", "0"},
      {"tsql_int('5.5')", "error: '5.5' is not an integer"},
      {"tsql_int('12abc')", "error: not an integer"},
      {"tsql_int(-3.7)", "-3"},
      {"tsql_int(1e30)", "error: overflow"},
      {"tsql_int(300, 8)", "error: overflow"},
      {"tsql_int(-2147483648, 32)", "-2147483648"},
      {"tsql_int(2147483648, 32)", "error: overflow"},
      {"tsql_int(9223372036854775807, 64)", "9223372036854775807"},
      {"tsql_real('1e2')", "100.0"},
      {"tsql_real('inf')", "error: not a number"},
      {"tsql_decimal('1e2', 2, 18)", "error: not a decimal"},
      {"tsql_decimal(2.675, 2, 18)", "2.68"},
      {"tsql_decimal(-2.5, 0, 18)", "-3.0"},
      {"tsql_decimal(999.99, 1, 3)", "error: overflow"},
      {"tsql_idiv(-7, 2)", "-3"},
      {"tsql_idiv(1, 0)", "error: divide by zero"},
      {"tsql_imod(-9223372036854775807 - 1, -1)", "0"},
      {"tsql_idiv(-9223372036854775807 - 1, -1)", "error: overflow"},
      {"tsql_div(7, 2)", "3.5"},
      {"tsql_mod(7.9, 3)", "1.9"},
      {"tsql_mod(1, 0.0)", "error: divide by zero"},
      {"tsql_mod(5, 0.0000001) < 0.0000001", "1"},
      {"tsql_xor(5, 3)", "6"},
      {"tsql_round(1234, -2, 0)", "1200"},
      {"tsql_round(1250, -2, 0)", "1300"},
      {"tsql_round(1234.567, 2, 1)", "1234.56"},
      {"tsql_round(748.58, -3, 0)", "1000.0"},
      {"tsql_round(748.58, -4, 0)", "0.0"},
      {"tsql_round(99.99, 1, 0)", "100.0"},
      {"tsql_round(0.004, 2, 0)", "0.0"},
      {"tsql_sqrt(-1)", "error: negative"},
      {"tsql_log(0)", "error: not positive"},
      {"tsql_power(10, 400)", "error: overflow"},
      {"tsql_decimal_text(1000, 2)", "1000.00"},
      {"tsql_decimal_text(-0.001, 2)", "0.00"},
      {"tsql_float_text(0.1 + 0.2)", "0.3"},
      {"tsql_float_text(1234567.0)", "1.23457e+006"},
      {"tsql_str(123.456, 10, 2)", "    123.46"},
      {"tsql_str(123.456, 5, 2)", "123.5"},
      {"tsql_str(12345, 3, 0)", "***"},
      {"tsql_narrow('12345', 3, 1)", "*"},
      {"tsql_narrow('12345', 3, 0)", "error: overflow"},
      {"tsql_isnumeric(NULL) || tsql_isnumeric(' ') || tsql_isnumeric('-1.5e3')", "001"},
  });
}

TEST(Functions, DatesAreCanonicalAndCountBoundaries) {
  expectRows({
      {"tsql_date('2024-1-5')", "2024-01-05 00:00:00.000"},
      {"tsql_date('20240105 9:08:07')", "2024-01-05 09:08:07.000"},
      {"tsql_date('')", "1900-01-01 00:00:00.000"},
      {"tsql_date('2024-02-30')", "error: not a date"},
      {"tsql_date(1.5)", "1900-01-02 12:00:00.000"},
      {"tsql_date(1e9)", "error: out of range"},
      {"tsql_date(-60000)", "error: 1753 to 9999"},
      {"tsql_date_plus('2024-03-01', -1)", "2024-02-29 00:00:00.000"},
      {"tsql_days_between('2024-03-01 12:00', '2024-02-29')", "1.5"},
      {"tsql_date_add('month', 1, '2024-01-31')", "2024-02-29 00:00:00.000"},
      {"tsql_date_add('yy', -1, '2024-02-29 10:11')", "2023-02-28 10:11:00.000"},
      {"tsql_date_add('ms', -1, '2024-01-01')", "2023-12-31 23:59:59.999"},
      {"tsql_date_add('year', 9223372036854775807, '2024-01-01')", "error: out of range"},
      {"tsql_date_add('day', 4000000, '2024-01-01')", "error: 1753 to 9999"},
      {"tsql_date_diff('mi', '2024-01-01 23:59:59', '2024-01-02 00:00:01')", "1"},
      {"tsql_date_diff('dd', '2024-01-02 00:00:01', '2024-01-01 23:59:59')", "-1"},
      {"tsql_date_diff('wk', '2024-01-06', '2024-01-07')", "1"},
      {"tsql_date_diff('qq', '2023-12-31', '2024-01-01')", "1"},
      {"tsql_date_diff('ss', '1960-01-01', '1960-01-01 00:00:01')", "1"},
      {"tsql_date_part('wk', '2024-01-07')", "2"},
      {"tsql_date_part('dw', '2024-01-07')", "1"},
      {"tsql_date_part('dy', '2024-12-31')", "366"},
      {"tsql_date_part('ss', '2024-01-01 00:00:12.700')", "12"},
      {"tsql_date_name('month', '2024-01-05') || tsql_date_name('dw', '2024-01-05')", "01星期五"},
      {"tsql_format_date('2024-01-05 10:11:12.013', 0)", "Jan  5 2024 10:11AM"},
      {"tsql_format_date('2024-01-05 00:01', 100)", "Jan  5 2024 12:01AM"},
      {"tsql_format_date('2024-01-05 10:11:12.013', 126)", "2024-01-05T10:11:12.013"},
      {"tsql_format_date('2024-01-05', 103) || tsql_format_date('2024-01-05', 112)",
       "05/01/202420240105"},
  });
}

TEST(Functions, SingleRefusesASecondRow) {
  expectRows({
      {"(SELECT tsql_single(v) FROM (SELECT 1 AS v UNION SELECT 2))", "error: more than one row"},
      {"(SELECT tsql_single(v) FROM (SELECT 'a' AS v))", "a"},
      {"(SELECT tsql_single(v) FROM (SELECT 1 AS v WHERE 0))", "NULL"},
      {"(SELECT tsql_single(v) FROM (SELECT NULL AS v UNION ALL SELECT NULL))",
       "error: more than one row"},
  });
}

TEST(Functions, ExecCallsByNameAndPassesErrorsOn) {
  FunctionHandle handle;
  handle.procedures().byFoldedName["echo"] = [](std::span<const Variant> arguments) {
    if (arguments.empty()) throw std::runtime_error("no argument");
    return arguments[0];
  };
  EXPECT_EQ(handle.evaluate("tsql_exec('ECHO', 'x')"), "x");
  EXPECT_EQ(handle.evaluate("tsql_exec('echo', NULL)"), "NULL");
  EXPECT_EQ(handle.evaluate("tsql_exec('echo')"), "error: no argument");
  EXPECT_EQ(handle.evaluate("tsql_exec('other', 1)"), "error: unknown procedure other");
}

}  // namespace
}  // namespace tarlo::database
