#include "adapters/sqlite/locate.h"

#include <filesystem>
#include <optional>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::sqlite {
namespace {

constexpr std::string_view kJetMark("\0\1\0\0Standard Jet DB", 19);
constexpr std::string_view kAceMark("\0\1\0\0Standard ACE DB", 19);

[[noreturn]] void refuse(const std::string& text) {
  raise_database_error(errors::kSqlFailure, text);
}

// Absolute, with "/" and without "." and "..".
std::string full_path(std::string_view name, const std::string& site_folder) {
  std::string path(name);
  for (char& c : path) {
    if (c == '\\') c = '/';
  }
  if (path.find('\0') != std::string::npos) refuse("Database file: the name holds a NUL");
  if (path.empty() || path.front() != '/') path = site_folder + "/" + path;
  return std::filesystem::path(path).lexically_normal().string();
}

bool lies_in(const std::string& path, std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return path.size() > folder.size() && path[folder.size()] == '/' &&
         equal_ignoring_case(std::string_view(path).substr(0, folder.size()), folder);
}

bool lies_inside(const std::string& path, const Places& places) {
  if (lies_in(path, places.site_folder)) return true;
  for (const std::string& folder : places.data_folders) {
    if (lies_in(path, folder)) return true;
  }
  return false;
}

bool is_access_file(const std::string& path, const platform::Files& files) {
  return begins_as_access(files.first_bytes(path, kJetMark.size()));
}

std::string converted_database(const std::string& path, const platform::Files& files) {
  const std::string converted = converted_name(path);
  if (auto found = files.find(converted)) return *found;
  refuse("Database file " + path +
         " is an Access database. Convert it once: export its tables (for example with the "
         "mdb-schema and mdb-export programs of mdbtools) into an SQLite database, and store that "
         "beside it as " +
         converted + "; pages need no change.");
}

std::string new_database(const std::string& path, const platform::Files& files) {
  const std::filesystem::path wanted(path);
  const auto folder = files.find(wanted.parent_path().string());
  if (!folder || !files.is_folder(*folder)) {
    refuse("Database file " + path + " cannot be made: its folder does not exist");
  }
  return (std::filesystem::path(*folder) / wanted.filename()).string();
}

}  // namespace

bool begins_as_access(std::string_view first_bytes) noexcept {
  return first_bytes.starts_with(kJetMark) || first_bytes.starts_with(kAceMark);
}

bool is_access_ending(std::string_view path) {
  const std::string ending = lowered_ascii(std::filesystem::path(path).extension().string());
  return ending == ".mdb" || ending == ".accdb";
}

std::string converted_name(std::string_view path) {
  return std::filesystem::path(path).replace_extension(".db").string();
}

std::string locate_database(const ConnectionString& connection, const Places& places,
                            const platform::Files& files) {
  const std::string path = full_path(connection.data_source, places.site_folder);
  if (!lies_inside(path, places)) {
    refuse("Database file " + path +
           " lies outside the site folder and the folders of the setting [data] folders");
  }
  if (const auto found = files.find(path)) {
    if (files.is_folder(*found)) refuse("Database file " + path + " is a folder");
    return is_access_file(*found, files) ? converted_database(*found, files) : *found;
  }
  if (is_access_ending(path)) return converted_database(path, files);
  if (connection.mode == OpenMode::Create) return new_database(path, files);
  refuse("Database file " + path + " does not exist (Mode=Create makes it)");
}

}  // namespace rk::sqlite
