// The collections of the Request object, as scripts walk them: values by name, each name with the
// values that were given under it; cookies with their keys; server variables.
#ifndef RK_PAGEHOST_PAGES_REQUEST_COLLECTIONS_H_
#define RK_PAGEHOST_PAGES_REQUEST_COLLECTIONS_H_

#include <cstdint>
#include <memory>
#include <string_view>

#include "pagehost/pages/request.h"
#include "value/object.h"

namespace rk::pagehost {

enum class RequestPart : std::uint8_t { Query, Form, Cookies, ServerVariables, None };

// The whole collection. Its plain value is the text as it was sent.
Ref<Object> request_collection(std::shared_ptr<RequestView> request, RequestPart part);
// What a collection answers for a name: an object whose plain value is the values joined with
// ", " (Empty where there are none).
Value request_values(const NameValues::Entry* entry);
Value request_cookie(RequestView& request, std::string_view name);
Value request_variable(RequestView& request, std::string_view name);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_REQUEST_COLLECTIONS_H_
