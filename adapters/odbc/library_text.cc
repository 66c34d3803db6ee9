#include "adapters/odbc/library_text.h"

#include "adapters/odbc/failure.h"

namespace rk::odbc {

Query library_query(Session& session, const platform::SqlText& /*sql*/) {
  raise_unsupported("The library's own SQL texts are not written for " +
                    session.link().engine_name() + " over ODBC");
}

}  // namespace rk::odbc
