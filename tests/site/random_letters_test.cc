#include "site/random_letters.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "tests/support/fake_page.h"
#include "tests/support/fixed_random.h"

namespace rk::site {
namespace {

constexpr std::string_view kAlphabet = "aBcDeFgHiJkLmNoPqRsTuVwXyZ";

// Uniform numbers of a fixed seed.
class SeededRandom final : public platform::Random {
 public:
  double fraction() override { return std::uniform_real_distribution<double>()(generator_); }
  void secret_bytes(std::span<std::uint8_t>) override {}

 private:
  std::mt19937_64 generator_{7};
};

std::string letters(const Value& count, std::vector<double> fractions = {0.5}) {
  tests::FixedRandom random(std::move(fractions));
  return MyRandc(count, random);
}

TEST(RandomLetters, AreAsManyAsAskedFor) {
  EXPECT_EQ(letters(Value::integer(0)), "");
  EXPECT_EQ(letters(Value::integer(-3)), "");
  EXPECT_EQ(letters(Value::integer(8)).size(), 8u);
  EXPECT_EQ(letters(Value::text("3")).size(), 3u);
  EXPECT_EQ(letters(Value::real(2.9)).size(), 2u);
}

TEST(RandomLetters, FollowTheDrawByParity) {
  for (int x = 0; x <= 25; ++x) {
    EXPECT_EQ(letters(Value::integer(1), {x / 25.0}),
              std::string(1, kAlphabet[static_cast<std::size_t>(x)]));
  }
}

TEST(RandomLetters, AreTheSameWhereTheDrawsAre) {
  EXPECT_EQ(letters(Value::integer(5), {0.1, 0.9}), letters(Value::integer(5), {0.1, 0.9}));
}

TEST(RandomLetters, RoundHalvesToTheEvenNeighbour) {
  EXPECT_EQ(letters(Value::integer(1), {0.5 / 25}), "a");
  EXPECT_EQ(letters(Value::integer(1), {1.5 / 25}), "c");
  EXPECT_EQ(letters(Value::integer(1), {2.5 / 25}), "c");
}

TEST(RandomLetters, HaveTheEndLettersHalfAsOftenAsTheOthers) {
  constexpr int kDraws = 250000;
  SeededRandom random;
  std::array<int, 26> seen{};
  for (const char c : MyRandc(Value::long_integer(kDraws), random)) {
    const std::size_t at = kAlphabet.find(c);
    ASSERT_NE(at, std::string_view::npos);
    ++seen[at];
  }
  // Ten thousand each are expected, five thousand at the ends; five deviations are allowed.
  for (std::size_t at = 0; at < seen.size(); ++at) {
    const bool end = at == 0 || at == seen.size() - 1;
    EXPECT_NEAR(seen[at], end ? 5000 : 10000, end ? 350 : 490) << kAlphabet[at];
  }
}

TEST(RandomLetters, ACountThatIsNoNumberRaises) {
  EXPECT_EQ(tests::error_of([] { letters(Value::text("x")); }), 13);
  EXPECT_EQ(tests::error_of([] { letters(Value::null()); }), 94);
}

}  // namespace
}  // namespace rk::site
