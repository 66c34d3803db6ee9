#include "services/ini_settings.h"

#include <algorithm>

#include "value/conversions.h"

namespace rk::services {

namespace {

// The buffer that values are read into, its final NUL counted.
constexpr std::size_t kBufferBytes = 1024;

class AnsiTexts {
 public:
  explicit AnsiTexts(const IniStore& store) : store_(store) {}
  std::string operator()(std::string_view utf8) const {
    return store_.code_pages.from_utf8(utf8, store_.ansi_code_page);
  }
  std::string operator()(const Value& value) const { return (*this)(to_text(value).view()); }

 private:
  const IniStore& store_;
};

bool is_double_byte(int code_page) {
  return code_page == 932 || code_page == 936 || code_page == 949 || code_page == 950;
}

// A cut may leave the first byte of a character at the end; it is dropped.
std::string_view without_half_character(std::string_view bytes, int code_page) {
  if (!is_double_byte(code_page)) return bytes;
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::size_t width = static_cast<unsigned char>(bytes[at]) > 0x80 ? 2 : 1;
    if (at + width > bytes.size()) return bytes.substr(0, at);
    at += width;
  }
  return bytes;
}

std::string_view trimmed(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

}  // namespace

void WriteIniKey(const IniStore& store, std::string_view file, const Value& section,
                 const Value& key, const Value& value) {
  const AnsiTexts ansi(store);
  store.profile_strings.write(ansi(section), ansi(key), ansi(value), file);
}

Value GetIniKey(const IniStore& store, std::string_view file, const Value& section,
                const Value& key) {
  const AnsiTexts ansi(store);
  const std::string read = store.profile_strings.read(ansi(section), ansi(key), kBufferBytes, file);
  std::string bytes(trimmed(without_half_character(read, store.ansi_code_page)));
  std::erase(bytes, '\0');
  return Value::text(store.code_pages.to_utf8(bytes, store.ansi_code_page));
}

void DelIniKey(const IniStore& store, std::string_view file, const Value& section,
               const Value& key) {
  const AnsiTexts ansi(store);
  store.profile_strings.write(ansi(section), ansi(key), std::nullopt, file);
}

void DelIniSec(const IniStore& store, std::string_view file, const Value& section) {
  const AnsiTexts ansi(store);
  store.profile_strings.write(ansi(section), std::nullopt, "", file);
}

}  // namespace rk::services
