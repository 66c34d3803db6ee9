// Cuts between markers: the input is the text, the first and the last marker, divided by NUL. What
// is cut stands in the text behind the first marker and holds neither of the two.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/checks.h"
#include "site/tags.h"
#include "value/value.h"

using rk::fuzz::must;
using rk::fuzz::next_part;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string_view start = next_part(input);
  const std::string_view last = next_part(input);
  const std::string_view html = input;
  const rk::Value cut =
      rk::site::GetKey(rk::Value::text(html), rk::Value::text(start), rk::Value::text(last));
  if (start.empty() || last.empty()) return 0;
  const std::size_t place = html.find(start);
  const std::string_view behind =
      place == std::string_view::npos ? std::string_view() : html.substr(place + start.size());
  const std::string_view piece = behind.substr(0, behind.find(start));
  // An empty piece has no parts to take the first of.
  must(cut.is_text() == !piece.empty());
  if (!cut.is_text()) return 0;
  must(piece.starts_with(cut.as_view()));
  must(cut.as_view().find(last) == std::string_view::npos);
  must(cut.as_view().find(start) == std::string_view::npos);
  return 0;
}
