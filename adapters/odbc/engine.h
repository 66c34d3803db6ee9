// The data sources of a process: the driver manager and the connections that pages borrow.
//
// app/ makes one Engine and asks it for one Database a page that names a data source of ODBC. The
// driver manager is loaded with the first of them: a site that never does pays nothing. Any thread
// may call the Engine, which outlives its pages; what page() gives belongs to the page's thread.
#ifndef RK_ADAPTERS_ODBC_ENGINE_H_
#define RK_ADAPTERS_ODBC_ENGINE_H_

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/odbc/canceller.h"
#include "adapters/odbc/catalogue.h"
#include "adapters/odbc/hooks.h"
#include "adapters/odbc/link.h"
#include "platform/database.h"

namespace rk::odbc {

class Engine {
 public:
  Engine() = default;
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  std::unique_ptr<platform::Database> page(PageHooks hooks = {});

  // One that waits, or a new one. Raises the driver's errors.
  std::unique_ptr<Link> borrow(std::string_view connection_string);
  void give_back(std::unique_ptr<Link> link) noexcept;
  std::shared_ptr<Catalogue> catalogue(const std::string& connection_string);

 private:
  std::unique_ptr<Link> waiting(std::string_view connection_string);
  void* environment();

  std::mutex mutex_;
  void* environment_ = nullptr;
  Canceller canceller_;
  std::vector<std::unique_ptr<Link>> idle_;
  std::unordered_map<std::string, std::shared_ptr<Catalogue>> catalogues_;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_ENGINE_H_
