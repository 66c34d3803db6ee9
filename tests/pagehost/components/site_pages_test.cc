// Every tests/pages/site/**/NAME.asp that has a NAME.expected beside it is run, with the query
// string of NAME.query where there is one, and must answer those bytes. With NAME.post it is a
// POST: the first line is the media type, the rest the body.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "adapters/pcre2/regexps.h"
#include "adapters/xml/documents.h"
#include "pagehost/components/components.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

namespace fs = std::filesystem;

std::string bytes_of(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

fs::path folder() {
  return fs::path(RK_SOURCE_DIR) / "tests" / "pages" / "site";
}

std::vector<std::string> expected_pages() {
  std::vector<std::string> out;
  for (const auto& entry : fs::recursive_directory_iterator(folder())) {
    if (entry.path().extension() != ".expected") continue;
    out.push_back("/" + fs::relative(entry.path(), folder()).replace_extension(".asp").string());
  }
  return out;
}

class SitePages : public ::testing::TestWithParam<std::string> {
 protected:
  SitePages() {
    xml::start_xml();
    ComponentParts parts;
    parts.xml = &xml_;
    add_components(site_.programs, parts);
    site_.regexps = &regexps_;
    for (const auto& entry : fs::recursive_directory_iterator(folder())) {
      if (entry.is_regular_file() && entry.path().extension() != ".expected") {
        site_.file("/" + fs::relative(entry.path(), folder()).string(), bytes_of(entry.path()));
      }
    }
  }
  xml::Documents xml_;
  pcre2::Regexps regexps_;
  tests::PageSite site_;
};

TEST_P(SitePages, AnswersAsExpected) {
  const fs::path page = folder() / GetParam().substr(1);
  const std::string query = bytes_of(fs::path(page).replace_extension(".query"));
  PageRequest request = tests::PageSite::request(GetParam() + "?" + query);
  const std::string post = bytes_of(fs::path(page).replace_extension(".post"));
  if (!post.empty()) {
    const std::size_t line = post.find('\n');
    request.method = "POST";
    request.headers.emplace_back("Content-Type", post.substr(0, line));
    request.body = post.substr(line + 1);
  }
  const PageAnswer answer = site_.host().run(request);
  EXPECT_EQ(answer.body, bytes_of(fs::path(page).replace_extension(".expected")));
  EXPECT_EQ(answer.status, 200);
}

INSTANTIATE_TEST_SUITE_P(All, SitePages, ::testing::ValuesIn(expected_pages()));

}  // namespace
}  // namespace rk::pagehost
