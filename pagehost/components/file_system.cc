#include "pagehost/components/file_system.h"

#include <array>
#include <cstdint>
#include <utility>

#include "pagehost/components/drive_object.h"
#include "pagehost/components/file_objects.h"
#include "pagehost/components/file_operations.h"
#include "pagehost/components/file_paths.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kUnicodeFormat = -1;

}  // namespace

std::span<const Member<FileSystemObject>> FileSystemObject::members() {
  using F = FileSystemObject;
  static constexpr Member<F> kMembers[] = {
      {"", nullptr},
      {"OpenTextFile", &F::open_text_file, 1, 4},
      {"CreateTextFile", &F::create_text_file, 1, 3},
      {"FileExists", &F::file_exists, 1, 1},
      {"FolderExists", &F::folder_exists, 1, 1},
      {"DriveExists", &F::drive_exists, 1, 1},
      {"Drives", &F::drives},
      {"GetDrive", &F::drive, 1, 1},
      {"GetFileVersion", &F::file_version, 1, 1},
      {"GetFile", &F::file, 1, 1},
      {"GetFolder", &F::folder, 1, 1},
      {"GetFileName", &F::file_name, 1, 1},
      {"GetBaseName", &F::base_name, 1, 1},
      {"GetExtensionName", &F::extension_name, 1, 1},
      {"GetParentFolderName", &F::parent_folder_name, 1, 1},
      {"GetAbsolutePathName", &F::absolute_path_name, 1, 1},
      {"GetDriveName", &F::drive_name, 1, 1},
      {"BuildPath", &F::build_path, 2, 2},
      {"GetSpecialFolder", &F::special_folder, 1, 1},
      {"GetTempName", &F::temp_name},
      {"DeleteFile", &F::delete_file, 1, 2},
      {"DeleteFolder", &F::delete_folder, 1, 2},
      {"CopyFile", &F::copy_file, 2, 3},
      {"CopyFolder", &F::copy_folder, 2, 3},
      {"MoveFile", &F::move_file, 2, 2},
      {"MoveFolder", &F::move_folder, 2, 2},
      {"CreateFolder", &F::create_folder, 1, 1},
  };
  return kMembers;
}

std::string FileSystemObject::absolute(std::string_view path) const {
  return path_in_site(site_root_, path);
}

Value FileSystemObject::open_text_file(const Call& call) {
  const std::string path = absolute(call.text(0));
  const StreamUse use = stream_use(call.number_or(1, 1));
  const TextFormat format =
      call.number_or(3, 0) == kUnicodeFormat ? TextFormat::Unicode : TextFormat::Ansi;
  const bool may_create = call.flag_or(2, false);
  if (!system_.files->find(path)) {
    if (!may_create) raise(errors::kFileNotFound);
    system_.files->write(path, "");
  }
  return Value::object(make_ref<TextStream>(system_, path, use, format));
}

Value FileSystemObject::create_text_file(const Call& call) {
  const std::string path = absolute(call.text(0));
  if (!call.flag_or(1, true) && system_.files->find(path)) raise(errors::kFileExists);
  const TextFormat format = call.flag_or(2, false) ? TextFormat::Unicode : TextFormat::Ansi;
  return Value::object(make_ref<TextStream>(system_, path, StreamUse::Write, format));
}

Value FileSystemObject::file_exists(const Call& call) {
  const std::string path = absolute(call.text(0));
  return Value::boolean(system_.files->find(path) && !system_.files->is_folder(path));
}

Value FileSystemObject::folder_exists(const Call& call) {
  return Value::boolean(system_.files->is_folder(absolute(call.text(0))));
}

// One disk without a letter.
Value FileSystemObject::drive_exists(const Call& call) {
  const std::string name = call.text(0);
  return Value::boolean(name == "/" || name == "\\");
}

Value FileSystemObject::drives(const Call&) {
  return Value::object(drives_object({system_, &clock_, site_root_}));
}

// Whichever is asked for: there is one.
Value FileSystemObject::drive(const Call&) {
  return Value::object(drive_object({system_, &clock_, site_root_}));
}

// Files have none here.
Value FileSystemObject::file_version(const Call& call) {
  if (!system_.files->find(absolute(call.text(0)))) raise(errors::kFileNotFound);
  return Value::text("");
}

Value FileSystemObject::file(const Call& call) {
  return Value::object(file_object(system_, clock_, absolute(call.text(0))));
}

Value FileSystemObject::folder(const Call& call) {
  return Value::object(folder_object(system_, clock_, absolute(call.text(0))));
}

Value FileSystemObject::file_name(const Call& call) {
  return Value::text(file_name_of(call.text(0)));
}

Value FileSystemObject::base_name(const Call& call) {
  return Value::text(base_name_of(call.text(0)));
}

Value FileSystemObject::extension_name(const Call& call) {
  return Value::text(extension_of(call.text(0)));
}

Value FileSystemObject::parent_folder_name(const Call& call) {
  return Value::text(parent_folder_of(call.text(0)));
}

Value FileSystemObject::absolute_path_name(const Call& call) {
  return Value::text(absolute(call.text(0)));
}

Value FileSystemObject::drive_name(const Call& call) {
  const std::string path = call.text(0);
  return Value::text(path.size() > 1 && path[1] == ':' ? path.substr(0, 2) : "");
}

Value FileSystemObject::build_path(const Call& call) {
  return Value::text(joined_path(call.text(0), call.text(1)));
}

// The system's folders and the one for temporary files lie outside of the site.
Value FileSystemObject::special_folder(const Call& call) {
  const std::int32_t which = call.number(0);
  raise(which < 0 || which > 2 ? errors::kInvalidCall : errors::kPathNotFound);
}

// As "rad1A2B3.tmp"; no file is made.
Value FileSystemObject::temp_name(const Call&) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::array<std::uint8_t, 5> bytes{};
  random_.secret_bytes(bytes);
  std::string name = "rad";
  for (const std::uint8_t byte : bytes) name += kDigits[byte & 15];
  return Value::text(name + ".tmp");
}

Value FileSystemObject::delete_file(const Call& call) {
  for (const std::string& path : named_files(*system_.files, absolute(call.text(0)))) {
    pagehost::delete_file(*system_.files, path);
  }
  return {};
}

Value FileSystemObject::delete_folder(const Call& call) {
  for (const std::string& path : named_folders(*system_.files, absolute(call.text(0)))) {
    pagehost::delete_folder(*system_.files, path);
  }
  return {};
}

Value FileSystemObject::copy_file(const Call& call) {
  const std::string goal = absolute(call.text(1));
  for (const std::string& path : named_files(*system_.files, absolute(call.text(0)))) {
    pagehost::copy_file(*system_.files, path, goal, call.flag_or(2, true));
  }
  return {};
}

Value FileSystemObject::copy_folder(const Call& call) {
  const std::string goal = absolute(call.text(1));
  for (const std::string& path : named_folders(*system_.files, absolute(call.text(0)))) {
    pagehost::copy_folder(*system_.files, path, goal, call.flag_or(2, true));
  }
  return {};
}

Value FileSystemObject::move_file(const Call& call) {
  const std::string goal = absolute(call.text(1));
  for (const std::string& path : named_files(*system_.files, absolute(call.text(0)))) {
    pagehost::move_file(*system_.files, path, goal);
  }
  return {};
}

Value FileSystemObject::move_folder(const Call& call) {
  const std::string goal = absolute(call.text(1));
  for (const std::string& path : named_folders(*system_.files, absolute(call.text(0)))) {
    const bool into = goal.ends_with('/') || goal.ends_with('\\');
    system_.files->rename(path, into ? joined_path(goal, file_name_of(path)) : goal);
  }
  return {};
}

Value FileSystemObject::create_folder(const Call& call) {
  const std::string path = absolute(call.text(0));
  system_.files->make_folder(path);
  return Value::object(folder_object(system_, clock_, path));
}

}  // namespace rk::pagehost
