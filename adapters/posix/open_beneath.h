// Opens files by path without ever leaving a set of root folders, whatever ".." or links a path
// goes through: the kernel refuses on the way, so there is no gap between a check and its use.
// For files.cc. Several threads may call.
#ifndef RK_ADAPTERS_POSIX_OPEN_BENEATH_H_
#define RK_ADAPTERS_POSIX_OPEN_BENEATH_H_

#include <sys/stat.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rk::posix {

// A file descriptor, closed by scope.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) noexcept : number_(number) {}
  ~Descriptor();
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  explicit operator bool() const noexcept { return number_ >= 0; }
  int number() const noexcept { return number_; }

 private:
  int number_;
};

class Roots {
 public:
  // Folders by their paths; a missing one is left out.
  explicit Roots(const std::vector<std::string>& folders);

  // The path cleaned as a text ("\" as "/", no empty parts, "." and ".." resolved by name) where it
  // is absolute, holds no NUL and lies in a root; else empty.
  std::string clean(std::string_view path) const;

  // `cleaned` comes from clean(). Links may be followed to what lies in a root. -1 with errno
  // (EXDEV: it leads out) where it cannot be opened.
  Descriptor open(const std::string& cleaned, int flags, unsigned mode = 0) const;

  // The status of what the path leads to, followed out of the roots too: for who knows the file.
  bool status_anywhere(const std::string& cleaned, struct stat& status) const;

  // The root's path that `cleaned` lies in; empty where it lies in none.
  std::string_view root_of(std::string_view cleaned) const;

 private:
  struct Root {
    std::string path;  // as given, absolute and cleaned, without a "/" at its end
    std::string real;  // with links resolved
    Descriptor folder;
  };
  const Root* find(std::string_view cleaned) const;
  bool lies_inside(int descriptor) const;

  std::vector<Root> roots_;
};

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_OPEN_BENEATH_H_
