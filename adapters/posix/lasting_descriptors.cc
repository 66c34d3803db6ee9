#include "adapters/posix/lasting_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace rk::posix {
namespace {

constexpr std::string_view kDatabaseMark("SQLite format 3\0", 16);

bool begins_as_database(const Descriptor& file) {
  std::array<char, kDatabaseMark.size()> first;
  const ssize_t count = ::pread(file.number(), first.data(), first.size(), 0);
  return count > 0 &&
         std::string_view(first.data(), static_cast<std::size_t>(count)) == kDatabaseMark;
}

class LastingDescriptors {
 public:
  std::shared_ptr<const Descriptor> open(const Descriptor& place, const struct stat& status);

 private:
  void forget_removed();

  std::mutex mutex_;  // over the opening too: a second one of the same file would have to be closed
  std::map<std::pair<dev_t, ino_t>, std::shared_ptr<const Descriptor>> by_file_;
};

// Of a file without a name nobody else can take the locks, nor its space while it is open here.
void LastingDescriptors::forget_removed() {
  std::erase_if(by_file_, [](const auto& entry) {
    struct stat status {};
    return ::fstat(entry.second->number(), &status) == 0 && status.st_nlink == 0;
  });
}

std::shared_ptr<const Descriptor> LastingDescriptors::open(const Descriptor& place,
                                                           const struct stat& status) {
  const std::lock_guard lock(mutex_);
  const std::pair file(status.st_dev, status.st_ino);
  if (const auto known = by_file_.find(file); known != by_file_.end()) return known->second;
  const std::string link = "/proc/self/fd/" + std::to_string(place.number());
  Descriptor opened(::open(link.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!opened) return nullptr;
  const bool lasts = begins_as_database(opened);
  auto shared = std::make_shared<const Descriptor>(std::move(opened));
  if (lasts) {
    forget_removed();
    by_file_.emplace(file, shared);
  }
  return shared;
}

}  // namespace

std::shared_ptr<const Descriptor> open_for_reading(const Descriptor& place,
                                                   const struct stat& status) {
  static LastingDescriptors descriptors;
  return descriptors.open(place, status);
}

}  // namespace rk::posix
