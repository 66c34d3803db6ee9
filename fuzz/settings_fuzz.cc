#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/settings.h"

// Any bytes are settings or an error that names the file and a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    rk::app::parse_settings(text, "rkclient.ini", "/site");
  } catch (const rk::app::SettingsError& error) {
    if (!std::string_view(error.what()).starts_with("rkclient.ini:")) std::abort();
  }
  return 0;
}
