// The files that are served as they are, behind an interface: the front reads them piece by piece,
// so that a large one costs no memory.
#ifndef RK_PAGEHOST_HTTP_SITE_FILE_H_
#define RK_PAGEHOST_HTTP_SITE_FILE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/files.h"

namespace rk::http {

// One opened file; one connection's thread at a time.
class SiteFile {
 public:
  virtual ~SiteFile() = default;
  virtual const platform::FileStamp& stamp() const = 0;
  // The bytes read, fewer than asked at the end only; 0 where nothing can be read.
  virtual std::size_t read_at(std::uint64_t offset, char* bytes, std::size_t count) = 0;
};

class SiteFiles {
 public:
  virtual ~SiteFiles() = default;
  // A regular file by its physical path, found as platform::Files finds; null where there is none.
  virtual std::unique_ptr<SiteFile> open(std::string_view path) const = 0;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_SITE_FILE_H_
