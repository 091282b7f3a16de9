#include "tsql/lex/shape.h"

#include "text/fold.h"
#include "text/utf8.h"
#include "tsql/lex/scan.h"
#include "tsql/limits.h"

namespace tarlo::tsql {
namespace {

using scan::CharClass;

constexpr char kMark = '\x01';
// Beyond it an integer is a decimal.
constexpr std::size_t kIntegerDigits = 18;

// The copying of text between literals is done in runs: `copied_` is where the run begins.
class ShapeScanner {
 public:
  ShapeScanner(std::string_view sql, Shape& shape) : sql_(sql), shape_(shape) {}

  bool run() {
    while (at_ < sql_.size()) {
      if (!step()) return false;
    }
    flush();
    return true;
  }

 private:
  std::string_view rest() const { return sql_.substr(at_); }
  void flush() { shape_.key.append(sql_.data() + copied_, at_ - copied_); }
  void skipTo(std::size_t offset) { copied_ = at_ = offset; }

  bool step() {
    switch (scan::classOf(sql_[at_])) {
      case CharClass::NameStart:
      case CharClass::NameLead:
        return name();
      case CharClass::Quote:
        return sql_[at_] == '\'' ? text(0) : delimitedName();
      case CharClass::Digit:
        return number();
      case CharClass::Operator:
        return operatorOrComment();
      case CharClass::Other:
        if (sql_[at_] == kMark) return false;
        break;
      default:
        break;
    }
    ++at_;
    return true;
  }

  bool name() {
    const std::size_t length = scan::nameLength(rest());
    if (length == 1 && text::folded(sql_[at_]) == 'n' && rest().substr(1).starts_with('\'')) {
      return text(1);
    }
    // A wide blank has no length as a name; one of its bytes is enough to go on.
    at_ += length == 0 ? scan::wideBlank(rest()) : length;
    return true;
  }

  bool delimitedName() {
    const std::size_t length = scan::quoted(rest(), sql_[at_] == '[' ? ']' : '"').length;
    if (length == 0 || rest().substr(0, length).find(kMark) != std::string_view::npos) return false;
    at_ += length;
    return true;
  }

  bool text(std::size_t prefix) {
    const scan::Quoted quoted = scan::quoted(rest().substr(prefix), '\'');
    if (quoted.length == 0) return false;
    flush();
    shape_.key += kMark;
    shape_.key += 's';
    std::string_view inside = sql_.substr(at_ + prefix + 1, quoted.length - 2);
    if (quoted.hasDoubled) inside = unescape(inside);
    shape_.literals.push_back({ast::LiteralClass::Text, inside});
    skipTo(at_ + prefix + quoted.length);
    return true;
  }

  std::string_view unescape(std::string_view inside) {
    // All unescaped texts together are shorter than the statement, so the views never move; the
    // least size keeps the characters out of the string object, which may be moved.
    if (shape_.unescaped.empty()) shape_.unescaped.reserve(std::max<std::size_t>(sql_.size(), 64));
    const std::size_t from = shape_.unescaped.size();
    scan::appendUndoubled(inside, '\'', shape_.unescaped);
    return std::string_view(shape_.unescaped).substr(from);
  }

  bool number() {
    const scan::Number number = scan::number(rest());
    if (number.length == 0) return false;
    flush();
    const std::string_view written = sql_.substr(at_, number.length);
    shape_.key += kMark;
    if (number.literalClass == ast::LiteralClass::Float) {
      shape_.key += 'f';
    } else if (number.literalClass == ast::LiteralClass::Decimal) {
      appendScale(written.size() - written.find('.') - 1);
    } else {
      shape_.key += number.isHexadecimal || written.size() > kIntegerDigits ? 'I' : 'i';
    }
    shape_.literals.push_back({number.literalClass, written});
    skipTo(at_ + number.length);
    return true;
  }

  void appendScale(std::size_t scale) {
    shape_.key += 'd';
    if (scale < 10) {
      shape_.key += static_cast<char>('0' + scale);
    } else {
      shape_.key += std::to_string(scale);
    }
  }

  bool operatorOrComment() {
    const char c = sql_[at_];
    if (c == '.' && scan::startsNumber(rest())) return number();
    if (c == '-' && rest().starts_with("--")) return comment(scan::lineComment(rest()));
    if (c == '/' && rest().starts_with("/*")) return comment(scan::blockComment(rest()));
    ++at_;
    return true;
  }

  bool comment(std::size_t length) {
    if (length == 0) return false;
    flush();
    shape_.key += ' ';
    skipTo(at_ + length);
    return true;
  }

  std::string_view sql_;
  Shape& shape_;
  std::size_t at_ = 0;
  std::size_t copied_ = 0;
};

}  // namespace

bool shapeOf(std::string_view sql, Shape& shape) {
  shape.key.clear();
  shape.literals.clear();
  shape.unescaped.clear();
  if (sql.size() > kMaxStatementBytes || text::firstInvalidByte(sql) != std::string_view::npos) {
    return false;
  }
  return ShapeScanner(sql, shape).run();
}

}  // namespace tarlo::tsql
