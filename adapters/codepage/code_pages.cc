#include "adapters/codepage/code_pages.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "value/text.h"

namespace rk::codepage {
namespace {

struct Known {
  int code_page;
  const char* icu_name;
};

// Names of ICU's tables that map as the system of that code page does; plain aliases such as
// "gbk" map some characters another way.
constexpr Known kKnown[] = {
    {874, "windows-874-2000"},    {932, "ibm-943_P15A-2003"},   {936, "windows-936-2000"},
    {949, "windows-949-2000"},    {950, "windows-950-2000"},    {1250, "ibm-5346_P100-1998"},
    {1251, "ibm-5347_P100-1998"}, {1252, "ibm-5348_P100-1997"}, {1253, "ibm-5349_P100-1998"},
    {1254, "ibm-5350_P100-1998"}, {1255, "ibm-9447_P100-2002"}, {1256, "ibm-9448_X100-2005"},
    {1257, "ibm-9449_P100-2002"}, {1258, "ibm-5354_P100-1998"},
};

constexpr char32_t kReplacement = 0xFFFD;
constexpr char16_t kNone = 0xFFFF;  // no character of any of these code pages

std::size_t index_of(int code_page) {
  const auto known = std::find_if(std::begin(kKnown), std::end(kKnown),
                                  [&](const Known& one) { return one.code_page == code_page; });
  return static_cast<std::size_t>(known - std::begin(kKnown));
}

struct ConverterCloser {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter converter_of(const char* name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(ucnv_open(name, &status));
  if (U_FAILURE(status)) throw std::runtime_error(std::string("no code page table ") + name);
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
  return converter;
}

// ICU keeps bytes without a character apart in the private area behind these, as the systems do
// that the tables come from; to a page they are bytes that the code page does not have.
constexpr char16_t kFirstStandIn = 0xF8F0;
constexpr char16_t kLastStandIn = 0xF8FF;

// The one character that bytes stand for, or kNone.
char16_t character_of(UConverter* converter, const char* bytes, int count) {
  UErrorCode status = U_ZERO_ERROR;
  char16_t units[4];
  ucnv_reset(converter);
  const int length = ucnv_toUChars(converter, units, 4, bytes, count, &status);
  if (U_FAILURE(status) || length != 1 || units[0] == kReplacement) return kNone;
  return units[0] >= kFirstStandIn && units[0] <= kLastStandIn ? kNone : units[0];
}

// The length in bytes of the well-formed character at the start, or 0. Half a pair is none.
std::size_t character_length(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned lead = byte(0);
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (bytes.size() < length) return 0;
  return is_valid_utf8(bytes.substr(0, length)) ? length : 0;
}

// How many bytes one U+FFFD stands for: as much as could begin a character.
std::size_t bad_length(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < 2) return 1;
  const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (lead < 0xE0 || byte(1) < low || byte(1) > high) return 1;
  if (lead < 0xF0 || bytes.size() < 3 || (byte(2) & 0xC0) != 0x80) return 2;
  return 3;
}

// Half a surrogate pair as texts of this system hold it: in three bytes, one character.
bool is_half_pair(std::string_view bytes) {
  return bytes.size() >= 3 && bytes[0] == '\xED' && static_cast<unsigned char>(bytes[1]) >= 0xA0 &&
         (bytes[2] & 0xC0) == 0x80;
}

std::string repaired_utf8(std::string_view bytes, std::optional<std::size_t>* first_bad) {
  std::string out;
  out.reserve(bytes.size() + 16);
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::size_t length = character_length(bytes.substr(at));
    if (length > 0) {
      out.append(bytes.substr(at, length));
      at += length;
      continue;
    }
    if (first_bad != nullptr && !*first_bad) *first_bad = at;
    append_code_point(out, kReplacement);
    const std::string_view rest = bytes.substr(at);
    at += is_half_pair(rest) ? 3 : bad_length(rest);
  }
  return out;
}

// The next code point of a text of this system (well-formed, or half a pair in three bytes).
char32_t next_point(std::string_view utf8, std::size_t& at) {
  const auto byte = [&](std::size_t i) {
    return i < utf8.size() ? static_cast<unsigned char>(utf8[i]) : 0u;
  };
  const char32_t lead = byte(at);
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t point = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) point = point << 6 | (byte(at + i) & 0x3Fu);
  at += length;
  return point;
}

}  // namespace

struct IcuCodePages::Table {
  std::array<char16_t, 256> single;
  std::array<bool, 256> lead{};
  std::vector<char16_t> pairs;         // [lead][second], empty for a single-byte code page
  std::vector<std::uint16_t> encoded;  // by 16-bit unit; 0: none (but for NUL itself)

  explicit Table(const char* icu_name);
};

struct IcuCodePages::Slot {
  std::once_flag once;
  std::unique_ptr<Table> table;
};

IcuCodePages::Table::Table(const char* icu_name) : encoded(0x10000) {
  const Converter converter = converter_of(icu_name);
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char one = static_cast<char>(byte);
    // One of the tables turns control characters round; ASCII is itself in all code pages.
    single[byte] =
        byte < 0x80 ? static_cast<char16_t>(byte) : character_of(converter.get(), &one, 1);
  }
  if (ucnv_getMaxCharSize(converter.get()) > 1) {
    pairs.assign(0x10000, kNone);
    for (unsigned first = 0x80; first < 256; ++first) {
      if (single[first] != kNone) continue;
      for (unsigned second = 0x30; second < 256; ++second) {
        const char both[2] = {static_cast<char>(first), static_cast<char>(second)};
        const char16_t unit = character_of(converter.get(), both, 2);
        pairs[first << 8 | second] = unit;
        lead[first] = lead[first] || unit != kNone;
      }
    }
  }
  // What ICU itself writes for a character, where bytes of several spellings read as it.
  for (unsigned unit = 0; unit < 0x80; ++unit) encoded[unit] = static_cast<std::uint16_t>(unit);
  for (unsigned unit = 0x80; unit < 0x10000; ++unit) {
    if (unit >= 0xD800 && unit < 0xE000) continue;
    if (unit >= kFirstStandIn && unit <= kLastStandIn) continue;
    const char16_t one = static_cast<char16_t>(unit);
    char bytes[8];
    UErrorCode status = U_ZERO_ERROR;
    ucnv_reset(converter.get());
    const int length = ucnv_fromUChars(converter.get(), bytes, 8, &one, 1, &status);
    if (U_FAILURE(status) || length < 1 || length > 2) continue;
    const auto first = static_cast<unsigned char>(bytes[0]);
    const unsigned code = length == 1 ? first : first * 256u + static_cast<unsigned char>(bytes[1]);
    encoded[unit] = static_cast<std::uint16_t>(code);
  }
}

IcuCodePages::IcuCodePages() : slots_(std::make_unique<Slot[]>(std::size(kKnown))) {}
IcuCodePages::~IcuCodePages() = default;

bool IcuCodePages::supports(int code_page) const {
  return code_page == platform::kUtf8 || index_of(code_page) < std::size(kKnown);
}

const IcuCodePages::Table& IcuCodePages::table(int code_page) const {
  const std::size_t index = index_of(code_page);
  if (index >= std::size(kKnown)) throw std::invalid_argument("code page not supported");
  Slot& slot = slots_[index];
  std::call_once(slot.once, [&] { slot.table = std::make_unique<Table>(kKnown[index].icu_name); });
  return *slot.table;
}

std::string IcuCodePages::to_utf8(std::string_view bytes, int code_page,
                                  std::optional<std::size_t>* first_bad) const {
  if (first_bad != nullptr) first_bad->reset();
  if (is_ascii(bytes)) return std::string(bytes);
  if (code_page == platform::kUtf8) {
    return is_valid_utf8(bytes) ? std::string(bytes) : repaired_utf8(bytes, first_bad);
  }
  const Table& page = table(code_page);
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 2);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    if (first < 0x80) {
      out.push_back(bytes[at]);
      continue;
    }
    char16_t unit = page.single[first];
    std::size_t extra = 0;
    if (unit == kNone && page.lead[first] && at + 1 < bytes.size()) {
      const auto second = static_cast<unsigned char>(bytes[at + 1]);
      unit = page.pairs[first * std::size_t{256} + second];
      extra = unit != kNone || second >= 0x80 ? 1 : 0;
    }
    if (unit == kNone && first_bad != nullptr && !*first_bad) *first_bad = at;
    append_code_point(out, unit == kNone ? kReplacement : unit);
    at += extra;
  }
  return out;
}

std::string IcuCodePages::from_utf8(std::string_view utf8, int code_page) const {
  if (is_ascii(utf8)) return std::string(utf8);
  if (code_page == platform::kUtf8) {
    return is_valid_utf8(utf8) ? std::string(utf8) : repaired_utf8(utf8, nullptr);
  }
  const Table& page = table(code_page);
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t point = next_point(utf8, at);
    const std::uint16_t code = point < 0x10000 ? page.encoded[point] : std::uint16_t{0};
    if (code == 0 && point != 0) {
      out.push_back('?');
    } else {
      if (code > 0xFF) out.push_back(static_cast<char>(code >> 8));
      out.push_back(static_cast<char>(code & 0xFF));
    }
  }
  return out;
}

bool IcuCodePages::is_lead_byte(unsigned char byte, int code_page) const {
  return code_page != platform::kUtf8 && table(code_page).lead[byte];
}

}  // namespace rk::codepage
