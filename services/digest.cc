#include "services/digest.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <vector>

#include "value/text.h"

namespace rk::services {

namespace {

using State = std::array<std::uint32_t, 4>;

constexpr std::size_t kWordsPerBlock = 16;
constexpr State kInitialState = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};

// floor(2^32 * |sin(i + 1)|), the published constants.
std::array<std::uint32_t, 64> round_constants() {
  std::array<std::uint32_t, 64> constants;
  for (std::size_t i = 0; i < constants.size(); ++i) {
    constants[i] = static_cast<std::uint32_t>(
        std::floor(std::abs(std::sin(static_cast<double>(i + 1))) * 4294967296.0));
  }
  return constants;
}

// Four characters a word, the first lowest.
// QUIRK: a code above one byte spills into the places of the characters behind it, and a negative
// code (a double-byte character from 0x8000) sets every bit above its place.
std::vector<std::uint32_t> packed(std::span<const std::int16_t> codes) {
  const std::size_t blocks = (codes.size() + 8) / 64 + 1;
  std::vector<std::uint32_t> words(blocks * kWordsPerBlock, 0);
  for (std::size_t k = 0; k < codes.size(); ++k) {
    words[k / 4] |= static_cast<std::uint32_t>(std::int32_t{codes[k]}) << (8 * (k % 4));
  }
  words[codes.size() / 4] |= std::uint32_t{0x80} << (8 * (codes.size() % 4));
  const std::uint64_t bits = std::uint64_t{codes.size()} * 8;
  words[words.size() - 2] = static_cast<std::uint32_t>(bits);
  words[words.size() - 1] = static_cast<std::uint32_t>(bits >> 32);
  return words;
}

void add_block(State& state, std::span<const std::uint32_t> words,
               const std::array<std::uint32_t, 64>& constants) {
  constexpr std::array<std::array<int, 4>, 4> kShifts = {
      {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};
  auto [a, b, c, d] = state;
  for (std::size_t i = 0; i < constants.size(); ++i) {
    const std::size_t round = i / 16;
    const std::array<std::uint32_t, 4> mixed = {(b & c) | (~b & d), (b & d) | (c & ~d), b ^ c ^ d,
                                                c ^ (b | ~d)};
    const std::array<std::size_t, 4> word = {i, 5 * i + 1, 3 * i + 5, 7 * i};
    const std::uint32_t sum = a + mixed[round] + constants[i] + words[word[round] % kWordsPerBlock];
    a = d;
    d = c;
    c = b;
    b += std::rotl(sum, kShifts[round][i % 4]);
  }
  state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

std::string hexadecimal(const State& state) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (std::uint32_t word : state) {
    for (int i = 0; i < 4; ++i, word >>= 8) {
      text += kDigits[word >> 4 & 0xF];
      text += kDigits[word & 0xF];
    }
  }
  return text;
}

// One code a 16-bit unit: a single byte, or lead byte * 256 + trail byte.
std::int16_t ansi_code(const std::string& bytes) {
  if (bytes.size() == 1) return static_cast<unsigned char>(bytes[0]);
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const auto trail = static_cast<unsigned char>(bytes[1]);
  return static_cast<std::int16_t>(lead << 8 | trail);
}

}  // namespace

std::string md5(std::span<const std::int16_t> codes) {
  const std::vector<std::uint32_t> words = packed(codes);
  const auto constants = round_constants();
  State state = kInitialState;
  for (std::size_t at = 0; at < words.size(); at += kWordsPerBlock) {
    add_block(state, std::span(words).subspan(at, kWordsPerBlock), constants);
  }
  return hexadecimal(state);
}

std::string md5(std::string_view utf8, const platform::CodePages& code_pages, int ansi_code_page) {
  std::vector<std::int16_t> codes;
  for (const char16_t unit : Text(utf8).units()) {
    std::string character;
    append_code_point(character, unit);
    const std::string bytes =
        unit < 0x80 ? character : code_pages.from_utf8(character, ansi_code_page);
    codes.push_back(bytes.empty() || bytes.size() > 2 ? std::int16_t{'?'} : ansi_code(bytes));
  }
  return md5(codes);
}

Value mailpass(Value& input) {
  // QUIRK: the digest of the input itself is thrown away; what is kept is that of a text that is
  // always empty, so every input gives the same password.
  std::string digest = md5(std::span<const std::int16_t>());
  input = Value::text(lowered_ascii(digest.substr(digest.size() - 10)));
  return input;
}

}  // namespace rk::services
