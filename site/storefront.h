// Where the current request belongs: the storefront's database, the template folder of the site
// that the visitor's host name stands for, and the folder of the running page.
#ifndef RK_SITE_STOREFRONT_H_
#define RK_SITE_STOREFRONT_H_

#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "site/page_context.h"

namespace rk::site {

// A connection of the caller's own, open with the application's Rk_ConnStr. Raises what the
// database raises where that names none.
std::unique_ptr<platform::Connection> open_database(const PageContext& page);

// A region of the page: `render` with a connection of its own, in one view of the database.
// OPTIMIZATION: what it asks on other connections of the page (its template's folder) is read in
// the same view of the same engine connection, whose begin and end cost as much as some statements.
template <class Render>
auto read_region(const PageContext& page, Render render) {
  const auto db = open_database(page);
  auto region = [&] {
    const platform::ReadScope one_view(*db);
    return render(*db);
  }();
  db->close();
  return region;
}

// "/Template/" + folder name + "/", of the agent whose domain the request's host is, else of the
// master site. A database failure and a row that is missing reach the page (3021).
std::string GetTempPath(const PageContext& page);

// The virtual folder of the running page, such as /host/; empty in the site's root.
std::string GetScriptPath(const PageContext& page);

// The agents whose domains may hold the host: a superset, of which GetTempPath picks.
platform::SqlText agents_of_host_sql(std::string_view host);

}  // namespace rk::site

#endif  // RK_SITE_STOREFRONT_H_
