// AdoServices: what the database objects of a page stand on, handed from each to those that it
// makes. Of the page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_ADO_SERVICES_H_
#define RK_PAGEHOST_COMPONENTS_ADO_SERVICES_H_

#include <functional>
#include <memory>
#include <utility>

#include "pagehost/components/xml_tree.h"
#include "platform/database.h"

namespace rk::pagehost {

struct RowFiles;

struct AdoServices {
  // Implicit: most of what is done with a database needs no more than it.
  template <class D>
  // NOLINTNEXTLINE(google-explicit-constructor)
  AdoServices(std::shared_ptr<D> given, std::shared_ptr<const RowFiles> row_files = nullptr)
      : database(std::move(given)), files(std::move(row_files)) {}

  std::shared_ptr<platform::Database> database;
  // Null: record sets are neither saved nor read back.
  std::shared_ptr<const RowFiles> files;
};

// What record sets need to be saved and read back.
struct RowFiles {
  XmlServices xml;
  // The same for another page.
  std::function<AdoServices(PageServices& page)> of_page;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ADO_SERVICES_H_
