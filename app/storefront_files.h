// The demo storefront's files as they were when the program was built: what `rkclient new` writes.
// The code is made by cmake/storefront.cmake out of demo/. Constants; any thread.
#ifndef RK_APP_STOREFRONT_FILES_H_
#define RK_APP_STOREFRONT_FILES_H_

#include <span>
#include <string_view>

namespace rk::app {

struct StorefrontFile {
  std::string_view path;  // within the site folder, such as "host/index.asp"
  std::string_view bytes;
};

// In the order of their paths; data/*.sql among them, which fill the database in this order.
std::span<const StorefrontFile> storefront_files();

}  // namespace rk::app

#endif  // RK_APP_STOREFRONT_FILES_H_
