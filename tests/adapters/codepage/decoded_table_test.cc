// What fetched bytes read as, over every sequence of one and two bytes, held against the engine's
// own converter.
#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <memory>

#include "adapters/codepage/code_pages.h"
#include "services/text_codecs.h"

namespace rk::codepage {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

class Converter {
 public:
  explicit Converter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    converter_.reset(ucnv_open(name, &status));
    ucnv_setToUCallBack(converter_.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    EXPECT_TRUE(U_SUCCESS(status)) << name;
  }
  // The one character of two bytes, or the replacement.
  char16_t character(unsigned lead, unsigned trail) const {
    const char bytes[2] = {static_cast<char>(lead), static_cast<char>(trail)};
    char16_t units[4];
    UErrorCode status = U_ZERO_ERROR;
    ucnv_reset(converter_.get());
    const int length = ucnv_toUChars(converter_.get(), units, 4, bytes, 2, &status);
    // Private characters that stand for bytes without one are not taken for characters.
    const bool one = U_SUCCESS(status) && length == 1;
    return one && !(units[0] >= 0xF8F0 && units[0] <= 0xF8FF) ? units[0] : kReplacement;
  }

 private:
  struct Closer {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
  };
  std::unique_ptr<UConverter, Closer> converter_;
};

TEST(DecodedTable, EverySequenceOfOneAndTwoBytesReadsAsTheConverterSays) {
  const IcuCodePages code_pages;
  const Converter converter("windows-936-2000");
  const auto decoded_units = [&](std::string_view bytes) {
    return services::decoded(bytes, code_pages, platform::kGb2312).units();
  };
  std::size_t characters = 0;
  for (unsigned first = 0; first < 256; ++first) {
    const std::string alone(1, static_cast<char>(first));
    const char16_t lone =
        first < 0x80 ? static_cast<char16_t>(first) : converter.character(first, 0);
    ASSERT_EQ(decoded_units(alone), std::u16string(1, lone)) << first;
    for (unsigned second = 0; second < 256; ++second) {
      const std::string both = alone + static_cast<char>(second);
      std::u16string wanted;
      if (first >= 0x80) {
        wanted = converter.character(first, second);
        characters += wanted[0] != kReplacement;
      } else {
        wanted = std::u16string(1, static_cast<char16_t>(first));
        wanted += second < 0x80 ? static_cast<char16_t>(second) : converter.character(second, 0);
      }
      ASSERT_EQ(decoded_units(both), wanted) << first << ' ' << second;
    }
  }
  EXPECT_GT(characters, 21'000u) << "the table is that of the Chinese code page";
}

}  // namespace
}  // namespace rk::codepage
