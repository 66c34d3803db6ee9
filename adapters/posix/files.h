// Files of a site on a POSIX file system, found as pages for a case-insensitive one name them.
//
// The exact name is tried first; where it is not there, each part of the path is looked up without
// regard to the letter case of ASCII letters in its folder's listing, the exact name first; a name
// that leads on in one folder only is found there. Listings are kept and checked by the folder's
// time stamp. No path leaves the roots, whatever ".." or links it has.
// Several threads may call.
#ifndef RK_ADAPTERS_POSIX_FILES_H_
#define RK_ADAPTERS_POSIX_FILES_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/posix/open_beneath.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace rk::posix {

struct TextDecoding {
  // Of files without a byte-order mark; 0: UTF-8 where the file is valid UTF-8, else `ansi`.
  int code_page = 0;
  int ansi = platform::kGb2312;
  // Told of bytes that the code page does not have, by the line of the first (from 1).
  std::function<void(const std::string& path, std::size_t line)> on_bad_bytes;
};

// Where a path leads, opened: for what reads files piece by piece.
struct OpenedFile {
  // For pread only; may be shared. See lasting_descriptors.h.
  std::shared_ptr<const Descriptor> descriptor;
  platform::FileStamp stamp;
  std::string path;  // as it lies on the disk
};

class PosixFiles final : public platform::Files {
 public:
  // The first root is the site. `code_pages` must outlive this object.
  PosixFiles(const std::vector<std::string>& roots, const platform::CodePages& code_pages,
             TextDecoding decoding = {});
  ~PosixFiles() override;

  std::optional<std::string> find(std::string_view path) const override;
  std::optional<platform::FileStamp> stamp(std::string_view path) const override;
  bool is_folder(std::string_view path) const override;
  std::vector<std::string> names(std::string_view folder) const override;
  std::string read(std::string_view path) const override;
  std::string first_bytes(std::string_view path, std::size_t count) const override;
  std::string read_text(std::string_view path) const override;
  // Whole or not at all for whoever reads meanwhile; the file is not forced to the disk.
  void write(std::string_view path, std::string_view bytes) override;
  void append(std::string_view path, std::string_view bytes) override;
  void remove(std::string_view path) override;
  void remove_folder(std::string_view path) override;
  void make_folder(std::string_view path) override;
  void rename(std::string_view from, std::string_view to) override;

  // A regular file, for reading; nothing where there is none.
  std::optional<OpenedFile> open(std::string_view path) const;

  // The text of bytes in this decoding; `path` is for the report of bad bytes.
  std::string decode(std::string bytes, const std::string& path) const;

 private:
  struct Listing;
  struct Found {
    std::string path;
    Descriptor descriptor;
  };

  struct KnownFile {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
  };

  OpenedFile opened(std::string_view path) const;
  bool is_known(const std::string& cleaned, const KnownFile& file) const;
  std::optional<Found> open_any_case(std::string_view path, int flags) const;
  std::optional<std::string> on_disk(const std::string& cleaned) const;
  bool lead_on(std::string& found, std::string_view rest, std::size_t& looks) const;
  std::shared_ptr<const Listing> listing(const std::string& folder) const;
  std::string destination(std::string_view path) const;
  std::string behind_links(const Found& found) const;
  void unlink(std::string_view path, bool folder);

  Roots roots_;
  const platform::CodePages& code_pages_;
  TextDecoding decoding_;
  mutable std::mutex mutex_;  // of all below
  // Files that were found to lie in a root, by their cleaned paths.
  mutable std::unordered_map<std::string, KnownFile> known_;
  mutable std::unordered_map<std::string, std::shared_ptr<const Listing>> listings_;
};

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_FILES_H_
