#include "services/ini_settings.h"

#include <algorithm>

#include "value/conversions.h"

namespace rk::services {

namespace {

// The buffer that values are read into, its final NUL counted.
constexpr std::size_t kBufferBytes = 1024;

// Texts cross as the profile strings take them: in the ANSI code page, up to their first NUL.
class AnsiTexts {
 public:
  explicit AnsiTexts(const IniStore& store) : store_(store) {}
  std::string operator()(std::string_view utf8) const {
    return store_.code_pages.from_utf8(utf8.substr(0, utf8.find('\0')), store_.ansi_code_page);
  }
  std::string operator()(const Value& value) const { return (*this)(to_text(value).view()); }

 private:
  const IniStore& store_;
};

// How many bytes the character at the start has, by its first byte.
std::size_t width_at(std::string_view bytes, const IniStore& store) {
  const auto first = static_cast<unsigned char>(bytes.front());
  if (store.ansi_code_page != platform::kUtf8) {
    return store.code_pages.is_lead_byte(first, store.ansi_code_page) ? 2 : 1;
  }
  if (first < 0xC0) return 1;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// A cut may leave the beginning of a character at the end; it is dropped.
std::string_view without_half_character(std::string_view bytes, const IniStore& store) {
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::size_t width = width_at(bytes.substr(at), store);
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
  std::string bytes(trimmed(without_half_character(read, store)));
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

std::string ini_path(std::string_view folder, std::string_view name) {
  while (folder.ends_with('\\')) folder.remove_suffix(1);
  while (name.starts_with('\\')) name.remove_prefix(1);
  std::string path(folder);
  path += '\\';
  path += name;
  return path;
}

}  // namespace rk::services
