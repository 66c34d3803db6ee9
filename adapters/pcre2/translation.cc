#include <algorithm>

#include "adapters/pcre2/regexps.h"
#include "value/script_error.h"

namespace rk::pcre2 {

namespace {

constexpr KnownError kSyntax{5017, "Syntax error in regular expression"};
constexpr KnownError kQuantifier{5018, "Unexpected quantifier"};

bool is_digit(char16_t c) {
  return c >= u'0' && c <= u'9';
}
bool is_letter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// Walks a pattern once, writing it as PCRE2 has to read it.
class Translation {
 public:
  explicit Translation(std::u16string_view pattern) : pattern_(pattern) {}

  std::u16string run() {
    while (at_ < pattern_.size()) {
      if (in_class_) {
        class_unit();
      } else {
        unit();
      }
    }
    return std::move(out_);
  }

 private:
  char16_t ahead(std::size_t n) const {
    return at_ + n < pattern_.size() ? pattern_[at_ + n] : u'\0';
  }
  void copy(std::size_t count) {
    out_.append(pattern_.substr(at_, count));
    at_ += std::min(count, pattern_.size() - at_);
  }

  void unit() {
    const char16_t c = pattern_[at_];
    if (c == u'\\') return escape();
    if (c == u'(') return group();
    if (c == u'[') return open_class();
    copy(1);
    const bool quantifies =
        c == u'*' || c == u'+' || c == u'?' || (c == u'}' && closes_quantifier());
    if (!quantifies) return;
    if (ahead(0) == u'?') copy(1);
    // A second quantifier would be a possessive one there.
    if (ahead(0) == u'+') raise(kQuantifier);
  }

  // Whether what was written ends in {n}, {n,} or {n,m}.
  bool closes_quantifier() const {
    std::size_t i = out_.size() - 1;
    bool digit = false;
    while (i-- > 0 && (is_digit(out_[i]) || out_[i] == u',')) digit = true;
    return digit && i < out_.size() && out_[i] == u'{' && (i == 0 || out_[i - 1] != u'\\');
  }

  void group() {
    if (ahead(1) == u'*') raise(kQuantifier);
    if (ahead(1) == u'?') {
      const char16_t kind = ahead(2);
      if (kind != u':' && kind != u'=' && kind != u'!') raise(kQuantifier);
      copy(3);
    } else {
      copy(1);
    }
  }

  void open_class() {
    in_class_ = true;
    copy(1);
    if (ahead(0) == u'^') copy(1);
    // "]" right behind the bracket closes an empty class, which matches nothing (or anything).
  }

  void class_unit() {
    const char16_t c = pattern_[at_];
    if (c == u'\\') return escape();
    if (c == u'[') out_ += u'\\';  // no [:alpha:] here
    if (c == u']') in_class_ = false;
    copy(1);
  }

  // Letters that mean something behind a backslash; the others are themselves.
  void escape() {
    if (at_ + 1 >= pattern_.size()) raise(kSyntax);
    const char16_t c = ahead(1);
    constexpr std::u16string_view kKept = u"cdDfnrsStwWxu";
    if (c == u'v') {
      out_ += u"\\x0B";
      at_ += 2;
    } else if (!is_letter(c) || kKept.find(c) != kKept.npos || c == u'b' ||
               (c == u'B' && !in_class_)) {
      copy(2);
    } else {
      out_ += c;
      at_ += 2;
    }
  }

  std::u16string_view pattern_;
  std::u16string out_;
  std::size_t at_ = 0;
  bool in_class_ = false;
};

}  // namespace

std::u16string translated(std::u16string_view pattern) {
  return Translation(pattern).run();
}

}  // namespace rk::pcre2
