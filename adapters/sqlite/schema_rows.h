// The lists of a database's tables, columns, indexes and keys. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_SCHEMA_ROWS_H_
#define RK_ADAPTERS_SQLITE_SCHEMA_ROWS_H_

#include "adapters/sqlite/session.h"
#include "platform/columns.h"

namespace rk::sqlite {

// As the page sees them now, in its transaction where it has one. The engine's own tables are left
// out. Raises the engine's errors.
platform::SchemaRows schema_rows(Session& session, platform::SchemaList list);

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_SCHEMA_ROWS_H_
