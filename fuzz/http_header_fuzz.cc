#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "pagehost/http/request_reader.h"

namespace {

constexpr std::uint64_t kMaxBodyBytes = 4096;
// A connection's bytes hold more requests than this only to waste the fuzzer's time.
constexpr int kMaxRequests = 100;

// What a connection reads, fed in pieces of so many bytes.
std::string read(std::string_view bytes, std::size_t piece) {
  rk::http::RequestReader reader(rk::http::HeaderLimits{256, 1024, 16}, kMaxBodyBytes);
  using State = rk::http::RequestReader::State;
  std::string seen;
  int requests = 0;
  while (!bytes.empty()) {
    reader.append(bytes.substr(0, piece));
    bytes.remove_prefix(std::min(piece, bytes.size()));
    State state = reader.proceed();
    while (state == State::Complete && ++requests < kMaxRequests) {
      const auto& request = reader.request();
      if (request.page.body.size() > kMaxBodyBytes) std::abort();
      if (request.page.header("Host").empty()) std::abort();
      seen += request.page.method + request.target + request.page.body + "\n";
      reader.restart();
      state = reader.proceed();
    }
    if (state == State::Refused || state == State::Complete) return seen;
  }
  return seen;
}

}  // namespace

// A connection's bytes are read as the same requests however they are cut, and what comes out of
// them keeps the limits. (A refusal may come later where the bytes come in pieces, never another
// request.)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string whole = read(bytes, size == 0 ? 1 : size);
  for (const std::size_t piece : {std::size_t{1}, std::size_t{3}}) {
    const std::string cut = read(bytes, piece);
    if (cut != whole) std::abort();
  }
  return 0;
}
