// The components that pages of any site create by their common names: database objects, the
// dictionary, the file system object, HTTP requests, XML documents. For the program's wiring.
#ifndef RK_PAGEHOST_COMPONENTS_COMPONENTS_H_
#define RK_PAGEHOST_COMPONENTS_COMPONENTS_H_

#include <functional>
#include <memory>

#include "pagehost/pages/programs.h"
#include "platform/http.h"
#include "platform/xml.h"

namespace rk::pagehost {

// What some components stand on. Those whose part is missing are not served.
struct ComponentParts {
  // A client for what one page sends.
  std::function<std::shared_ptr<platform::HttpClient>(PageServices& page)> http;
  const platform::Xml* xml = nullptr;  // outlives the host
};

// Before the first page.
void add_components(Programs& programs, const ComponentParts& parts = {});

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_COMPONENTS_H_
