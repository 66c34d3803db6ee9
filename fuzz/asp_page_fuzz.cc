// Any bytes as a page: the splitter's parts must cover the text in order and lie inside it, the
// reader must end, and what it read either compiles or says why not. The part behind a zero byte
// is the query string and cookie of a request.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/checks.h"
#include "fuzz/latin_pages.h"
#include "pagehost/pages/name_values.h"
#include "pagehost/pages/page_cache.h"
#include "pagehost/pages/page_reader.h"
#include "pagehost/pages/page_splitter.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "value/script_error.h"

namespace {

using rk::fuzz::LatinPages;
using rk::fuzz::must;
using rk::platform::FileStamp;

// A site whose every file is the page.
class OnePage final : public rk::platform::Files {
 public:
  explicit OnePage(std::string page) : page_(std::move(page)) {}
  std::optional<std::string> find(std::string_view path) const override {
    return std::string(path);
  }
  std::optional<FileStamp> stamp(std::string_view) const override { return FileStamp{}; }
  bool is_folder(std::string_view) const override { return false; }
  std::vector<std::string> names(std::string_view) const override { return {}; }
  std::string read(std::string_view) const override { return page_; }
  std::string read_text(std::string_view) const override { return page_; }
  void write(std::string_view, std::string_view) override {}
  void append(std::string_view, std::string_view) override {}

 private:
  std::string page_;
};

void check_parts(std::string_view text) {
  const char* at = text.data();
  int line = 1;
  for (const auto& part : rk::pagehost::split_page(text)) {
    must(part.line >= line && part.column >= 1);
    line = part.line;
    if (part.kind == rk::pagehost::PagePart::Kind::Unclosed || part.text.empty()) continue;
    must(part.text.data() >= at);
    at = part.text.data() + part.text.size();
    must(at <= text.data() + text.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMostBytes = 4096;  // a page that includes itself doubles
  const std::string_view all(reinterpret_cast<const char*>(data),
                             size < kMostBytes ? size : kMostBytes);
  const std::size_t zero = all.find('\0');
  const std::string_view page = all.substr(0, zero);
  check_parts(page);

  const LatinPages code_pages;
  const OnePage files{std::string(page)};
  const rk::pagehost::PageReader reader(files, code_pages, "/site");
  const auto compiled =
      rk::pagehost::compiled_page("/a.asp", reader.page("/a.asp", rk::platform::kGb2312));
  must((compiled.program != nullptr) != compiled.failure.has_value());

  if (zero == std::string_view::npos) return 0;
  const std::string_view sent = all.substr(zero + 1);
  const auto values = rk::pagehost::parsed_form(sent, rk::platform::kUtf8, code_pages);
  for (const auto& entry : values.entries()) {
    must(!entry.values.empty() && values.find(entry.name) == &entry);
  }
  rk::pagehost::parsed_cookies(sent, rk::platform::kUtf8, code_pages);
  return 0;
}
