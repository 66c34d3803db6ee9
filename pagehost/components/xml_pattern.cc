#include "pagehost/components/xml_pattern.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

bool is_letter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
         byte >= 0x80;
}
bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool goes_on_in_name(char c) {
  return is_letter(c) || is_digit(c) || c == '-' || c == '.';
}

// What a part of a pattern is, which decides how it stands as a condition.
enum class Sort : std::uint8_t { Nodes, Truth, Number, Text };

struct Part {
  std::string xpath;
  Sort sort = Sort::Nodes;
  bool literal = false;
};

struct Operator {
  std::string_view written;  // in lower case
  std::string_view xpath;
};

constexpr Operator kOr[] = {{"$or$", "or"}, {"||", "or"}, {"or", "or"}};
constexpr Operator kAnd[] = {{"$and$", "and"}, {"&&", "and"}, {"and", "and"}};
constexpr Operator kUnion[] = {{"$union$", "|"}, {"|", "|"}};
constexpr Operator kComparisons[] = {
    {"$eq$", "="}, {"$ne$", "!="}, {"$le$", "<="}, {"$lt$", "<"}, {"$ge$", ">="}, {"$gt$", ">"},
    {"!=", "!="},  {"<=", "<="},   {">=", ">="},   {"=", "="},    {"<", "<"},     {">", ">"},
};

// One pass over the pattern, by the precedence that patterns share with XPath.
class Translator {
 public:
  Translator(std::string_view pattern, const platform::XmlPrefixes& prefixes)
      : whole_(pattern), left_(pattern), prefixes_(prefixes) {}

  std::string translated() {
    if (whole_.size() > kMaxPatternBytes) refuse("it is too long");
    Part part = alternatives();
    skip_space();
    if (!left_.empty()) refuse(rest_words());
    if (part.sort != Sort::Nodes) refuse("it names no nodes");
    return std::move(part.xpath);
  }

 private:
  class Deeper {
   public:
    explicit Deeper(Translator& of) : of_(of) {
      if (++of_.depth_ > kMaxPatternDepth) of_.refuse("its brackets are too deep");
    }
    ~Deeper() { --of_.depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;

   private:
    Translator& of_;
  };

  [[noreturn]] void refuse(std::string_view why) const {
    constexpr std::size_t kMostShown = 80;
    std::string_view shown = whole_.substr(0, kMostShown);
    while (shown.size() < whole_.size() && !shown.empty() &&
           (static_cast<unsigned char>(whole_[shown.size()]) & 0xC0U) == 0x80U) {
      shown.remove_suffix(1);
    }
    throw ScriptError(errors::kSqlFailure, "The XSL pattern '" + std::string(shown) +
                                               "' cannot be selected: " + std::string(why));
  }
  std::string rest_words() const {
    if (left_.empty()) return "it ends too early";
    if (left_.front() == '!') return "'!' is not known";
    if (left_.starts_with("::")) return "axes are of XPath";
    return "it is no pattern from its byte " + std::to_string(whole_.size() - left_.size() + 1) +
           " on";
  }

  void skip_space() {
    const std::size_t at = left_.find_first_not_of(" \t\r\n");
    left_.remove_prefix(at == std::string_view::npos ? left_.size() : at);
  }
  bool take(std::string_view sign) {
    skip_space();
    if (!left_.starts_with(sign)) return false;
    left_.remove_prefix(sign.size());
    return true;
  }
  void must_take(std::string_view sign) {
    if (!take(sign)) refuse("'" + std::string(sign) + "' is missing in it");
  }
  // A word such as "and" ends where a name would.
  bool take_operator(std::string_view written) {
    skip_space();
    if (!equal_ignoring_case(left_.substr(0, written.size()), written)) return false;
    const bool word = is_letter(written.front());
    if (word && left_.size() > written.size() && goes_on_in_name(left_[written.size()])) {
      return false;
    }
    left_.remove_prefix(written.size());
    return true;
  }
  template <std::size_t N>
  std::optional<std::string_view> one_of(const Operator (&operators)[N]) {
    for (const Operator& each : operators) {
      if (take_operator(each.written)) return each.xpath;
    }
    return std::nullopt;
  }

  Part alternatives() {
    Part out = all_of();
    while (one_of(kOr)) {
      out = {out.xpath + " or " + all_of().xpath, Sort::Truth};
    }
    return out;
  }
  Part all_of() {
    Part out = negation();
    while (one_of(kAnd)) {
      out = {out.xpath + " and " + negation().xpath, Sort::Truth};
    }
    return out;
  }
  Part negation() {
    if (take_operator("$not$")) {
      const Deeper deeper(*this);
      return {"not(" + negation().xpath + ")", Sort::Truth};
    }
    take_operator("$any$");  // which comparisons mean anyway
    return comparison();
  }
  Part comparison() {
    Part left = unions();
    skip_space();
    const auto sign = one_of(kComparisons);
    if (!sign) return left;
    const Part right = unions();
    const bool orders = sign->front() == '<' || sign->front() == '>';
    if (orders && (is_word(left) || is_word(right))) refuse("only numbers have an order");
    return {left.xpath + " " + std::string(*sign) + " " + right.xpath, Sort::Truth};
  }
  // A literal that is no number in quotes.
  static bool is_word(const Part& part) {
    if (!part.literal || part.sort != Sort::Text) return false;
    const std::string_view inside(part.xpath.data() + 1, part.xpath.size() - 2);
    return inside.find_first_not_of("0123456789.-+ ") != std::string_view::npos || inside.empty();
  }
  Part unions() {
    Part out = operand();
    while (true) {
      skip_space();
      if (left_.starts_with("||") || !one_of(kUnion)) return out;
      const Part more = operand();
      if (out.sort != Sort::Nodes || more.sort != Sort::Nodes) refuse("only nodes can be united");
      out.xpath += "|" + more.xpath;
    }
  }

  Part operand() {
    skip_space();
    if (left_.empty()) refuse("it ends too early");
    const char c = left_.front();
    if (c == '"' || c == '\'') return quoted();
    if (is_digit(c) || c == '-') return number();
    if (auto value = value_of_context()) return *std::move(value);
    return path();
  }
  Part quoted() {
    const std::size_t end = left_.find(left_.front(), 1);
    if (end == std::string_view::npos) refuse("a text in it is not closed");
    Part out{std::string(left_.substr(0, end + 1)), Sort::Text, true};
    left_.remove_prefix(end + 1);
    skip_space();
    return out;
  }
  Part number() {
    std::size_t end = left_.front() == '-' ? 1 : 0;
    while (end < left_.size() && (is_digit(left_[end]) || left_[end] == '.')) ++end;
    Part out{std::string(left_.substr(0, end)), Sort::Number, true};
    left_.remove_prefix(end);
    const bool whole = out.xpath != "-" && std::count(out.xpath.begin(), out.xpath.end(), '.') < 2;
    if (!whole) refuse("a number in it is none");
    skip_space();
    return out;
  }
  // What tells of the node itself and not of nodes beneath it.
  std::optional<Part> value_of_context() {
    if (take_call("index")) return Part{"(position()-1)", Sort::Number};
    if (take_call("end")) return Part{"(position()=last())", Sort::Truth};
    if (take_call("nodename")) return Part{"name()", Sort::Text};
    if (take_call("value")) return Part{"string()", Sort::Text};
    if (!call_ahead("not")) return std::nullopt;
    const Deeper deeper(*this);
    take_opening("not");
    const std::string inside = alternatives().xpath;
    must_take(")");
    skip_space();
    return Part{"not(" + inside + ")", Sort::Truth};
  }
  // "name" and an opening bracket, in any letter case.
  bool call_ahead(std::string_view name) const {
    if (!equal_ignoring_case(left_.substr(0, name.size()), name)) return false;
    const std::size_t next = left_.find_first_not_of(" \t\r\n", name.size());
    return next != std::string_view::npos && left_[next] == '(';
  }
  void take_opening(std::string_view name) {
    left_.remove_prefix(name.size());
    must_take("(");
  }
  bool take_call(std::string_view name) {
    skip_space();
    if (!call_ahead(name)) return false;
    take_opening(name);
    must_take(")");
    skip_space();
    return true;
  }

  Part path() {
    Part out;
    if (take("//")) {
      out.xpath = "//";
    } else if (take("/")) {
      skip_space();
      if (!begins_step()) return {"/", Sort::Nodes};
      out.xpath = "/";
    }
    if (out.xpath.empty() && take("(")) {
      out = group();
      if (out.sort != Sort::Nodes) return out;
    } else {
      out.xpath += step();
    }
    while (true) {
      if (take("//")) {
        out.xpath += "//" + step();
      } else if (take("/")) {
        out.xpath += "/" + step();
      } else {
        return out;
      }
    }
  }
  Part group() {
    const Deeper deeper(*this);
    Part inside = alternatives();
    must_take(")");
    skip_space();
    Part out{"(" + inside.xpath + ")", inside.sort};
    if (out.sort == Sort::Nodes) out.xpath += conditions();
    return out;
  }
  bool begins_step() const {
    if (left_.empty()) return false;
    const char c = left_.front();
    return is_letter(c) || c == '*' || c == '@' || c == '.';
  }

  std::string step() {
    skip_space();
    if (!begins_step()) refuse(rest_words());
    if (take("..")) return "..";
    if (take(".")) return ".";
    const bool attribute = take("@");
    skip_space();
    std::string out = named(attribute);
    return out + conditions();
  }
  std::string named(bool attribute) {
    const std::string axis = attribute ? "@" : "";
    if (take("*")) return axis + "*";
    const std::string_view name = plain_name();
    skip_space();
    if (!attribute && left_.starts_with("(")) return nodes_called(lowered_ascii(name));
    if (!left_.starts_with(":") || left_.starts_with("::")) return axis + std::string(name);
    left_.remove_prefix(1);
    return prefixed(axis, name);
  }
  std::string_view plain_name() {
    if (left_.empty() || !is_letter(left_.front())) refuse(rest_words());
    std::size_t end = 0;
    while (end < left_.size() && goes_on_in_name(left_[end])) ++end;
    const std::string_view name = left_.substr(0, end);
    left_.remove_prefix(end);
    return name;
  }
  std::string prefixed(const std::string& axis, std::string_view prefix) {
    const std::string before = std::string(prefix) + ":";
    const bool any = left_.starts_with("*");
    if (any) left_.remove_prefix(1);
    const std::string name(any ? "*" : plain_name());
    const bool known = std::any_of(prefixes_.begin(), prefixes_.end(),
                                   [&](const auto& each) { return each.first == prefix; });
    if (known) return axis + before + name;
    if (any) return axis + "*[starts-with(name(),'" + before + "')]";
    return axis + "*[name()='" + before + name + "']";
  }
  // Steps that look like calls: textNode(), ancestor(a), attribute('k').
  std::string nodes_called(std::string_view name) {
    constexpr std::string_view kKnown[] = {"text", "textnode", "comment",   "node",
                                           "pi",   "element",  "attribute", "ancestor"};
    if (std::find(std::begin(kKnown), std::end(kKnown), name) == std::end(kKnown)) {
      refuse("the function " + std::string(name) + "() is not known to patterns, perhaps to XPath");
    }
    must_take("(");
    skip_space();
    std::string argument;
    const bool in_quotes = left_.starts_with("'") || left_.starts_with("\"");
    if (in_quotes) argument = unquoted_name();
    if (!in_quotes && !left_.starts_with(")")) argument = plain_name();
    must_take(")");
    const bool plain = argument.empty();
    if (plain && (name == "text" || name == "textnode")) return "text()";
    if (plain && (name == "comment" || name == "node")) return std::string(name) + "()";
    if (name == "pi") return "processing-instruction(" + (plain ? "" : "'" + argument + "'") + ")";
    if (name == "element") return plain ? "*" : argument;
    if (name == "attribute") return plain ? "@*" : "@" + argument;
    if (name == "ancestor" && !plain) return "ancestor::" + argument + "[1]";
    refuse("the name in the brackets of " + std::string(name) + "() is missing or too many");
  }
  std::string unquoted_name() {
    const char quote = left_.front();
    left_.remove_prefix(1);
    std::string name(plain_name());
    if (!left_.starts_with(quote)) refuse("a text in it is no name");
    left_.remove_prefix(1);
    return name;
  }

  std::string conditions() {
    std::string out;
    while (take("[")) {
      const Deeper deeper(*this);
      out += "[" + condition(alternatives()) + "]";
      must_take("]");
    }
    skip_space();
    return out;
  }
  // [0] is the first.
  std::string condition(const Part& part) const {
    if (part.sort == Sort::Truth || part.sort == Sort::Nodes) return part.xpath;
    if (part.sort == Sort::Text || !part.literal) return "boolean(" + part.xpath + ")";
    constexpr std::size_t kMostDigits = 9;
    const bool counts = part.xpath.size() <= kMostDigits &&
                        part.xpath.find_first_not_of("0123456789") == std::string::npos;
    if (!counts) refuse("a place in it is no count from 0");
    return std::to_string(std::stoul(part.xpath) + 1);
  }

  std::string_view whole_;
  std::string_view left_;
  const platform::XmlPrefixes& prefixes_;
  int depth_ = 0;
};

}  // namespace

std::string xpath_of_pattern(std::string_view pattern, const platform::XmlPrefixes& prefixes) {
  return Translator(pattern, prefixes).translated();
}

}  // namespace rk::pagehost
