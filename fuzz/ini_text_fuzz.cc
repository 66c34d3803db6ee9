// INI files, which pages and people write: whatever the file holds, a value that is written is read
// again, what stands elsewhere stays, and a deleted section is gone.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/posix/ini_text.h"
#include "fuzz/checks.h"

namespace {

using rk::fuzz::must;
using rk::fuzz::next_part;
using rk::posix::ini_text_with;
using rk::posix::ini_value;
using rk::posix::LeadBytes;

LeadBytes double_byte() {
  LeadBytes lead{};
  for (std::size_t byte = 0x81; byte < 0xFF; ++byte) lead[byte] = true;
  return lead;
}

// Names and values that a line of a file can say: without line ends, and whole characters.
bool is_sayable(std::string_view text, std::string_view without, const LeadBytes& lead) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || text[i] == '\n') return false;
    if (lead[static_cast<unsigned char>(text[i])]) {
      if (++i == text.size() || static_cast<unsigned char>(text[i]) < 0x40) return false;
    } else if (without.find(text[i]) != std::string_view::npos) {
      return false;
    }
  }
  return true;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

std::string_view read_back(std::string_view value) {
  value = trimmed(value);
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const LeadBytes lead = double_byte();
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string_view section = next_part(input);
  const std::string_view key = next_part(input);
  const std::string_view value = next_part(input);
  const std::string_view file = input;

  const auto other = ini_value(file, "other", "key", lead);
  const std::string written = ini_text_with(file, section, key, value, lead);
  const std::string deleted = ini_text_with(written, section, std::nullopt, "", lead);
  const bool sayable = is_sayable(section, "]", lead) && is_sayable(value, "", lead) &&
                       is_sayable(key, "=", lead) && !trimmed(key).starts_with(';') &&
                       !trimmed(key).starts_with('[');
  if (!sayable) return 0;
  must(ini_value(written, section, key, lead) == read_back(value));
  // Writing the same again changes nothing.
  must(ini_text_with(written, section, key, value, lead) == written);
  must(deleted.size() < written.size());
  const std::string without = ini_text_with(written, section, key, std::nullopt, lead);
  must(without.size() < written.size());
  if (section != "other" && other && ini_value(written, "other", "key", lead) != other) {
    // Only a section of the same name in another letter case or with blanks may have been meant.
    must(trimmed(section).size() == 5);
  }
  return 0;
}
