#include "adapters/posix/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <ctime>

#include "adapters/posix/lasting_descriptors.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::posix {
namespace {

// Listings kept at once; a site has some dozens of folders, and a flood of made-up ones must not
// fill the memory (folders that do not exist are never kept).
constexpr std::size_t kMaxListings = 1024;

// Files known at once: pages and includes of a large site.
constexpr std::size_t kMaxKnownFiles = 16384;

// Folders looked into for one path: a path has some few parts, and a page that makes folders of all
// letter cases inside one another must not make a search of it.
constexpr std::size_t kMaxLooks = 1024;

// A folder that changed within this time of being listed may have changed again in the same tick
// of the file system's clock, so its listing is not trusted the next time.
constexpr std::int64_t kSettledNs = 100'000'000;

// A file read whole: what a page, a template or an INI file can reasonably be.
constexpr std::uint64_t kMaxReadBytes = std::uint64_t{1} << 30;

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::int64_t now_ns() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return nanoseconds(now);
}

platform::FileStamp stamp_of(const struct stat& status) {
  return {nanoseconds(status.st_mtim), static_cast<std::uint64_t>(status.st_size),
          static_cast<std::uint64_t>(status.st_ino)};
}

std::string_view folder_part(std::string_view path) {
  return path.substr(0, path.rfind('/'));
}
std::string_view name_part(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

// What a script of this kind expects for a failure to open.
[[noreturn]] void raise_open_failure(int error, bool folder_exists) {
  switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EXDEV:
      raise(errors::kPermissionDenied);
    case ENOSPC:
    case EDQUOT:
      raise(errors::kDiskFull);
    default:
      raise(folder_exists ? errors::kFileNotFound : errors::kPathNotFound);
  }
}

void write_all(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      const bool full = errno == ENOSPC || errno == EDQUOT || errno == EFBIG;
      raise(full ? errors::kDiskFull : errors::kDeviceError);
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string read_all(int descriptor, std::uint64_t expected) {
  if (expected > kMaxReadBytes) raise(errors::kOutOfMemory);
  std::string bytes(static_cast<std::size_t>(expected), '\0');
  std::size_t filled = 0;
  while (true) {
    // The file may have grown since it was asked for its size.
    if (filled == bytes.size()) bytes.resize(bytes.size() + 512);
    const ssize_t count = ::pread(descriptor, bytes.data() + filled, bytes.size() - filled,
                                  static_cast<off_t>(filled));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) raise(errors::kDeviceError);
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
    if (filled > kMaxReadBytes) raise(errors::kOutOfMemory);
  }
  bytes.resize(filled);
  return bytes;
}

std::string utf16_to_utf8(std::string_view bytes, bool big_endian) {
  std::string utf8;
  utf8.reserve(bytes.size());
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    const int unit = big_endian ? first << 8 | second : second << 8 | first;
    append_unit(utf8, static_cast<char16_t>(unit));
  }
  return utf8;
}

// The name of a file beside `path` that no visitor and no listing of pages takes for content.
std::string name_for_now(const std::string& path) {
  std::uint64_t unique = 0;
  if (::getrandom(&unique, sizeof unique, 0) != sizeof unique) raise(errors::kDeviceError);
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(unique));
  return std::string(folder_part(path)) + "/.rk-" + digits;
}

}  // namespace

struct PosixFiles::Listing {
  timespec modified{};
  ino_t inode = 0;
  bool settled = false;
  std::vector<std::string> names;                            // in byte order
  std::vector<std::pair<std::string, std::size_t>> lowered;  // with the place in names; sorted

  bool has(std::string_view name) const {
    return std::binary_search(names.begin(), names.end(), name);
  }
  // The names that are this one in some letter case: the exact one first, then in byte order.
  std::vector<std::string_view> in_any_case(std::string_view name) const {
    std::vector<std::string_view> found;
    if (has(name)) found.push_back(name);
    const std::pair<std::string, std::size_t> wanted{lowered_ascii(name), 0};
    for (auto at = std::lower_bound(lowered.begin(), lowered.end(), wanted);
         at != lowered.end() && at->first == wanted.first; ++at) {
      if (names[at->second] != name) found.emplace_back(names[at->second]);
    }
    return found;
  }
};

PosixFiles::PosixFiles(const std::vector<std::string>& roots, const platform::CodePages& code_pages,
                       TextDecoding decoding)
    : roots_(roots), code_pages_(code_pages), decoding_(std::move(decoding)) {}

PosixFiles::~PosixFiles() = default;

std::shared_ptr<const PosixFiles::Listing> PosixFiles::listing(const std::string& folder) const {
  Descriptor opened = roots_.open(folder, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
  struct stat status {};
  if (!opened || ::fstat(opened.number(), &status) != 0) return nullptr;
  {
    const std::lock_guard lock(mutex_);
    const auto kept = listings_.find(folder);
    if (kept != listings_.end() && kept->second->settled && kept->second->inode == status.st_ino &&
        nanoseconds(kept->second->modified) == nanoseconds(status.st_mtim)) {
      return kept->second;
    }
  }
  auto fresh = std::make_shared<Listing>();
  fresh->modified = status.st_mtim;
  fresh->inode = status.st_ino;
  fresh->settled = now_ns() - nanoseconds(status.st_mtim) > kSettledNs;
  // The stream owns the descriptor that it is given.
  const int number = ::dup(opened.number());
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(number), ::closedir);
  if (!entries) return nullptr;
  while (const dirent* entry = ::readdir(entries.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") fresh->names.emplace_back(name);
  }
  std::sort(fresh->names.begin(), fresh->names.end());
  for (std::size_t i = 0; i < fresh->names.size(); ++i) {
    fresh->lowered.emplace_back(lowered_ascii(fresh->names[i]), i);
  }
  std::sort(fresh->lowered.begin(), fresh->lowered.end());
  const std::lock_guard lock(mutex_);
  if (listings_.size() >= kMaxListings) listings_.clear();
  listings_[folder] = fresh;
  return fresh;
}

// Goes on from a folder by the rest of a path ("/inc/top.asp"). Where folders differ in letter case
// only, the file may lie in any of them.
bool PosixFiles::lead_on(std::string& found, std::string_view rest, std::size_t& looks) const {
  if (rest.empty()) return true;
  if (++looks > kMaxLooks) return false;
  const std::shared_ptr<const Listing> entries = listing(found);
  if (!entries) return false;
  const std::size_t end = std::min(rest.find('/', 1), rest.size());
  const std::size_t length = found.size();
  for (const std::string_view name : entries->in_any_case(rest.substr(1, end - 1))) {
    found.append("/").append(name);
    if (lead_on(found, rest.substr(end), looks)) return true;
    found.resize(length);
  }
  return false;
}

std::optional<std::string> PosixFiles::on_disk(const std::string& cleaned) const {
  std::string found(roots_.root_of(cleaned));
  std::size_t looks = 0;
  if (!lead_on(found, std::string_view(cleaned).substr(found.size()), looks)) return std::nullopt;
  return found;
}

std::optional<PosixFiles::Found> PosixFiles::open_any_case(std::string_view path, int flags) const {
  std::string cleaned = roots_.clean(path);
  if (cleaned.empty()) {
    errno = EXDEV;
    return std::nullopt;
  }
  Descriptor exact = roots_.open(cleaned, flags);
  if (exact) return Found{std::move(cleaned), std::move(exact)};
  // ENOTDIR: a file has the name of a folder in another letter case.
  if (errno != ENOENT && errno != ENOTDIR) return std::nullopt;
  const std::optional<std::string> other = on_disk(cleaned);
  if (!other) {
    errno = ENOENT;
    return std::nullopt;
  }
  Descriptor opened = roots_.open(*other, flags);
  if (!opened) return std::nullopt;
  return Found{*other, std::move(opened)};
}

std::optional<std::string> PosixFiles::find(std::string_view path) const {
  std::optional<Found> found = open_any_case(path, O_PATH);
  if (!found) return std::nullopt;
  return std::move(found->path);
}

bool PosixFiles::is_known(const std::string& cleaned, const KnownFile& file) const {
  const std::lock_guard lock(mutex_);
  const auto known = known_.find(cleaned);
  return known != known_.end() && known->second.device == file.device &&
         known->second.inode == file.inode;
}

// OPTIMIZATION: pages ask for the stamps of their files at each request. A file that was found to
// lie in a root is known by its device and inode, whichever way a path leads to it, so one look is
// enough while it is the same file.
std::optional<platform::FileStamp> PosixFiles::stamp(std::string_view path) const {
  const std::string cleaned = roots_.clean(path);
  struct stat status {};
  if (cleaned.empty()) return std::nullopt;
  if (roots_.status_anywhere(cleaned, status) &&
      is_known(cleaned, {status.st_dev, status.st_ino})) {
    return stamp_of(status);
  }
  const std::optional<Found> found = open_any_case(cleaned, O_PATH);
  if (!found || ::fstat(found->descriptor.number(), &status) != 0) return std::nullopt;
  if (found->path == cleaned) {
    const std::lock_guard lock(mutex_);
    if (known_.size() >= kMaxKnownFiles) known_.clear();
    known_[cleaned] = {status.st_dev, status.st_ino};
  }
  return stamp_of(status);
}

bool PosixFiles::is_folder(std::string_view path) const {
  const std::optional<Found> found = open_any_case(path, O_PATH);
  struct stat status {};
  return found && ::fstat(found->descriptor.number(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> PosixFiles::names(std::string_view folder) const {
  const std::optional<std::string> found = find(folder);
  if (!found) return {};
  const std::shared_ptr<const Listing> entries = listing(*found);
  return entries ? entries->names : std::vector<std::string>();
}

std::optional<OpenedFile> PosixFiles::open(std::string_view path) const {
  const std::optional<Found> found = open_any_case(path, O_PATH);
  struct stat status {};
  if (!found || ::fstat(found->descriptor.number(), &status) != 0) return std::nullopt;
  if (!S_ISREG(status.st_mode)) {
    errno = EISDIR;
    return std::nullopt;
  }
  std::shared_ptr<const Descriptor> file = open_for_reading(found->descriptor, status);
  if (!file) return std::nullopt;
  return OpenedFile{std::move(file), stamp_of(status), found->path};
}

// The same, or raises.
OpenedFile PosixFiles::opened(std::string_view path) const {
  std::optional<OpenedFile> file = open(path);
  if (file) return std::move(*file);
  const int error = errno;
  const std::string cleaned = roots_.clean(path);
  raise_open_failure(error, !cleaned.empty() && is_folder(folder_part(cleaned)));
}

std::string PosixFiles::read(std::string_view path) const {
  const OpenedFile file = opened(path);
  return read_all(file.descriptor->number(), file.stamp.size);
}

std::string PosixFiles::first_bytes(std::string_view path, std::size_t count) const {
  const OpenedFile file = opened(path);
  std::string bytes(count, '\0');
  const ssize_t got = ::pread(file.descriptor->number(), bytes.data(), count, 0);
  if (got < 0) raise(errors::kDeviceError);
  bytes.resize(static_cast<std::size_t>(got));
  return bytes;
}

std::string PosixFiles::decode(std::string bytes, const std::string& path) const {
  const std::string_view view = bytes;
  if (view.starts_with("\xFF\xFE")) return utf16_to_utf8(view.substr(2), false);
  if (view.starts_with("\xFE\xFF")) return utf16_to_utf8(view.substr(2), true);
  const bool marked = view.starts_with("\xEF\xBB\xBF");
  if (marked) bytes.erase(0, 3);
  int code_page = marked ? platform::kUtf8 : decoding_.code_page;
  if (code_page == 0 || code_page == platform::kUtf8) {
    if (is_valid_utf8(bytes)) return bytes;
    if (code_page == 0) code_page = decoding_.ansi;
  }
  std::optional<std::size_t> first_bad;
  std::string text = code_pages_.to_utf8(bytes, code_page, &first_bad);
  if (first_bad && decoding_.on_bad_bytes) {
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(*first_bad);
    const auto lines = std::count(bytes.begin(), end, '\n');
    decoding_.on_bad_bytes(path, static_cast<std::size_t>(lines) + 1);
  }
  return text;
}

std::string PosixFiles::read_text(std::string_view path) const {
  std::string bytes = read(path);
  if (bytes.empty()) raise(errors::kInputPastEnd);
  return decode(std::move(bytes), std::string(path));
}

// The path of a file to be made or replaced, in the folder that is there.
std::string PosixFiles::destination(std::string_view path) const {
  const std::string cleaned = roots_.clean(path);
  if (cleaned.empty() || roots_.root_of(cleaned).size() == cleaned.size()) {
    raise(errors::kPathNotFound);
  }
  errno = 0;
  if (std::optional<Found> there = open_any_case(cleaned, O_PATH)) return std::move(there->path);
  // A link that leads out is there, but is not the site's to replace.
  if (errno == EXDEV || errno == ELOOP || errno == EACCES) raise(errors::kPermissionDenied);
  const std::optional<std::string> folder = find(folder_part(cleaned));
  if (!folder || !is_folder(*folder)) raise(errors::kPathNotFound);
  std::string made = *folder + "/";
  made.append(name_part(cleaned));
  return made;
}

// Where a file itself lies that a link leads to, so that it is replaced and not the link.
std::string PosixFiles::behind_links(const Found& found) const {
  const std::string link = "/proc/self/fd/" + std::to_string(found.descriptor.number());
  std::array<char, PATH_MAX> target;
  const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
  if (length <= 0) return found.path;
  std::string real = roots_.clean({target.data(), static_cast<std::size_t>(length)});
  return real.empty() ? found.path : real;
}

void PosixFiles::write(std::string_view path, std::string_view bytes) {
  std::string target = destination(path);
  const std::optional<Found> old = open_any_case(target, O_PATH);
  if (old) target = behind_links(*old);
  struct stat status {};
  const bool replaces = old && ::fstat(old->descriptor.number(), &status) == 0;
  if (replaces && !S_ISREG(status.st_mode)) raise(errors::kPermissionDenied);
  const std::string folder(folder_part(target));
  const Descriptor place = roots_.open(folder, O_PATH | O_DIRECTORY);
  if (!place) raise(errors::kPathNotFound);

  const std::string temporary = name_for_now(target);
  const std::string temporary_name(name_part(temporary));
  const Descriptor file(::openat(place.number(), temporary_name.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
  if (!file) raise_open_failure(errno, true);
  try {
    write_all(file.number(), bytes);
    // A file keeps who may read it.
    if (replaces && ::fchmod(file.number(), status.st_mode & 07777) != 0) {
      raise(errors::kPermissionDenied);
    }
    const std::string name(name_part(target));
    if (::renameat(place.number(), temporary_name.c_str(), place.number(), name.c_str()) != 0) {
      raise(errors::kPermissionDenied);
    }
  } catch (...) {
    ::unlinkat(place.number(), temporary_name.c_str(), 0);
    throw;
  }
}

void PosixFiles::append(std::string_view path, std::string_view bytes) {
  const std::string target = destination(path);
  const int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY;
  const Descriptor file = roots_.open(target, flags, 0666);
  if (!file) raise_open_failure(errno, true);
  write_all(file.number(), bytes);
}

void PosixFiles::unlink(std::string_view path, bool folder) {
  const std::optional<std::string> found = find(path);
  // A root itself is not the site's to remove.
  if (!found || roots_.root_of(*found).size() == found->size()) {
    raise(folder ? errors::kPathNotFound : errors::kFileNotFound);
  }
  const Descriptor place = roots_.open(std::string(folder_part(*found)), O_PATH | O_DIRECTORY);
  const std::string name(name_part(*found));
  const int flags = folder ? AT_REMOVEDIR : 0;
  if (!place || ::unlinkat(place.number(), name.c_str(), flags) != 0) {
    raise(errors::kPermissionDenied);
  }
}

void PosixFiles::remove(std::string_view path) {
  unlink(path, false);
}

void PosixFiles::remove_folder(std::string_view path) {
  unlink(path, true);
}

void PosixFiles::make_folder(std::string_view path) {
  const std::string target = destination(path);
  if (find(target)) raise(errors::kFileExists);
  const Descriptor place = roots_.open(std::string(folder_part(target)), O_PATH | O_DIRECTORY);
  const std::string name(name_part(target));
  if (!place || ::mkdirat(place.number(), name.c_str(), 0777) != 0) {
    raise(errors::kPermissionDenied);
  }
}

void PosixFiles::rename(std::string_view from, std::string_view to) {
  const std::optional<std::string> found = find(from);
  if (!found || roots_.root_of(*found).size() == found->size()) raise(errors::kFileNotFound);
  const std::string target = destination(to);
  const Descriptor place = roots_.open(std::string(folder_part(*found)), O_PATH | O_DIRECTORY);
  const Descriptor goal = roots_.open(std::string(folder_part(target)), O_PATH | O_DIRECTORY);
  if (!place || !goal) raise(errors::kPathNotFound);
  // Not over what is there, even where it came to be this moment.
  if (::renameat2(place.number(), std::string(name_part(*found)).c_str(), goal.number(),
                  std::string(name_part(target)).c_str(), RENAME_NOREPLACE) != 0) {
    raise(errno == EEXIST ? errors::kFileExists : errors::kPermissionDenied);
  }
}

}  // namespace rk::posix
