#include "site/tags.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "site/trapped.h"
#include "value/conversions.h"

namespace rk::site {

namespace {

std::vector<std::size_t> places_of(std::string_view text, std::string_view wanted) {
  std::vector<std::size_t> places;
  if (wanted.empty()) return places;
  std::size_t at = place_of(wanted, text);
  while (at != std::string_view::npos) {
    places.push_back(at);
    at = place_of(wanted, text, at + wanted.size());
  }
  return places;
}

// Calls `append` with the pieces of `text` in which `to` stands for each `size` bytes at `places`.
template <class Append>
void join_around(std::string_view text, const std::vector<std::size_t>& places, std::size_t size,
                 std::string_view to, Append append) {
  std::size_t from = 0;
  for (const std::size_t at : places) {
    append(text.substr(from, at - from));
    append(to);
    from = at + size;
  }
  append(text.substr(from));
}

std::string braced(std::string_view tag) {
  return std::string(1, '{').append(tag).append(1, '}');
}

}  // namespace

std::optional<Text> text_if_any(const Value& value) {
  if (value.is_text()) return value.as_text();
  std::optional<Text> text;
  trapped([&] { text = try_text(value); });
  return text;
}

Text Set_Tags(const Value& FileCon, Value& TagName, const Value& TagCon) {
  const bool named = !TagName.is_null();
  const auto name = text_if_any(TagName);
  // QUIRK: the caller's variable keeps the braces.
  if (name || !named) TagName = Value::text(braced(name.value_or(Text()).view()));
  const auto text = text_if_any(FileCon);
  const auto content = text_if_any(TagCon);
  // QUIRK: a Null loses the whole text, not the tag alone.
  if (!name || !text || !content) return {};
  return replaced(*text, TagName.as_view(), content->view());
}

Value GetKey(const Value& HTML, const Value& Start, const Value& Last) {
  const auto html = text_if_any(HTML);
  const auto start = text_if_any(Start);
  const auto last = text_if_any(Last);
  if (!html || !start || !last) return {};
  // Where nothing follows the start there is no piece to cut, as where the start is missing.
  if (cut(html->view(), start->view(), {}).empty()) return {};
  return Value::text(cut(html->view(), start->view(), last->view()));
}

std::string ReStr(const Value& mystr) {
  std::string text = to_text(mystr).string();
  // The trimming between the first two removals and the rest finds no blank any more.
  std::erase_if(text, [](char c) { return c == ' ' || c == '\'' || c == '*' || c == '%'; });
  return text;
}

std::string_view CheckTempType(const Value& chkStr1, const Value& chkStr2) {
  std::string text = to_text(chkStr1).string();
  replace_all(text, to_text(chkStr2).view(), {});
  const std::string lowered = lowered_ascii(text);
  const bool is_table =
      lowered.find("<table") != std::string::npos && lowered.find("</table>") != std::string::npos;
  return is_table ? "table" : "div";
}

std::size_t place_of(std::string_view wanted, std::string_view text, std::size_t from) {
  if (!wanted.starts_with("<!--")) return text.find(wanted, from);
  const std::string_view behind = wanted.substr(1);
  std::size_t at = text.find(behind, from + 1);
  while (at != std::string_view::npos && text[at - 1] != '<') at = text.find(behind, at + 1);
  return at == std::string_view::npos ? at : at - 1;
}

std::string_view cut(std::string_view html, std::string_view start, std::string_view last) {
  const std::size_t at = start.empty() ? std::string_view::npos : place_of(start, html);
  if (at == std::string_view::npos) return {};
  html.remove_prefix(at + start.size());
  const std::size_t end = last.empty() ? std::string_view::npos : place_of(last, html);
  if (end == std::string_view::npos) return html.substr(0, place_of(start, html));
  // A second start marker ends the block too, also where it begins inside the end marker.
  const std::string_view reach = html.substr(0, end + last.size() - 1 + start.size());
  const std::size_t next = place_of(start, reach);
  return html.substr(0, next == std::string_view::npos ? end : next);
}

Text replaced(const Text& text, std::string_view from, std::string_view to) {
  const auto places = places_of(text.view(), from);
  if (places.empty()) return text;
  Text result;
  result.reserve(text.view().size() - places.size() * from.size() + places.size() * to.size());
  join_around(text.view(), places, from.size(), to,
              [&](std::string_view piece) { result.append(piece); });
  return result;
}

void replace_all(std::string& text, std::string_view from, std::string_view to) {
  const auto places = places_of(text, from);
  if (places.empty()) return;
  std::string result;
  result.reserve(text.size() - places.size() * from.size() + places.size() * to.size());
  join_around(text, places, from.size(), to, [&](std::string_view piece) { result.append(piece); });
  text = std::move(result);
}

void fill(std::string& text, std::string_view tag, std::string_view content) {
  replace_all(text, braced(tag), content);
}

bool fill(std::string& text, std::string_view tag, const Value& content) {
  const auto filling = text_if_any(content);
  if (filling) {
    fill(text, tag, filling->view());
  } else {
    text.clear();
  }
  return filling.has_value();
}

Text filled(const Text& text, std::string_view tag, const Value& content) {
  const auto filling = text_if_any(content);
  return filling ? replaced(text, braced(tag), filling->view()) : Text();
}

}  // namespace rk::site
