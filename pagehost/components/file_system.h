// FileSystemObject (Scripting.FileSystemObject): the site's files and folders for pages. What lies
// outside of the site's folders is not there.
#ifndef RK_PAGEHOST_COMPONENTS_FILE_SYSTEM_H_
#define RK_PAGEHOST_COMPONENTS_FILE_SYSTEM_H_

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "pagehost/components/text_stream.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/clock.h"
#include "platform/random.h"

namespace rk::pagehost {

class FileSystemObject final : public TabledObject<FileSystemObject> {
 public:
  FileSystemObject(FileSystem system, platform::Random& random, const platform::Clock& clock,
                   std::string site_root)
      : system_(std::move(system)),
        random_(random),
        clock_(clock),
        site_root_(std::move(site_root)) {}
  std::string_view type_name() const override { return "FileSystemObject"; }
  static std::span<const Member<FileSystemObject>> members();

 private:
  Value open_text_file(const Call& call);
  Value create_text_file(const Call& call);
  Value file_exists(const Call& call);
  Value folder_exists(const Call& call);
  Value drive_exists(const Call& call);
  Value drives(const Call& call);
  Value drive(const Call& call);
  Value file_version(const Call& call);
  Value file(const Call& call);
  Value folder(const Call& call);
  Value file_name(const Call& call);
  Value base_name(const Call& call);
  Value extension_name(const Call& call);
  Value parent_folder_name(const Call& call);
  Value absolute_path_name(const Call& call);
  Value drive_name(const Call& call);
  Value build_path(const Call& call);
  Value special_folder(const Call& call);
  Value temp_name(const Call& call);
  Value delete_file(const Call& call);
  Value delete_folder(const Call& call);
  Value copy_file(const Call& call);
  Value copy_folder(const Call& call);
  Value move_file(const Call& call);
  Value move_folder(const Call& call);
  Value create_folder(const Call& call);

  std::string absolute(std::string_view path) const;

  FileSystem system_;
  platform::Random& random_;
  const platform::Clock& clock_;
  std::string site_root_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_FILE_SYSTEM_H_
