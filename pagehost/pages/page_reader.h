// PageReader: makes one source of a page file and all that it includes, for the compiler.
//
// Failures (a missing include, a cycle, an opening without its end) are part of the result, beside
// the states of all files looked at, so that a cache can tell when reading again would give another
// result. Several threads may use one reader.
#ifndef RK_PAGEHOST_PAGES_PAGE_READER_H_
#define RK_PAGEHOST_PAGES_PAGE_READER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/code_page.h"
#include "platform/files.h"
#include "vbscript/source.h"

namespace rk::pagehost {

// Includes inside one another; hand-written sites stay below 10.
inline constexpr std::size_t kMaxIncludeDepth = 64;
// Files of one page, each counted as often as it is included: ends includes that double.
inline constexpr std::size_t kMaxIncludes = 4096;

// A file as it was when the page was read.
struct FileState {
  std::string physical_path;
  std::optional<platform::FileStamp> stamp;  // nothing: it was not there
};

struct ObjectDeclaration {
  enum class Scope : std::uint8_t { Page, Session, Application };
  std::string id;
  std::string program_identifier;
  Scope scope = Scope::Page;
};

// Why a page cannot run, and where.
struct PageFailure {
  std::int32_t number = 0;
  std::string text;
  std::string path;  // virtual
  int line = 0;
  std::string report;  // for the log: "PATH:LINE: text", with source line and caret where known
};

struct PageSource {
  vbscript::Source source;
  std::vector<FileState> files;
  int code_page = 0;  // as the page's directive says; 0: the site's
  bool session_enabled = true;
  std::int32_t lcid = 0;          // 0: none is asked for
  bool in_transaction = false;    // its events are called
  bool has_type_library = false;  // the constants of a type library are asked for
  std::vector<ObjectDeclaration> objects;
  // Names that blocks in other languages define; lower case.
  std::vector<std::string> left_out;
  std::optional<PageFailure> failure;
  // Files whose bytes are not all of the code page, as "PATH:LINE: ...".
  std::vector<std::string> notes;
};

class PageReader {
 public:
  PageReader(const platform::Files& files, const platform::CodePages& code_pages,
             std::string site_root)
      : files_(files), code_pages_(code_pages), site_root_(std::move(site_root)) {}

  // `path` is a resolved virtual path. `code_page` is the site's.
  PageSource page(std::string_view path, int code_page) const;
  // A start-up script: what stands outside of blocks and declarations is left out.
  PageSource start_up_script(std::string_view path, int code_page) const;

  const std::string& site_root() const { return site_root_; }

 private:
  const platform::Files& files_;
  const platform::CodePages& code_pages_;
  std::string site_root_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_READER_H_
