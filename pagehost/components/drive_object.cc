#include "pagehost/components/drive_object.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <system_error>
#include <utility>

#include "pagehost/components/file_objects.h"
#include "pagehost/components/file_paths.h"
#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kFixedDisk = 2;

class DriveObject final : public TabledObject<DriveObject> {
 public:
  explicit DriveObject(DrivePlace place) : place_(std::move(place)) {}
  std::string_view type_name() const override { return "Drive"; }
  static std::span<const Member<DriveObject>> members() {
    using D = DriveObject;
    static constexpr Member<D> kMembers[] = {
        {"Path", &D::path},           {"DriveLetter", &D::nothing}, {"DriveType", &D::type},
        {"FileSystem", &D::nothing},  {"ShareName", &D::nothing},   {"VolumeName", &D::nothing},
        {"SerialNumber", &D::serial}, {"IsReady", &D::is_ready},    {"TotalSize", &D::total},
        {"FreeSpace", &D::free},      {"AvailableSpace", &D::free}, {"RootFolder", &D::root},
    };
    return kMembers;
  }

 private:
  Value path(const Call&) { return Value::text("/"); }
  Value nothing(const Call&) { return Value::text(""); }
  Value type(const Call&) { return Value::long_integer(kFixedDisk); }
  Value serial(const Call&) { return Value::long_integer(0); }
  Value is_ready(const Call&) { return Value::boolean(true); }
  Value total(const Call&) { return Value::real(static_cast<double>(space().capacity)); }
  Value free(const Call&) { return Value::real(static_cast<double>(space().available)); }
  // The site's folder: what is above it is not seen.
  Value root(const Call&) {
    std::string top = place_.folder;
    for (std::string up = top; place_.system.files->is_folder(up); up = parent_folder_of(up)) {
      top = up;
    }
    return Value::object(folder_object(place_.system, *place_.clock, top));
  }
  // Zeros where the system does not tell.
  std::filesystem::space_info space() const {
    std::error_code error;
    const std::filesystem::space_info info = std::filesystem::space(place_.folder, error);
    return error ? std::filesystem::space_info{0, 0, 0} : info;
  }

  DrivePlace place_;
};

class OneDrive final : public Enumeration {
 public:
  explicit OneDrive(Ref<Object> drive) : drive_(std::move(drive)) {}
  bool next(Value& item) override {
    if (!drive_) return false;
    item = Value::object(std::exchange(drive_, nullptr));
    return true;
  }

 private:
  Ref<Object> drive_;
};

class DrivesObject final : public TabledObject<DrivesObject> {
 public:
  explicit DrivesObject(DrivePlace place) : place_(std::move(place)) {}
  std::string_view type_name() const override { return "Drives"; }
  static std::span<const Member<DrivesObject>> members() {
    static constexpr Member<DrivesObject> kMembers[] = {
        {"Item", &DrivesObject::item, 1, 1},
        {"Count", &DrivesObject::count},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    return std::make_unique<OneDrive>(drive_object(place_));
  }

 private:
  Value item(const Call&) { return Value::object(drive_object(place_)); }
  Value count(const Call&) { return Value::long_integer(1); }

  DrivePlace place_;
};

}  // namespace

Ref<Object> drive_object(const DrivePlace& place) {
  return make_ref<DriveObject>(place);
}

Ref<Object> drives_object(const DrivePlace& place) {
  return make_ref<DrivesObject>(place);
}

}  // namespace rk::pagehost
