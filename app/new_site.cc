#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "adapters/sqlite/script.h"
#include "app/commands.h"
#include "app/program.h"
#include "app/schema.h"
#include "app/storefront_files.h"

namespace rk::app {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDatabase = "data/shop.db";

bool fills_database(const StorefrontFile& file) {
  return file.path.starts_with("data/") && file.path.ends_with(".sql");
}

// Makes the folder where it is not there; one that holds anything is somebody's.
void claim(const fs::path& folder) {
  if (fs::exists(folder)) {
    if (!fs::is_directory(folder)) throw CommandFailure(folder.string() + " is no folder");
    if (!fs::is_empty(folder)) throw CommandFailure(folder.string() + " is not empty");
  }
  std::error_code failure;
  fs::create_directories(folder, failure);
  if (failure) throw CommandFailure("cannot make " + folder.string());
}

void write_file(const fs::path& path, std::string_view bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw CommandFailure("cannot write " + path.string());
}

void write_site(const fs::path& folder) {
  std::string script = schema_ddl(SchemaEngine::Sqlite);
  for (const StorefrontFile& file : storefront_files()) {
    if (fills_database(file)) {
      script.append(file.bytes);
    } else {
      write_file(folder / file.path, file.bytes);
    }
  }
  sqlite::run_script((folder / kDatabase).string(), script);
}

void clear(const fs::path& folder) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    fs::remove_all(entry.path(), ignored);
  }
}

}  // namespace

int new_site(const std::string& folder) {
  claim(folder);
  try {
    write_site(folder);
  } catch (const std::exception&) {
    // Half a site would be refused by the next try.
    clear(folder);
    throw;
  }
  print("made a storefront in " + folder + "; rkclient serve " + folder + " shows it\n");
  return kDone;
}

}  // namespace rk::app
