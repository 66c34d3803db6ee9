// Profile strings over the files of a site. Writers of this process wait for each other here, and
// those of other processes at a lock on the file's folder; readers see an old file or a new one,
// never half of one. Several threads may call.
#ifndef RK_ADAPTERS_POSIX_PROFILE_STRINGS_H_
#define RK_ADAPTERS_POSIX_PROFILE_STRINGS_H_

#include <mutex>
#include <string>
#include <utility>

#include "adapters/posix/ini_text.h"
#include "platform/files.h"
#include "platform/profile_strings.h"

namespace rk::posix {

class ProfileStrings final : public platform::ProfileStrings {
 public:
  // Only files that `files` reaches are read or written; it must outlive this object. A path that
  // does not begin at the root is taken from `default_folder`.
  ProfileStrings(platform::Files& files, std::string default_folder,
                 const LeadBytes& lead_bytes = {})
      : files_(files), default_folder_(std::move(default_folder)), lead_bytes_(lead_bytes) {}

  std::string read(std::string_view section, std::string_view key, std::size_t size,
                   std::string_view path) override;
  bool write(std::string_view section, std::optional<std::string_view> key,
             std::optional<std::string_view> value, std::string_view path) override;

 private:
  std::string absolute(std::string_view path) const;

  platform::Files& files_;
  const std::string default_folder_;
  const LeadBytes lead_bytes_;
  std::mutex writing_;
};

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_PROFILE_STRINGS_H_
