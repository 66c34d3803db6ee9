#include "adapters/posix/open_beneath.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

namespace rk::posix {
namespace {

// Signals do not end a call that opens a file on a disk, but they may on a network file system.
int open_at(int folder, const char* relative, int flags, unsigned mode, std::uint64_t resolve) {
  open_how how{};
  how.flags = static_cast<std::uint64_t>(flags | O_CLOEXEC);
  how.mode = (flags & O_CREAT) != 0 ? mode : 0;
  how.resolve = resolve;
  while (true) {
    const long number = syscall(SYS_openat2, folder, relative, &how, sizeof how);
    if (number >= 0) return static_cast<int>(number);
    if (errno != EINTR && errno != EAGAIN) return -1;
  }
}

std::string real_path(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), std::free);
  return real ? std::string(real.get()) : std::string();
}

bool is_beneath(std::string_view path, std::string_view folder) {
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::vector<std::string_view> parts_by_name(std::string_view path) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  while (start <= path.size()) {
    const std::size_t end = std::min(path.find_first_of("/\\", start), path.size());
    const std::string_view part = path.substr(start, end - start);
    start = end + 1;
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else if (!parts.empty()) {
      parts.pop_back();
    }
  }
  return parts;
}

std::string cleaned_text(std::string_view path) {
  std::string cleaned;
  cleaned.reserve(path.size());
  for (const std::string_view part : parts_by_name(path)) cleaned.append("/").append(part);
  return cleaned;
}

}  // namespace

Descriptor::~Descriptor() {
  if (number_ >= 0) ::close(number_);
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

Roots::Roots(const std::vector<std::string>& folders) {
  for (const std::string& folder : folders) {
    Root root;
    // A relative folder is that of the process; its absolute form is taken once, here.
    root.path = cleaned_text(folder.starts_with('/') ? folder : real_path(folder));
    root.real = real_path(root.path.empty() ? "/" : root.path);
    root.folder = Descriptor(::open(root.path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (root.folder) roots_.push_back(std::move(root));
  }
}

std::string Roots::clean(std::string_view path) const {
  if (path.empty() || (path.front() != '/' && path.front() != '\\')) return {};
  if (path.size() >= PATH_MAX || path.find('\0') != std::string_view::npos) return {};
  // Most paths come clean already.
  const bool as_it_is = path.find_first_of('\\') == std::string_view::npos &&
                        path.find("//") == std::string_view::npos &&
                        path.find("/.") == std::string_view::npos && path.back() != '/';
  std::string cleaned = as_it_is ? std::string(path) : cleaned_text(path);
  if (find(cleaned) == nullptr) cleaned.clear();
  return cleaned;
}

const Roots::Root* Roots::find(std::string_view cleaned) const {
  const auto root = std::find_if(roots_.begin(), roots_.end(), [&](const Root& candidate) {
    return is_beneath(cleaned, candidate.path);
  });
  return root == roots_.end() ? nullptr : &*root;
}

std::string_view Roots::root_of(std::string_view cleaned) const {
  const Root* root = find(cleaned);
  return root == nullptr ? std::string_view() : std::string_view(root->path);
}

bool Roots::lies_inside(int descriptor) const {
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  std::array<char, PATH_MAX> target;
  const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
  if (length <= 0) return false;
  const std::string_view real(target.data(), static_cast<std::size_t>(length));
  return std::any_of(roots_.begin(), roots_.end(),
                     [&](const Root& root) { return is_beneath(real, root.real); });
}

bool Roots::status_anywhere(const std::string& cleaned, struct stat& status) const {
  return find(cleaned) != nullptr && ::stat(cleaned.c_str(), &status) == 0;
}

Descriptor Roots::open(const std::string& cleaned, int flags, unsigned mode) const {
  const Root* root = find(cleaned);
  if (root == nullptr) {
    errno = EXDEV;
    return Descriptor();
  }
  const char* relative =
      cleaned.size() > root->path.size() ? cleaned.c_str() + root->path.size() + 1 : ".";
  Descriptor opened(open_at(root->folder.number(), relative, flags, mode,
                            RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS));
  if (opened || errno != EXDEV) return opened;
  // A link that leaves this root by an absolute path may still end in a root. Found out without
  // creating or reading anything: O_PATH opens no content.
  Descriptor place(open_at(root->folder.number(), relative, O_PATH, 0, RESOLVE_NO_MAGICLINKS));
  if (!place) return Descriptor();
  if (!lies_inside(place.number())) {
    errno = EXDEV;
    return Descriptor();
  }
  if ((flags & O_PATH) != 0) return place;
  const std::string link = "/proc/self/fd/" + std::to_string(place.number());
  return Descriptor(::open(link.c_str(), (flags & ~(O_CREAT | O_NOFOLLOW)) | O_CLOEXEC));
}

}  // namespace rk::posix
