#include "pagehost/pages/page_splitter.h"

#include <charconv>
#include <cstddef>
#include <optional>

#include "value/text.h"

namespace rk::pagehost {
namespace {

using Kind = PagePart::Kind;
constexpr auto npos = std::string_view::npos;

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

std::size_t past_blanks(std::string_view text, std::size_t at) {
  while (at < text.size() && is_blank(text[at])) ++at;
  return at;
}

bool starts_at(std::string_view text, std::size_t at, std::string_view lower_case) {
  return text.size() - at >= lower_case.size() &&
         equal_ignoring_case(text.substr(at, lower_case.size()), lower_case);
}

std::size_t find_ignoring_case(std::string_view text, std::string_view lower_case,
                               std::size_t from) {
  for (std::size_t at = from; at + lower_case.size() <= text.size(); ++at) {
    at = text.find(lower_case[0], at);  // openings and ends begin with "<"
    if (at == npos) return npos;
    if (starts_at(text, at, lower_case)) return at;
  }
  return npos;
}

Attributes attributes_of(std::string_view text) {
  Attributes out;
  std::size_t at = 0;
  while (true) {
    while (at < text.size() && (is_blank(text[at]) || text[at] == '/' || text[at] == '=')) ++at;
    if (at >= text.size()) return out;
    std::size_t end = at;
    while (end < text.size() && !is_blank(text[end]) && text[end] != '=') ++end;
    std::string name = lowered_ascii(text.substr(at, end - at));
    std::string value;
    at = past_blanks(text, end);
    if (at < text.size() && text[at] == '=') {
      at = past_blanks(text, at + 1);
      if (at < text.size() && (text[at] == '"' || text[at] == '\'')) {
        end = text.find(text[at], at + 1);
        value = text.substr(at + 1, end == npos ? npos : end - at - 1);
        at = end == npos ? text.size() : end + 1;
      } else {
        end = at;
        while (end < text.size() && !is_blank(text[end])) ++end;
        value = text.substr(at, end - at);
        at = end;
      }
    }
    out.emplace_back(std::move(name), std::move(value));
  }
}

// The end of a tag that begins at `at`: the place of its ">", which quotes hide.
std::size_t tag_end(std::string_view text, std::size_t at) {
  char quote = 0;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return at;
    }
  }
  return npos;
}

class Splitter {
 public:
  explicit Splitter(std::string_view text) : text_(text) {}

  std::vector<PagePart> parts() {
    std::size_t at = 0;
    while ((at = text_.find('<', at)) != npos) {
      const std::optional<std::size_t> past = opening(at);
      if (past) {
        literal_from_ = *past;
        at = *past;
      } else {
        ++at;
      }
    }
    literal_until(text_.size());
    return std::move(parts_);
  }

 private:
  // Reads what begins at a "<" and answers the place behind it, or nothing where it is page text.
  std::optional<std::size_t> opening(std::size_t at) {
    if (text_.compare(at, 2, "<%") == 0) return script(at);
    if (starts_at(text_, at, "<!--")) return comment(at);
    if (starts_at(text_, at, "<script")) return script_block(at);
    if (starts_at(text_, at, "<object")) return object_declaration(at);
    return std::nullopt;
  }

  std::size_t script(std::size_t at) {
    literal_until(at);
    const std::size_t end = text_.find("%>", at + 2);
    if (end == npos) return unclosed(at, "<%");
    std::size_t from = at + 2;
    if (text_[from] == '@') {
      add(Kind::Directive, from + 1, end).attributes =
          attributes_of(text_.substr(from + 1, end - from - 1));
      return end + 2;
    }
    const std::size_t first = past_blanks(text_, from);
    if (first < end && text_[first] == '=') {
      add(Kind::Expression, first + 1, end);
    } else {
      add(Kind::Script, from, end);
    }
    return end + 2;
  }

  std::optional<std::size_t> comment(std::size_t at) {
    const std::size_t from = past_blanks(text_, at + 4);
    if (starts_at(text_, from, "metadata")) return type_library(at, from + 8);
    if (from >= text_.size() || text_[from] != '#') return std::nullopt;
    const std::size_t word = past_blanks(text_, from + 1);
    if (!starts_at(text_, word, "include")) return std::nullopt;
    const std::size_t end = text_.find("-->", word);
    literal_until(at);
    if (end == npos) return unclosed(at, "<!--#include");
    include(at, word + 7, end);
    return end + 3;
  }

  void include(std::size_t at, std::size_t from, std::size_t end) {
    from = past_blanks(text_, from);
    std::size_t equals = text_.find('=', from);
    if (equals == npos || equals > end) equals = end;
    std::string_view word = text_.substr(from, equals - from);
    while (!word.empty() && is_blank(word.back())) word.remove_suffix(1);
    std::size_t first = past_blanks(text_, equals + (equals < end ? 1 : 0));
    std::string_view path = text_.substr(first, first < end ? end - first : 0);
    while (!path.empty() && is_blank(path.back())) path.remove_suffix(1);
    if (!path.empty() && (path[0] == '"' || path[0] == '\'')) {
      const std::size_t close = path.find(path[0], 1);
      path = path.substr(1, close == npos ? npos : close - 1);
    }
    const bool is_virtual = equal_ignoring_case(word, "virtual");
    const bool known = is_virtual || equal_ignoring_case(word, "file");
    PagePart& part = add(is_virtual ? Kind::IncludeVirtual : Kind::IncludeFile, at, at);
    part.text = known ? path : std::string_view();
  }

  std::optional<std::size_t> type_library(std::size_t at, std::size_t from) {
    const std::size_t end = text_.find("-->", from);
    if (end == npos) return std::nullopt;
    Attributes found = attributes_of(text_.substr(from, end - from));
    if (!equal_ignoring_case(attribute(found, "type"), "typelib")) return std::nullopt;
    literal_until(at);
    add(Kind::TypeLibrary, from, end).attributes = std::move(found);
    return end + 3;
  }

  std::optional<std::size_t> script_block(std::size_t at) {
    const std::size_t close = tag_end(text_, at);
    if (close == npos || !is_blank(text_[at + 7])) return std::nullopt;
    Attributes found = attributes_of(text_.substr(at + 7, close - at - 7));
    if (!equal_ignoring_case(attribute(found, "runat"), "server")) return std::nullopt;
    literal_until(at);
    const std::size_t end = find_ignoring_case(text_, "</script", close);
    if (end == npos) return unclosed(at, "<script runat=\"Server\">");
    add(Kind::ScriptBlock, close + 1, end).attributes = std::move(found);
    const std::size_t past = text_.find('>', end);
    return past == npos ? text_.size() : past + 1;
  }

  std::optional<std::size_t> object_declaration(std::size_t at) {
    const std::size_t close = tag_end(text_, at);
    if (close == npos || !is_blank(text_[at + 7])) return std::nullopt;
    Attributes found = attributes_of(text_.substr(at + 7, close - at - 7));
    if (!equal_ignoring_case(attribute(found, "runat"), "server")) return std::nullopt;
    literal_until(at);
    add(Kind::ObjectDeclaration, at, close).attributes = std::move(found);
    if (text_[close - 1] == '/') return close + 1;
    const std::size_t end = find_ignoring_case(text_, "</object", close);
    if (end == npos) return close + 1;
    const std::size_t past = text_.find('>', end);
    return past == npos ? text_.size() : past + 1;
  }

  std::size_t unclosed(std::size_t at, std::string_view opening) {
    add(Kind::Unclosed, at, at).text = opening;
    return text_.size();
  }

  void literal_until(std::size_t end) {
    if (literal_from_ < end) add(Kind::Literal, literal_from_, end);
    literal_from_ = end;
  }

  PagePart& add(Kind kind, std::size_t from, std::size_t end) {
    count_to(from);
    parts_.push_back({kind, text_.substr(from, end - from), line_, column_, {}});
    return parts_.back();
  }

  // Keeps line and column of the last place asked for; places come in order.
  void count_to(std::size_t place) {
    for (; counted_ < place; ++counted_) {
      if (text_[counted_] == '\n') {
        ++line_;
        column_ = 1;
      } else if ((static_cast<unsigned char>(text_[counted_]) & 0xC0) != 0x80) {
        ++column_;
      }
    }
  }

  std::string_view text_;
  std::vector<PagePart> parts_;
  std::size_t literal_from_ = 0;
  std::size_t counted_ = 0;
  int line_ = 1;
  int column_ = 1;
};

}  // namespace

std::string_view attribute(const Attributes& attributes, std::string_view lower_case_name) {
  for (const auto& [name, value] : attributes) {
    if (name == lower_case_name) return value;
  }
  return {};
}

std::vector<PagePart> split_page(std::string_view utf8) {
  return Splitter(utf8).parts();
}

std::optional<BlockInclude> first_include(std::string_view block_utf8) {
  constexpr std::string_view kEnd = "-->";
  std::size_t at = 0;
  while ((at = block_utf8.find("<!--", at)) != npos) {
    const std::size_t word = past_blanks(block_utf8, at + 4);
    if (word >= block_utf8.size() || block_utf8[word] != '#') {
      at += 4;
      continue;
    }
    const std::size_t end = block_utf8.find(kEnd, at);
    if (end == npos) return std::nullopt;
    const std::size_t past = end + kEnd.size();
    const std::vector<PagePart> parts = split_page(block_utf8.substr(at, past - at));
    const bool is_include = parts.size() == 1 && (parts[0].kind == Kind::IncludeFile ||
                                                  parts[0].kind == Kind::IncludeVirtual);
    if (is_include) return BlockInclude{parts[0], at, past};
    at += 4;
  }
  return std::nullopt;
}

int code_page_directive(std::string_view bytes) {
  const std::size_t at = bytes.find("<%@");
  if (at == npos) return 0;
  const std::size_t end = bytes.find("%>", at);
  if (end == npos) return 0;
  const Attributes found = attributes_of(bytes.substr(at + 3, end - at - 3));
  const std::string_view wanted = attribute(found, "codepage");
  int number = 0;
  const auto read = std::from_chars(wanted.data(), wanted.data() + wanted.size(), number);
  return read.ec == std::errc() ? number : 0;
}

}  // namespace rk::pagehost
