// Finds the database file that a connection string means, and says clearly why there is none.
//
// A relative name is taken from the site folder. The file must lie in the site folder or in one of
// the folders for data; letter case and "\" are as pages write them. An Access file stands for the
// converted database beside it. Several threads may call.
#ifndef RK_ADAPTERS_SQLITE_LOCATE_H_
#define RK_ADAPTERS_SQLITE_LOCATE_H_

#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/connection_string.h"
#include "platform/files.h"

namespace rk::sqlite {

struct Places {
  std::string site_folder;                // absolute
  std::vector<std::string> data_folders;  // absolute
};

// The file's path on the disk. Raises -2147467259.
std::string locate_database(const ConnectionString& connection, const Places& places,
                            const platform::Files& files);

// Whether a file begins as an Access database does; whether a path ends as one's name.
bool begins_as_access(std::string_view first_bytes) noexcept;
bool is_access_ending(std::string_view path);
// The path of the database that an Access file was converted into.
std::string converted_name(std::string_view path);

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_LOCATE_H_
