#include "catalogue/style_block.h"

#include <utility>

#include "site/tags.h"
#include "value/conversions.h"

namespace rk::catalogue {

std::string_view style_block(std::string_view file, std::string_view start, std::string_view end,
                             const Value& style) {
  const Text name = joined_text(style);
  const auto marker = [&](std::string_view begin) {
    return std::string(begin).append(name.view()).append("-->");
  };
  return site::cut(file, marker(start), marker(end));
}

std::unique_ptr<platform::Recordset> row_if_any(platform::Connection& db, std::string sql) {
  auto rows = db.execute(std::move(sql));
  if (!rows->eof()) return rows;
  rows->close();
  return nullptr;
}

}  // namespace rk::catalogue
