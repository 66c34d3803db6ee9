// PageCache: compiled pages by path, with the states of their files. A page is compiled once,
// however many ask for it at a time, and again when a file of it changed, went or appeared.
// Several threads may call.
#ifndef RK_PAGEHOST_PAGES_PAGE_CACHE_H_
#define RK_PAGEHOST_PAGES_PAGE_CACHE_H_

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pagehost/pages/log.h"
#include "pagehost/pages/page_reader.h"
#include "vbscript/program.h"

namespace rk::pagehost {

// Immutable. Either a program or a failure.
struct CompiledPage {
  std::string path;  // virtual, as first asked for
  std::shared_ptr<const vbscript::Program> program;
  std::optional<PageFailure> failure;
  std::vector<FileState> files;
  int code_page = 0;  // as the directive says; 0: the site's
  bool session_enabled = true;
  std::int32_t lcid = 0;  // as the directive says, or 0
  bool in_transaction = false;
  bool has_type_library = false;
  std::vector<ObjectDeclaration> objects;
  std::vector<std::string> left_out;
};

// Compiles a source that was read; a syntax error becomes the page's failure.
CompiledPage compiled_page(std::string path, PageSource source);

// Whether these files are as they were.
bool unchanged(const platform::Files& files, const std::vector<FileState>& states);

class PageCache {
 public:
  PageCache(const platform::Files& files, PageReader reader, Log& log)
      : files_(files), reader_(std::move(reader)), log_(log) {}

  // Before the first page.
  void set_code_page(int code_page) { code_page_ = code_page; }

  // The page at a resolved virtual path; null where there is no such file.
  std::shared_ptr<const CompiledPage> page(std::string_view path);
  // The same without reading anything: null where it is not kept.
  std::shared_ptr<const CompiledPage> kept_page(std::string_view path) const;

 private:
  struct Entry {
    std::mutex compiling;
    std::shared_ptr<const CompiledPage> page;  // under mutex_
  };
  bool current(const CompiledPage& page) const { return unchanged(files_, page.files); }
  std::shared_ptr<const CompiledPage> kept_at(const std::string& physical_path) const;
  std::shared_ptr<Entry> entry_at(const std::string& physical_path);

  const platform::Files& files_;
  PageReader reader_;
  Log& log_;
  int code_page_ = platform::kUtf8;
  mutable std::mutex mutex_;
  std::unordered_map<std::string, std::shared_ptr<Entry>> entries_;  // by the path on the disk
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_CACHE_H_
