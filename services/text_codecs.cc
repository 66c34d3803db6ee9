#include "services/text_codecs.h"

#include <string>

#include "site/trapped.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::services {

namespace {

void append_hexadecimal(std::string& out, unsigned number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  if (number > 0xF) append_hexadecimal(out, number >> 4);
  out += kDigits[number & 0xF];
}

bool is_unreserved(unsigned unit) {
  return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z') ||
         (unit >= '0' && unit <= '9') || unit == '-' || unit == '.' || unit == '_';
}

void append_escape(std::string& out, unsigned byte) {
  out += '%';
  append_hexadecimal(out, byte);
}

void encode_unit(std::string& out, unsigned unit) {
  if ((unit & 0xFF80) == 0) {
    if (is_unreserved(unit)) {
      out += static_cast<char>(unit);
    } else {
      append_escape(out, unit);
    }
  } else if ((unit & 0xF000) == 0) {
    // QUIRK: one "%" for both bytes, and the branch takes units up to 0xFFF.
    append_escape(out, unit / 64 | 0xC0);
    append_hexadecimal(out, (unit & 63) | 0x80);
  } else {
    append_escape(out, unit / 4096 | 0xE0);
    append_escape(out, (unit / 64 & 63) | 0x80);
    append_escape(out, (unit & 63) | 0x80);
  }
}

}  // namespace

Text decoded(std::string_view bytes, const platform::CodePages& code_pages, int ansi_code_page) {
  std::string text;
  text.reserve(bytes.size() * 2);
  char trail = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (static_cast<unsigned char>(bytes[i]) < 0x80) {
      text += bytes[i];
      continue;
    }
    const char lead = bytes[i];
    // QUIRK: without a byte behind it the last pair's trail byte is used again.
    if (i + 1 < bytes.size()) trail = bytes[++i];
    const std::string character = code_pages.to_utf8(std::string{lead, trail}, ansi_code_page);
    // A pair is one character even where the code page has none for it.
    text += unit_length(character) == 1 ? character : "\xEF\xBF\xBD";
  }
  return Text(text);
}

Value bytes2bstr(const Value& vin, const platform::CodePages& code_pages, int ansi_code_page) {
  if (vin.is_object()) {  // such as a record set's field, for its value
    Value value;
    site::trapped([&] { value = plain_value(vin); });
    return bytes2bstr(value, code_pages, ansi_code_page);
  }
  if (vin.is_array()) {
    if (!vin.as_array().holds_bytes()) return Value::text("");
    return Value::text(decoded(vin.as_array().bytes(), code_pages, ansi_code_page));
  }
  if (!vin.is_text()) return Value::text("");
  return Value::text(decoded(vin.as_text().bytes(), code_pages, ansi_code_page));
}

Value URLEncodetoUTF8(const Value& url) {
  Text text;
  if (site::trapped([&] { text = to_text(url); })) return Value();
  if (text.empty()) return url;
  std::string out;
  for (const char16_t unit : text.units()) encode_unit(out, unit);
  return Value::text(out);
}

}  // namespace rk::services
