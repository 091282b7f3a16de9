#include "tsql/parse/token_stream.h"

#include <fmt/format.h>

#include <charconv>

#include "text/fold.h"
#include "text/utf8.h"
#include "tsql/limits.h"

namespace tarlo::tsql {
namespace {

constexpr std::size_t kExcerptCharacters = 40;

std::string shortened(std::string_view text) {
  const std::string_view front = text::utf8Prefix(text, kExcerptCharacters);
  return front.size() == text.size() ? std::string(text) : std::string(front) + "...";
}

// A token as a message shows it; texts and delimited names bring their own quotes.
std::string described(const Token& token) {
  switch (token.kind) {
    case TokenKind::End:
      return "the end of the statement";
    case TokenKind::Text:
      return "the text " + shortened(token.text);
    case TokenKind::DelimitedName:
      return "the name " + shortened(token.text);
    default:
      return fmt::format("'{}'", shortened(token.text));
  }
}

}  // namespace

const Token& TokenStream::peek(std::size_t ahead) {
  for (; count_ <= ahead; ++count_) window_[(first_ + count_) % kLookAhead] = lexer_.next();
  return window_[(first_ + ahead) % kLookAhead];
}

Token TokenStream::take() {
  const Token token = peek();
  first_ = (first_ + 1) % kLookAhead;
  --count_;
  return token;
}

bool TokenStream::matchWord(std::string_view word) {
  return peek().kind == TokenKind::Name && text::equalsNoCase(peek().text, word);
}

bool TokenStream::consumeWord(std::string_view word) {
  if (!matchWord(word)) return false;
  take();
  return true;
}

std::string TokenStream::expectName(std::string_view what) {
  if (!peek().isName()) expected(what);
  return take().value();
}

Token TokenStream::takeFixed() {
  fixedOrdinals_.push_back(peek().ordinal);
  return take();
}

int TokenStream::expectFixedInteger(std::string_view what) {
  const Token& token = peek();
  const char* end = token.text.data() + token.text.size();
  int value = 0;
  const bool isInteger =
      token.kind == TokenKind::Number && token.literalClass == ast::LiteralClass::Integer;
  if (!isInteger) expected(what);
  const auto [stopped, error] = std::from_chars(token.text.data(), end, value);
  if (error != std::errc() || stopped != end) expected(what);
  takeFixed();
  return value;
}

void TokenStream::expected(std::string_view what) {
  const Token& token = peek();
  refuse(Refusal::Syntax, token.position,
         fmt::format("expected {}, found {}", what, described(token)));
}

void TokenStream::refuse(Refusal refusal, Position position, std::string_view message) const {
  throw StatementError(refusal, position, message);
}

std::string TokenStream::excerptFrom(Position from) {
  std::string_view text = sql_.substr(from.offset, position().offset - from.offset);
  const std::size_t last = text.find_last_not_of(" \t\r\n");
  return shortened(text.substr(0, last + 1));
}

void TokenStream::checkListItems(std::size_t count, std::string_view list) {
  if (count <= kMaxListItems) return;
  refuse(Refusal::Limit, position(), fmt::format("more than {} items in {}", kMaxListItems, list));
}

Nesting::Nesting(TokenStream& tokens) : tokens_(tokens), outerHeight_(tokens.height_) {
  if (tokens.nesting_ == kMaxNesting) {
    tokens.refuse(Refusal::Limit, tokens.position(),
                  fmt::format("nested deeper than {} levels", kMaxNesting));
  }
  ++tokens.nesting_;
  tokens.height_ = 0;
}

Nesting::~Nesting() {
  --tokens_.nesting_;
  tokens_.height_ = std::max(outerHeight_, tokens_.height_ + 1);
}

ChainGuard::ChainGuard(TokenStream& tokens) : tokens_(tokens), outerHeight_(tokens.height_) {
  tokens.height_ = 0;
}

ChainGuard::~ChainGuard() {
  tokens_.height_ = std::max(outerHeight_, tokens_.height_);
}

void ChainGuard::grow(Position position) {
  ++tokens_.height_;
  if (++operators_ > kMaxChain) {
    tokens_.refuse(Refusal::Limit, position,
                   fmt::format("more than {} operators in one chain", kMaxChain));
  }
  if (tokens_.height_ > kMaxTreeHeight) {
    tokens_.refuse(Refusal::Limit, position,
                   fmt::format("chains of more than {} operators inside each other", kMaxChain));
  }
}

}  // namespace tarlo::tsql
