// Any bytes as a chunked body: read the same however they are cut, never larger than allowed, never
// more taken than given, and over once it is complete or refused.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/checks.h"
#include "pagehost/http/chunked_body.h"

namespace {

using rk::fuzz::must;

constexpr std::uint64_t kMostBytes = 1024;

// What comes of the bytes, fed in pieces of so many: the body and how far it reached, or its state.
std::string read(std::string_view bytes, std::size_t piece) {
  rk::http::ChunkedBody body(kMostBytes);
  std::size_t taken = 0;
  while (taken < bytes.size()) {
    const std::string_view next = bytes.substr(taken, piece);
    const std::size_t used = body.feed(next);
    must(used <= next.size());
    taken += used;
    if (body.refused_status() != 0) return "refused " + std::to_string(body.refused_status());
    if (body.complete()) break;
    must(used == next.size());
  }
  if (!body.complete()) return "more";
  must(body.feed("0") == 0);
  std::string whole = body.take();
  must(whole.size() <= kMostBytes && whole.size() <= taken);
  return std::to_string(taken) + " " + whole;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string whole = read(bytes, size + 1);
  must(read(bytes, 1) == whole && read(bytes, 3) == whole && read(bytes, 64) == whole);
  return 0;
}
