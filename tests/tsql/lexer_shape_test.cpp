#include <gtest/gtest.h>

#include "tsql/error.h"
#include "tsql/lex/lexer.h"
#include "tsql/lex/shape.h"
#include "tsql/limits.h"

namespace tarlo::tsql {
namespace {

std::string tokensOf(std::string_view sql) {
  Lexer lexer(sql);
  std::string all;
  for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
    if (!all.empty()) all += '|';
    all += token.value();
    if (token.isLiteral()) all += '#' + std::to_string(token.ordinal);
  }
  return all;
}

TEST(Lexer, CutsWhereTheTextGivesNoBlank) {
  const std::pair<const char*, const char*> rows[] = {
      {"-1and", "-|1#0|and"},
      {"1else 1e3 1e", "1#0|else|1e3#1|1#2|e"},
      {"'x' and[T]", "x#0|and|T"},
      {".5 5. 0x1F", ".5#0|5.#1|0x1F#2"},
      {"a < = 3", "a|< =|3#0"},
      {"'it''s'N'n'", "it's#0|n#1"},
      {"'--a' '/*b*/' -- c\n'd'", "--a#0|/*b*/#1|d#2"},
      {"a/* x /* y */ z */b", "a|b"},
      {"[a.b]]c] \"q\"", "a.b]c|q"},
      {"标题 a1$#@ @v @@IDENTITY", "标题|a1$#@|@v|@@IDENTITY"},
      {"a\u30005\u00A0b", "a|5#0|b"}};
  for (const auto& [sql, tokens] : rows) EXPECT_EQ(tokensOf(sql), tokens) << sql;
}

TEST(Lexer, RefusesWithAPositionInCharacters) {
  const std::pair<std::string, const char*> rows[] = {
      {"标题\n 题 'x", "line 2, column 4"}, {"a []", "line 1, column 3"},
      {"a [x", "line 1, column 3"},         {"a /* /* */", "line 1, column 3"},
      {"标\xFF", "line 1, column 2"},       {std::string("a\0b", 3), "line 1, column 2"},
      {"a ::b", "line 1, column 3"},        {"0x", "line 1, column 1"},
      {"[a\x01]", "line 1, column 1"},      {std::string(129, 'a'), "line 1, column 1"}};
  for (const auto& [sql, where] : rows) {
    try {
      tokensOf(sql);
      ADD_FAILURE() << "taken: " << sql;
    } catch (const StatementError& error) {
      EXPECT_EQ(std::string(error.what()).find(where), 0u) << sql << ": " << error.what();
    }
  }
}

TEST(Shape, NumbersLiteralsAsTheLexerDoes) {
  const char* rows[] = {"select T1.a2,1and'x''y'+N'z',.5,a.5,1e5,[3'4],\"5\",--6\n7/*8*/9",
                        "a\u30005'标'"};
  for (const char* sql : rows) {
    Shape shape;
    ASSERT_TRUE(shapeOf(sql, shape)) << sql;
    Lexer lexer(sql);
    auto literal = shape.literals.begin();
    for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
      if (!token.isLiteral()) continue;
      ASSERT_NE(literal, shape.literals.end()) << sql;
      EXPECT_EQ(literal->text, token.value());
      EXPECT_EQ((literal++)->literalClass, token.literalClass);
    }
    EXPECT_EQ(literal, shape.literals.end()) << sql;
  }
}

TEST(Shape, DiffersInFormAndNotInValues) {
  const auto keyOf = [](std::string_view sql) {
    Shape shape;
    EXPECT_TRUE(shapeOf(sql, shape)) << sql;
    return shape.key;
  };
  EXPECT_EQ(keyOf("a=1 and b='x'"), keyOf("a=22 and b='y''z'"));
  EXPECT_NE(keyOf("a=1"), keyOf("a='1'"));
  EXPECT_NE(keyOf("a=1.5"), keyOf("a=1.25"));
  EXPECT_NE(keyOf("a=1"), keyOf("a=12345678901234567890"));
  EXPECT_NE(keyOf("a=1"), keyOf("b=1"));
  EXPECT_EQ(keyOf("/*x*/"), " ");
  Shape shape;
  for (const char* sql : {"'x", "[x", "/*", "a\x01", "'\xFF'"}) EXPECT_FALSE(shapeOf(sql, shape));
}

TEST(Shape, KeepsItsViewsWhenMoved) {
  const std::string sql = "'a''b','c''d'";
  Shape shape;
  ASSERT_TRUE(shapeOf(sql, shape));
  const Shape moved = std::move(shape);
  EXPECT_EQ(moved.literals[0].text, "a'b");
  EXPECT_EQ(moved.literals[1].text, "c'd");
}

}  // namespace
}  // namespace tarlo::tsql
