// The lists of a data source's tables, columns, indexes and keys. The page's thread.
#ifndef RK_ADAPTERS_ODBC_SCHEMA_ROWS_H_
#define RK_ADAPTERS_ODBC_SCHEMA_ROWS_H_

#include "adapters/odbc/session.h"
#include "platform/columns.h"

namespace rk::odbc {

// As far as the driver lists them; raises its errors.
platform::SchemaRows schema_rows(Session& session, platform::SchemaList list);

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_SCHEMA_ROWS_H_
