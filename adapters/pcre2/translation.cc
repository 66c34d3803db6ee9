#include <algorithm>
#include <string>
#include <utility>

#include "adapters/pcre2/regexps.h"
#include "value/script_error.h"
#include "value/text.h"
#include "value/text_functions.h"

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

constexpr char16_t kLastAscii = 0x7F;
// The widest range whose letters are looked up one by one: all of an alphabet, and not the Chinese
// characters, which have no letter case.
constexpr char16_t kWidestRange = 1024;

// The letter in its other case, or the unit itself.
char16_t other_case(char16_t unit) {
  const std::string utf8 = Text::from_units({&unit, 1}).string();
  for (const std::string& changed : {lower_case(utf8), upper_case(utf8)}) {
    const std::u16string units = Text(changed).units();
    if (units.size() == 1 && units[0] != unit) return units[0];
  }
  return unit;
}

std::size_t groups_of(std::u16string_view pattern) {
  std::size_t groups = 0;
  bool in_class = false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char16_t c = pattern[i];
    if (c == u'\\') {
      ++i;
    } else if (in_class) {
      in_class = c != u']';
    } else if (c == u'[') {
      in_class = true;
    } else if (c == u'(' && (i + 1 == pattern.size() || pattern[i + 1] != u'?')) {
      ++groups;
    }
  }
  return groups;
}

// Walks a pattern once, writing it as PCRE2 has to read it. PCRE2 itself folds the case of ASCII
// letters only; other letters are written in both cases.
class Translation {
 public:
  Translation(std::u16string_view pattern, bool ignore_case)
      : pattern_(pattern), ignore_case_(ignore_case), groups_(groups_of(pattern)) {}

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
    if (ignore_case_ && c > kLastAscii && other_case(c) != c) {
      out_ += {u'[', c, other_case(c), u']'};
      ++at_;
      return;
    }
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
    behind_set_ = false;
    if (ahead(0) != u']') return;
    // Right behind the bracket it is a character like others.
    out_ += u"\\]";
    ++at_;
  }

  void class_unit() {
    const char16_t c = pattern_[at_];
    const bool behind_set = std::exchange(behind_set_, false);
    if (c == u'\\') {
      behind_set_ = is_set(ahead(1));
      return escape();
    }
    // Beside \w, \d or \s it makes no range.
    const bool lone_dash = c == u'-' && (behind_set || (ahead(1) == u'\\' && is_set(ahead(2))));
    if (lone_dash || c == u'[') out_ += u'\\';  // no [:alpha:] here
    if (c == u']') in_class_ = false;
    if (ignore_case_) class_other_case();
    copy(1);
  }

  static bool is_set(char16_t letter) {
    return std::u16string_view(u"wWdDsS").find(letter) != std::u16string_view::npos;
  }

  // Before a letter, or the first letter of a range, stand the letters of the other case.
  void class_other_case() {
    const char16_t first = pattern_[at_];
    const bool behind_dash = pattern_[at_ - 1] == u'-';
    const bool range = ahead(1) == u'-' && ahead(2) != u']' && ahead(2) != u'\\';
    const char16_t last = range ? ahead(2) : first;
    if (behind_dash || last <= kLastAscii || last < first || last - first > kWidestRange) return;
    for (char32_t c = first; c <= last; ++c) {
      const char16_t other = other_case(static_cast<char16_t>(c));
      if (c > kLastAscii && other != c) out_ += other;
    }
  }

  // Letters that mean something behind a backslash; the others are themselves.
  void escape() {
    if (at_ + 1 >= pattern_.size()) raise(kSyntax);
    const char16_t c = ahead(1);
    if (is_digit(c) && c != u'0' && !in_class_) return back_reference();
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

  // Where no such group is, the number is the character's own in octal digits, or a digit.
  void back_reference() {
    constexpr std::size_t kMostDigits = 3;
    constexpr char16_t kLastOctal = 0xFF;
    std::size_t number = 0;
    std::size_t length = 1;
    while (length <= kMostDigits && is_digit(ahead(length))) {
      number = number * 10 + (ahead(length++) - u'0');
    }
    if (number <= groups_) return copy(length);
    char16_t octal = 0;
    length = 1;
    for (; length <= kMostDigits && ahead(length) >= u'0' && ahead(length) < u'8'; ++length) {
      const auto wider = static_cast<char16_t>(octal * 8 + (ahead(length) - u'0'));
      if (wider > kLastOctal) break;
      octal = wider;
    }
    if (length == 1) {  // 8 or 9
      out_ += ahead(1);
      at_ += 2;
      return;
    }
    constexpr std::u16string_view kHex = u"0123456789ABCDEF";
    out_ += {u'\\', u'x', kHex[octal >> 4], kHex[octal & 0xF]};
    at_ += length;
  }

  std::u16string_view pattern_;
  bool ignore_case_;
  std::size_t groups_;
  std::u16string out_;
  std::size_t at_ = 0;
  bool in_class_ = false;
  bool behind_set_ = false;  // behind \w and the like in a class
};

}  // namespace

std::u16string translated(std::u16string_view pattern, bool ignore_case) {
  return Translation(pattern, ignore_case).run();
}

}  // namespace rk::pcre2
