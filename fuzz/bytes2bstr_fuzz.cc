// Fetched bytes: whatever they are, each makes its character by the rule, and the text is whole.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "adapters/codepage/code_pages.h"
#include "services/text_codecs.h"
#include "value/array.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const rk::codepage::IcuCodePages code_pages;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const rk::Text text = rk::services::decoded(bytes, code_pages, rk::platform::kGb2312);
  std::size_t characters = 0;
  for (std::size_t i = 0; i < size; ++characters) i += data[i] < 0x80 ? 1 : 2;
  if (text.length() != characters) std::abort();
  std::size_t place = 0;
  for (std::size_t i = 0; i < size; ++place) {
    if (data[i] < 0x80 && text.unit(place) != data[i]) std::abort();
    if (data[i] >= 0x80 && text.unit(place) < 0x80) std::abort();
    i += data[i] < 0x80 ? 1 : 2;
  }
  const rk::Value value = rk::Value::array(rk::Array::of_bytes(std::string(bytes)));
  const rk::Value decoded = rk::services::bytes2bstr(value, code_pages, rk::platform::kGb2312);
  if (!decoded.is_text() || !(decoded.as_text() == text)) std::abort();
  // Any text at all is taken by its bytes.
  rk::services::bytes2bstr(rk::Value::text(bytes), code_pages, rk::platform::kGb2312);
  return 0;
}
