#include "tsql/lex/lexer.h"

#include <fmt/format.h>

#include "text/fold.h"
#include "text/utf8.h"
#include "tsql/error.h"
#include "tsql/lex/scan.h"
#include "tsql/limits.h"

namespace tarlo::tsql {
namespace {

using scan::CharClass;

struct SymbolText {
  std::string_view text;
  Symbol symbol;
};

constexpr SymbolText kSingle[] = {
    {"(", Symbol::OpenParen}, {")", Symbol::CloseParen}, {",", Symbol::Comma},
    {".", Symbol::Dot},       {";", Symbol::Semicolon},  {"+", Symbol::Plus},
    {"-", Symbol::Minus},     {"*", Symbol::Star},       {"/", Symbol::Slash},
    {"%", Symbol::Percent},   {"&", Symbol::Ampersand},  {"|", Symbol::Bar},
    {"^", Symbol::Caret},     {"~", Symbol::Tilde},      {"=", Symbol::Equal},
    {"<", Symbol::Less},      {">", Symbol::Greater}};

// Their two signs may stand apart.
constexpr SymbolText kDouble[] = {{"<=", Symbol::LessOrEqual},    {">=", Symbol::GreaterOrEqual},
                                  {"<>", Symbol::NotEqual},       {"!=", Symbol::NotEqual},
                                  {"!<", Symbol::GreaterOrEqual}, {"!>", Symbol::LessOrEqual}};

std::size_t blanksLength(std::string_view rest) {
  std::size_t i = 0;
  while (i < rest.size()) {
    const CharClass charClass = scan::classOf(rest[i]);
    if (charClass == CharClass::Blank) {
      ++i;
    } else if (charClass == CharClass::NameLead) {
      const std::size_t wide = scan::wideBlank(rest.substr(i));
      if (wide == 0) break;
      i += wide;
    } else {
      break;
    }
  }
  return i;
}

[[noreturn]] void refuse(Position position, std::string_view message,
                         Refusal refusal = Refusal::Syntax) {
  throw StatementError(refusal, position, message);
}

void checkNameLength(std::string_view name, Position position) {
  if (name.size() > kMaxIdentifierUnits && text::utf16Length(name) > kMaxIdentifierUnits) {
    refuse(position, fmt::format("a name is longer than {} characters", kMaxIdentifierUnits),
           Refusal::Limit);
  }
}

}  // namespace

std::string Token::value() const {
  if (kind != TokenKind::DelimitedName && kind != TokenKind::Text) return std::string(text);
  const std::size_t opening = text.find_first_of("'\"[");
  const char closing = text[opening] == '[' ? ']' : text[opening];
  std::string result;
  scan::appendUndoubled(text.substr(opening + 1, text.size() - opening - 2), closing, result);
  return result;
}

Lexer::Lexer(std::string_view sql) : sql_(sql) {
  if (sql.size() > kMaxStatementBytes) {
    refuse({}, fmt::format("the statement is longer than {} bytes", kMaxStatementBytes),
           Refusal::Limit);
  }
  const std::size_t invalid = text::firstInvalidByte(sql);
  if (invalid == std::string_view::npos) return;
  refuse(positionAt(invalid), sql[invalid] == '\0'
                                  ? "expected text, found a NUL character"
                                  : "expected text, found bytes that are no UTF-8");
}

Position Lexer::positionAt(std::size_t offset) {
  for (std::size_t i = position_.offset; i < offset; ++i) {
    if (sql_[i] == '\n') {
      ++position_.line;
      position_.column = 1;
    } else if (!text::isContinuation(sql_[i])) {
      ++position_.column;
    }
  }
  position_.offset = static_cast<std::uint32_t>(offset);
  return position_;
}

void Lexer::skipBlockComment() {
  const std::size_t length = scan::blockComment(rest());
  if (length == 0) refuse(positionAt(at_), "the comment that begins here is never closed");
  at_ += length;
}

void Lexer::skipBlanksAndComments() {
  for (;;) {
    at_ += blanksLength(rest());
    if (rest().starts_with("--")) {
      at_ += scan::lineComment(rest());
    } else if (rest().starts_with("/*")) {
      skipBlockComment();
    } else {
      return;
    }
  }
}

Token Lexer::take(Token token, std::size_t length) {
  token.position = positionAt(at_);
  token.text = sql_.substr(at_, length);
  if (token.isLiteral()) token.ordinal = nextOrdinal_++;
  at_ += length;
  return token;
}

Token Lexer::next() {
  skipBlanksAndComments();
  if (at_ == sql_.size()) return take({}, 0);
  switch (scan::classOf(sql_[at_])) {
    case CharClass::NameStart:
    case CharClass::NameLead:
      return takeName();
    case CharClass::Quote:
      return sql_[at_] == '\'' ? takeText(0) : takeDelimitedName();
    case CharClass::Digit:
      return takeNumber();
    case CharClass::Operator:
      return scan::startsNumber(rest()) ? takeNumber() : takeSymbol();
    default:
      refuse(positionAt(at_), static_cast<unsigned char>(sql_[at_]) < 0x20
                                  ? "expected text, found a control character"
                                  : fmt::format("'{}' means nothing here", sql_[at_]));
  }
}

Token Lexer::takeName() {
  const std::size_t length = scan::nameLength(rest());
  if (length == 1 && text::folded(sql_[at_]) == 'n' && rest().substr(1).starts_with('\'')) {
    return takeText(1);
  }
  Token token;
  token.kind = sql_[at_] == '@' ? TokenKind::Variable : TokenKind::Name;
  token = take(token, length);
  checkNameLength(token.text, token.position);
  if (token.kind == TokenKind::Name) token.keyword = keywordOf(token.text);
  return token;
}

Token Lexer::takeDelimitedName() {
  const char closing = sql_[at_] == '[' ? ']' : '"';
  const std::size_t length = scan::quoted(rest(), closing).length;
  if (length == 0) {
    refuse(positionAt(at_),
           fmt::format("the name that begins here is never closed with {}", closing));
  }
  Token token;
  token.kind = TokenKind::DelimitedName;
  token = take(token, length);
  checkName(token);
  return token;
}

void Lexer::checkName(const Token& token) {
  const std::string name = token.value();
  if (name.empty()) refuse(token.position, fmt::format("expected a name, found {}", token.text));
  for (const char c : name) {
    if (static_cast<unsigned char>(c) < 0x20) {
      refuse(token.position, "expected a name, found one with a control character");
    }
  }
  checkNameLength(name, token.position);
}

Token Lexer::takeText(std::size_t prefix) {
  const std::size_t length = scan::quoted(rest().substr(prefix), '\'').length;
  if (length == 0) refuse(positionAt(at_), "the text that begins here is never closed with '");
  Token token;
  token.kind = TokenKind::Text;
  token.literalClass = ast::LiteralClass::Text;
  return take(token, prefix + length);
}

Token Lexer::takeNumber() {
  const scan::Number number = scan::number(rest());
  if (number.length == 0) refuse(positionAt(at_), "expected hexadecimal digits behind 0x");
  Token token;
  token.kind = TokenKind::Number;
  token.literalClass = number.literalClass;
  return take(token, number.length);
}

Token Lexer::takeSymbol() {
  Token token;
  token.kind = TokenKind::Symbol;
  for (const SymbolText& entry : kDouble) {
    if (sql_[at_] != entry.text[0]) continue;
    const std::size_t second = 1 + blanksLength(rest().substr(1));
    if (second >= rest().size() || rest()[second] != entry.text[1]) continue;
    token.symbol = entry.symbol;
    return take(token, second + 1);
  }
  for (const SymbolText& entry : kSingle) {
    if (sql_[at_] != entry.text[0]) continue;
    token.symbol = entry.symbol;
    return take(token, 1);
  }
  refuse(positionAt(at_), fmt::format("expected = behind '{}'", sql_[at_]));
}

}  // namespace tarlo::tsql
