// Template files and their cache in the application's store.
//
// An entry is named "Rk_Tp_" + the file's virtual path and holds the file's whole text; it lives
// as long as the application. Many pages share the cache: each store is made under the
// application's lock, reads take none.
#ifndef RK_SITE_TEMPLATE_CACHE_H_
#define RK_SITE_TEMPLATE_CACHE_H_

#include <string_view>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::site {

// Reads a template file into the cache. "Not File!" where it cannot be opened, else Empty.
Value loadfile(const PageContext& page, const Value& filename);
// Makes sure that the cache holds a file; one that is missing or empty is tried again each time.
void loadfile_fromcache(const PageContext& page, const Value& filename);
// Reads a template file again, whatever the cache holds. Raises what reading the file raises.
void update_cache(const PageContext& page, const Value& filename);

// The text of a file of the request's template folder, through the cache; empty where the file is
// missing. The handle shares the cache's own text.
Text template_text(const PageContext& page, std::string_view file);

}  // namespace rk::site

#endif  // RK_SITE_TEMPLATE_CACHE_H_
