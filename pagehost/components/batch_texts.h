// The statements by which a batch of changed rows is stored: each row is named by its table's key
// and by what its changed columns held when they were read, so that a row that somebody else
// changed meanwhile is not found. Pure functions.
#ifndef RK_PAGEHOST_COMPONENTS_BATCH_TEXTS_H_
#define RK_PAGEHOST_COMPONENTS_BATCH_TEXTS_H_

#include <span>
#include <string>

#include "pagehost/components/row_changes.h"
#include "platform/columns.h"
#include "platform/database.h"

namespace rk::pagehost {

// The table that all writable columns are of; empty where there are none.
std::string batch_table(std::span<const platform::ColumnTraits> columns);

// `change` tells which columns are stored. Raise 3251 where there is no table to store to.
platform::SqlText insert_text(std::span<const platform::ColumnTraits> columns,
                              const RowValues& values, const RowChange& change);
platform::SqlText update_text(std::span<const platform::ColumnTraits> columns,
                              const RowValues& values, const RowChange& change);
platform::SqlText delete_text(std::span<const platform::ColumnTraits> columns,
                              const RowValues& values);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_BATCH_TEXTS_H_
