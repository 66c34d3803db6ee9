// What the lists of the catalogue share around their rows: the block of a template file that a
// page's Style names, and an agent's own row for a product.
#ifndef RK_CATALOGUE_STYLE_BLOCK_H_
#define RK_CATALOGUE_STYLE_BLOCK_H_

#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "value/value.h"

namespace rk::catalogue {

// The part of `file` between `start` + style + "-->" and `end` + style + "-->"; empty where the
// file has no such block. Raises 13 for a style that is an array or an object without a text.
std::string_view style_block(std::string_view file, std::string_view start, std::string_view end,
                             const Value& style);

// The row that a lookup finds, or null (and the record set is closed) where it finds none.
std::unique_ptr<platform::Recordset> row_if_any(platform::Connection& db, std::string sql);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_STYLE_BLOCK_H_
