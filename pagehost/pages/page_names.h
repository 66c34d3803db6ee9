// Names that a page may use without having declared them, beside the objects of the page: the
// constants of a type library that it asks for, and procedures that stand in a block of a language
// which is not served. Pure.
#ifndef RK_PAGEHOST_PAGES_PAGE_NAMES_H_
#define RK_PAGEHOST_PAGES_PAGE_NAMES_H_

#include <optional>
#include <string_view>

#include "pagehost/pages/page_cache.h"
#include "value/value.h"

namespace rk::pagehost {

// Nothing where the page knows no such name. A procedure that was left out is an object whose call
// raises 35 with a text that says why.
std::optional<Value> name_of_page(const CompiledPage& page, std::string_view name);
// A constant of the database objects' type library; for who asked for it.
std::optional<Value> type_library_constant(std::string_view name);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_NAMES_H_
