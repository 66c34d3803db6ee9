// The library's own texts over ODBC: they are Jet's on every engine, and written anew for it. The
// page's thread.
#ifndef RK_ADAPTERS_ODBC_LIBRARY_TEXT_H_
#define RK_ADAPTERS_ODBC_LIBRARY_TEXT_H_

#include "adapters/odbc/query.h"
#include "adapters/odbc/session.h"
#include "platform/database.h"

namespace rk::odbc {

// Raises the numbers of errors::kSql... for what Jet refuses, and 3251 for an engine whose SQL this
// adapter does not write.
Query library_query(Session& session, const platform::SqlText& sql);

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_LIBRARY_TEXT_H_
