#include "tests/plain/digest.h"

#include <array>
#include <cmath>

namespace rk::tests::plain {

namespace {

// A shift within 32 bits that keeps the sign's bit as any other.
std::int32_t shifted_left(std::int32_t value, int bits) {
  std::int64_t wide = static_cast<std::int64_t>(value) & 0xFFFFFFFF;
  for (int i = 0; i < bits; ++i) wide = wide * 2 % 0x100000000;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(wide));
}

std::vector<std::int32_t> packed(const std::vector<std::int16_t>& codes) {
  const std::size_t count = codes.size();
  const std::size_t words = ((count + 8) / 64 + 1) * 16;
  std::vector<std::int32_t> result(words, 0);
  std::size_t place = 0;
  for (const std::int16_t code : codes) {
    const std::int32_t widened = code;  // with its sign
    result[place / 4] |= shifted_left(widened, static_cast<int>(8 * (place % 4)));
    ++place;
  }
  result[place / 4] |= shifted_left(0x80, static_cast<int>(8 * (place % 4)));
  result[words - 2] = shifted_left(static_cast<std::int32_t>(count), 3);
  result[words - 1] = static_cast<std::int32_t>(count >> 29);
  return result;
}

std::uint32_t rotated(std::uint32_t value, unsigned bits) {
  for (; bits > 0; --bits) value = value % 0x80000000u * 2 + value / 0x80000000u;
  return value;
}

struct State {
  std::uint32_t a = 0x67452301;
  std::uint32_t b = 0xEFCDAB89;
  std::uint32_t c = 0x98BADCFE;
  std::uint32_t d = 0x10325476;
};

std::uint32_t mixed(int step, const State& s) {
  if (step < 16) return (s.b & s.c) | (~s.b & s.d);
  if (step < 32) return (s.b & s.d) | (s.c & ~s.d);
  if (step < 48) return s.b ^ s.c ^ s.d;
  return s.c ^ (s.b | ~s.d);
}

int word_of(int step) {
  if (step < 16) return step;
  if (step < 32) return (1 + 5 * (step - 16)) % 16;
  if (step < 48) return (5 + 3 * (step - 32)) % 16;
  return 7 * (step - 48) % 16;
}

unsigned turn_of(int step) {
  constexpr unsigned kTurns[4][4] = {
      {7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
  return kTurns[step / 16][step % 4];
}

}  // namespace

std::string md5(const std::vector<std::int16_t>& codes) {
  const std::vector<std::int32_t> words = packed(codes);
  State sum;
  for (std::size_t block = 0; block < words.size(); block += 16) {
    State s = sum;
    for (int step = 0; step < 64; ++step) {
      const double sine = std::fabs(std::sin(step + 1.0)) * 4294967296.0;
      const auto word =
          static_cast<std::uint32_t>(words[block + static_cast<std::size_t>(word_of(step))]);
      const std::uint32_t turned =
          rotated(s.a + mixed(step, s) + word + static_cast<std::uint32_t>(sine), turn_of(step));
      s = {s.d, s.b + turned, s.b, s.c};
    }
    sum = {sum.a + s.a, sum.b + s.b, sum.c + s.c, sum.d + s.d};
  }
  std::string text;
  for (const std::uint32_t word : {sum.a, sum.b, sum.c, sum.d}) {
    for (unsigned byte = 0; byte < 4; ++byte) {
      const unsigned value = word >> (8 * byte) & 0xFF;
      text += "0123456789ABCDEF"[value / 16];
      text += "0123456789ABCDEF"[value % 16];
    }
  }
  return text;
}

}  // namespace rk::tests::plain
