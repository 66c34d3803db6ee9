#include "pagehost/components/file_objects.h"

#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "pagehost/components/drive_object.h"
#include "pagehost/components/file_operations.h"
#include "pagehost/components/file_paths.h"
#include "pagehost/pages/tabled_object.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr double kUnixEpoch = 25569.0;  // 1970-01-01 as a Date
constexpr double kNanosecondsADay = 86400e9;
constexpr std::int32_t kArchive = 32;
constexpr std::int32_t kDirectory = 16;

struct Place {
  FileSystem system;
  const platform::Clock* clock;
  std::string path;

  platform::Files& files() const { return *system.files; }
};

// Local time, to the second.
Value modified_date(const Place& place) {
  const auto stamp = place.files().stamp(place.path);
  if (!stamp) raise(errors::kFileNotFound);
  const double days = kUnixEpoch + static_cast<double>(stamp->modified_ns) / kNanosecondsADay +
                      place.clock->ahead_of_utc();
  return Value::date(std::round(days * 86400) / 86400);
}

class ObjectWalk final : public Enumeration {
 public:
  explicit ObjectWalk(std::vector<Value> objects) : objects_(std::move(objects)) {}
  bool next(Value& item) override {
    if (at_ >= objects_.size()) return false;
    item = objects_[at_++];
    return true;
  }

 private:
  std::vector<Value> objects_;
  std::size_t at_ = 0;
};

// Folder.Files and Folder.SubFolders, read when they are asked for.
class EntriesObject final : public TabledObject<EntriesObject> {
 public:
  EntriesObject(Place folder, bool folders) : folder_(std::move(folder)), folders_(folders) {}
  std::string_view type_name() const override { return folders_ ? "Folders" : "Files"; }
  static std::span<const Member<EntriesObject>> members() {
    static constexpr Member<EntriesObject> kMembers[] = {
        {"Item", &EntriesObject::item, 1, 1},
        {"Count", &EntriesObject::count},
        {"Add", &EntriesObject::add, 1, 1},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    std::vector<Value> objects;
    for (const std::string& path : paths()) objects.push_back(Value::object(object(path)));
    return std::make_unique<ObjectWalk>(std::move(objects));
  }

 private:
  Value item(const Call& call) {
    return Value::object(object(joined_path(folder_.path, call.text(0))));
  }
  Value count(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(paths().size()));
  }
  Value add(const Call& call) {
    if (!folders_) raise(errors::kNoSuchMember);
    const std::string path = joined_path(folder_.path, call.text(0));
    folder_.files().make_folder(path);
    return Value::object(object(path));
  }
  Ref<Object> object(const std::string& path) const {
    return folders_ ? folder_object(folder_.system, *folder_.clock, path)
                    : file_object(folder_.system, *folder_.clock, path);
  }
  std::vector<std::string> paths() const {
    std::vector<std::string> out;
    for (const std::string& name : folder_.files().names(folder_.path)) {
      std::string path = joined_path(folder_.path, name);
      if (folder_.files().is_folder(path) == folders_) out.push_back(std::move(path));
    }
    return out;
  }

  Place folder_;
  bool folders_;
};

class FolderObject final : public TabledObject<FolderObject> {
 public:
  explicit FolderObject(Place place) : place_(std::move(place)) {}
  std::string_view type_name() const override { return "Folder"; }
  static std::span<const Member<FolderObject>> members() {
    using F = FolderObject;
    static constexpr Member<F> kMembers[] = {
        {"Path", &F::path},
        {"Name", &F::name, 0, 0, Access::Both},
        {"Files", &F::files},
        {"SubFolders", &F::sub_folders},
        {"ParentFolder", &F::parent},
        {"IsRootFolder", &F::is_root},
        {"Drive", &F::drive},
        {"Size", &F::size},
        {"Type", &F::type},
        {"Attributes", &F::attributes},
        {"DateLastModified", &F::modified},
        {"DateCreated", &F::modified},
        {"DateLastAccessed", &F::modified},
        {"ShortName", &F::name},
        {"ShortPath", &F::path},
        {"Delete", &F::remove, 0, 1},
        {"Copy", &F::copy, 1, 2},
        {"Move", &F::move, 1, 1},
        {"CreateTextFile", &F::create_text_file, 1, 3},
    };
    return kMembers;
  }

 private:
  Value path(const Call&) { return Value::text(place_.path); }
  Value name(const Call& call) {
    if (!call.assigns()) return Value::text(file_name_of(place_.path));
    move_to(joined_path(parent_folder_of(place_.path), to_text(call.assigned()).view()));
    return {};
  }
  Value files(const Call&) { return Value::object(make_ref<EntriesObject>(place_, false)); }
  Value sub_folders(const Call&) { return Value::object(make_ref<EntriesObject>(place_, true)); }
  Value parent(const Call&) {
    const std::string up(parent_folder_of(place_.path));
    if (!place_.files().is_folder(up)) return Value::nothing();
    return Value::object(folder_object(place_.system, *place_.clock, up));
  }
  Value drive(const Call&) {
    return Value::object(drive_object({place_.system, place_.clock, place_.path}));
  }
  Value is_root(const Call&) {
    return Value::boolean(!place_.files().is_folder(parent_folder_of(place_.path)));
  }
  Value size(const Call&) { return Value::real(folder_size(place_.files(), place_.path)); }
  Value type(const Call&) { return Value::text("File Folder"); }
  Value attributes(const Call&) { return Value::long_integer(kDirectory); }
  Value modified(const Call&) { return modified_date(place_); }
  Value remove(const Call&) {
    delete_folder(place_.files(), place_.path);
    return {};
  }
  Value copy(const Call& call) {
    copy_folder(place_.files(), place_.path, call.text(0), call.flag_or(1, true));
    return {};
  }
  Value move(const Call& call) {
    move_to(call.text(0));
    return {};
  }
  Value create_text_file(const Call& call) {
    const std::string path = joined_path(place_.path, call.text(0));
    if (!call.flag_or(1, true) && place_.files().find(path)) raise(errors::kFileExists);
    const TextFormat format = call.flag_or(2, false) ? TextFormat::Unicode : TextFormat::Ansi;
    return Value::object(make_ref<TextStream>(place_.system, path, StreamUse::Write, format));
  }
  void move_to(const std::string& goal) {
    place_.files().rename(place_.path, goal);
    place_.path = goal;
  }

  Place place_;
};

class FileObject final : public TabledObject<FileObject> {
 public:
  explicit FileObject(Place place) : place_(std::move(place)) {}
  std::string_view type_name() const override { return "File"; }
  static std::span<const Member<FileObject>> members() {
    using F = FileObject;
    static constexpr Member<F> kMembers[] = {
        {"Path", &F::path},
        {"Name", &F::name, 0, 0, Access::Both},
        {"Size", &F::size},
        {"Type", &F::type},
        {"ParentFolder", &F::parent},
        {"Drive", &F::drive},
        {"Attributes", &F::attributes, 0, 0, Access::Both},
        {"DateLastModified", &F::modified},
        {"DateCreated", &F::modified},
        {"DateLastAccessed", &F::modified},
        {"ShortName", &F::name},
        {"ShortPath", &F::path},
        {"Delete", &F::remove, 0, 1},
        {"Copy", &F::copy, 1, 2},
        {"Move", &F::move, 1, 1},
        {"OpenAsTextStream", &F::open, 0, 2},
    };
    return kMembers;
  }

 private:
  Value path(const Call&) { return Value::text(place_.path); }
  Value name(const Call& call) {
    if (!call.assigns()) return Value::text(file_name_of(place_.path));
    move_to(joined_path(parent_folder_of(place_.path), to_text(call.assigned()).view()));
    return {};
  }
  Value size(const Call&) {
    const auto stamp = place_.files().stamp(place_.path);
    if (!stamp) raise(errors::kFileNotFound);
    return stamp->size < 0x80000000u ? Value::long_integer(static_cast<std::int32_t>(stamp->size))
                                     : Value::real(static_cast<double>(stamp->size));
  }
  Value type(const Call&) {
    std::string type(extension_of(place_.path));
    for (char& c : type) {
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return Value::text(type.empty() ? "File" : type + " File");
  }
  Value parent(const Call&) {
    return Value::object(
        folder_object(place_.system, *place_.clock, std::string(parent_folder_of(place_.path))));
  }
  Value drive(const Call&) {
    return Value::object(
        drive_object({place_.system, place_.clock, std::string(parent_folder_of(place_.path))}));
  }
  // Kept by no file system here: an assignment is taken and has no effect.
  Value attributes(const Call& call) {
    return call.assigns() ? Value() : Value::long_integer(kArchive);
  }
  Value modified(const Call&) { return modified_date(place_); }
  Value remove(const Call&) {
    delete_file(place_.files(), place_.path);
    return {};
  }
  Value copy(const Call& call) {
    copy_file(place_.files(), place_.path, call.text(0), call.flag_or(1, true));
    return {};
  }
  Value move(const Call& call) {
    move_to(call.text(0));
    return {};
  }
  Value open(const Call& call) {
    const auto use = stream_use(call.number_or(0, 1));
    const TextFormat format = call.number_or(1, 0) == -1 ? TextFormat::Unicode : TextFormat::Ansi;
    return Value::object(make_ref<TextStream>(place_.system, place_.path, use, format));
  }
  void move_to(const std::string& goal) {
    move_file(place_.files(), place_.path, goal);
    place_.path =
        place_.files().is_folder(goal) ? joined_path(goal, file_name_of(place_.path)) : goal;
  }

  Place place_;
};

}  // namespace

Ref<Object> file_object(const FileSystem& system, const platform::Clock& clock,
                        const std::string& path) {
  const auto found = system.files->find(path);
  if (!found || system.files->is_folder(*found)) raise(errors::kFileNotFound);
  return make_ref<FileObject>(Place{system, &clock, *found});
}

Ref<Object> folder_object(const FileSystem& system, const platform::Clock& clock,
                          const std::string& path) {
  if (!system.files->is_folder(path)) raise(errors::kPathNotFound);
  return make_ref<FolderObject>(Place{system, &clock, system.files->find(path).value_or(path)});
}

}  // namespace rk::pagehost
