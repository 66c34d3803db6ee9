#include "pagehost/components/xml_tree.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "pagehost/components/charsets.h"
#include "pagehost/components/xml_pattern.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

using platform::XmlFault;
using platform::XmlKind;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::int32_t kNoEncoding = -1072896657;

std::int32_t number_of(XmlFault::Kind kind) {
  switch (kind) {
    case XmlFault::Kind::NoRoot:
      return -1072896680;
    case XmlFault::Kind::TagMismatch:
      return -1072896659;
    case XmlFault::Kind::BadCharacter:
      return -1072896760;
    case XmlFault::Kind::TooLarge:
      return -1072894420;
    case XmlFault::Kind::Malformed:
      break;
  }
  return -1072896749;
}

std::string line_of(std::string_view text, int line) {
  for (; line > 1; --line) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return {};
    text.remove_prefix(end + 1);
  }
  constexpr std::size_t kMostShown = 200;
  std::string_view out = text.substr(0, std::min(text.find('\n'), kMostShown));
  while (!out.empty() && (out.back() & '\xC0') == '\x80') out.remove_suffix(1);
  return std::string(out);
}

// The value of a word such as encoding="..." in a declaration; empty where it has none.
std::string_view declared(std::string_view declaration, std::string_view word) {
  const std::size_t at = declaration.find(word);
  if (at == std::string_view::npos) return {};
  const std::size_t quote = declaration.find_first_of("\"'", at);
  if (quote == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[quote], quote + 1);
  return declaration.substr(quote + 1, end == std::string_view::npos ? 0 : end - quote - 1);
}

std::string_view encoding_of(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  return declared(bytes.substr(0, bytes.find("?>")), "encoding");
}

// Characters that the code page lacks as references.
std::string encoded_with_references(std::string_view utf8, int code_page,
                                    const platform::CodePages& code_pages) {
  std::string whole = charset_encoded(utf8, code_page, code_pages);
  if (charset_decoded(whole, code_page, code_pages) == utf8) return whole;
  std::string out;
  for (std::size_t at = 0; at < utf8.size();) {
    std::size_t end = at + 1;
    while (end < utf8.size() && (utf8[end] & '\xC0') == '\x80') ++end;
    const std::string_view character = utf8.substr(at, end - at);
    std::string bytes = charset_encoded(character, code_page, code_pages);
    if (charset_decoded(bytes, code_page, code_pages) != character) {
      const std::u16string units = Text(character).units();
      std::uint32_t point = units[0];
      if (units.size() == 2) {
        point = 0x10000 + ((point - 0xD800U) << 10) + (units[1] - 0xDC00U);
      }
      bytes = "&#" + std::to_string(point) + ";";
    }
    out += bytes;
    at = end;
  }
  return out;
}

}  // namespace

std::string_view without_outer_space(std::string_view text) {
  constexpr std::string_view kSpace = " \t\r\n";
  const std::size_t from = text.find_first_not_of(kSpace);
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(kSpace) - from + 1);
}

void XmlTree::be_set_as(const XmlTree& other) {
  keep_white_space = other.keep_white_space;
  prefixes = other.prefixes;
  patterns = other.patterns;
}

std::vector<platform::XmlNode*> XmlTree::selected(const platform::XmlNode* from,
                                                  std::string_view expression) const {
  if (!patterns) return document->select(from, expression, prefixes);
  return document->select(from, xpath_of_pattern(expression, prefixes), prefixes);
}

bool XmlTree::fail(XmlProblem why) {
  problem = std::move(why);
  document = services.xml->empty_document();
  data_types.clear();
  changed();
  return false;
}

bool XmlTree::read(std::string_view utf8) {
  auto result = services.xml->parse(utf8, keep_white_space);
  if (const auto* fault = std::get_if<XmlFault>(&result)) {
    return fail({number_of(fault->kind), fault->reason, line_of(utf8, fault->line), "", fault->line,
                 fault->column});
  }
  document = std::move(std::get<std::unique_ptr<platform::XmlDocument>>(result));
  problem = {};
  changed();
  return true;
}

bool XmlTree::read_bytes(std::string_view bytes) {
  const platform::CodePages& code_pages = *services.system.code_pages;
  if (bytes.starts_with(kUtf8Mark)) return read(bytes.substr(kUtf8Mark.size()));
  if (bytes.starts_with(kUtf16Mark)) {
    return read(charset_decoded(bytes.substr(kUtf16Mark.size()), kUtf16, code_pages));
  }
  const std::string_view encoding = encoding_of(bytes);
  if (encoding.empty() || equal_ignoring_case(encoding, "utf-8")) return read(bytes);
  const std::optional<int> code_page = code_page_of_charset(encoding);
  const bool own = code_page && (*code_page == kUtf16 || *code_page == kLatin1);
  if (!code_page || (!own && !code_pages.supports(*code_page))) {
    return fail({kNoEncoding, "The encoding '" + std::string(encoding) + "' is not known.",
                 line_of(bytes, 1), "", 1, 1});
  }
  if (*code_page == platform::kUtf8 || *code_page == kUtf16) return read(bytes);
  return read(charset_decoded(bytes, *code_page, code_pages));
}

void XmlTree::changed() {
  ++changes_;
  held_.set(document->bytes());
}

std::string XmlTree::text() const {
  std::string out;
  for (const platform::XmlNode* each : document->children(document->root())) {
    if (document->kind(each) == XmlKind::Instruction && document->name(each) == "xml") {
      // A text has no encoding: it is Unicode.
      const std::string value = document->value(each).value_or("");
      const std::string_view alone = declared(value, "standalone");
      out += "<?xml version=\"1.0\"" +
             (alone.empty() ? "" : " standalone=\"" + std::string(alone) + "\"") + "?>\r\n";
    } else {
      out += document->xml(each) + "\r\n";
    }
  }
  return out;
}

std::string XmlTree::bytes(std::string_view undeclared) const {
  std::string out;
  std::string encoding(undeclared);
  for (const platform::XmlNode* each : document->children(document->root())) {
    if (document->kind(each) == XmlKind::Instruction && document->name(each) == "xml") {
      const std::string value = document->value(each).value_or("");
      if (const std::string_view named = declared(value, "encoding"); !named.empty()) {
        encoding = named;
      }
    }
    out += document->xml(each) + "\r\n";
  }
  const int code_page = code_page_of_charset(encoding).value_or(platform::kUtf8);
  if (code_page == platform::kUtf8) return out;
  if (code_page == kUtf16) {
    return std::string(kUtf16Mark) + charset_encoded(out, kUtf16, *services.system.code_pages);
  }
  if (code_page != kLatin1 && !services.system.code_pages->supports(code_page)) return out;
  return encoded_with_references(out, code_page, *services.system.code_pages);
}

}  // namespace rk::pagehost
