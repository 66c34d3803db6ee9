#include "adapters/odbc/engine.h"

#include <sql.h>
#include <sqlext.h>

#include <utility>

#include "adapters/odbc/failure.h"
#include "adapters/odbc/page_database.h"

namespace rk::odbc {
namespace {

// Connections that wait for the next page: as many as pages run at once on a small machine.
constexpr std::size_t kMostIdle = 16;
// One that waited longer is closed: servers and firewalls drop what is silent.
constexpr std::chrono::seconds kIdleTime{60};
// Data sources whose tables are remembered: a site has one or two, but a page may build its own
// connection strings.
constexpr std::size_t kKnownSources = 64;

}  // namespace

Engine::~Engine() {
  idle_.clear();
  if (environment_ != nullptr) SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

std::unique_ptr<platform::Database> Engine::page(PageHooks hooks) {
  return std::make_unique<PageDatabase>(*this, std::move(hooks));
}

void* Engine::environment() {
  const std::lock_guard lock(mutex_);
  if (environment_ != nullptr) return environment_;
  void* made = nullptr;
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &made))) {
    raise_failure({"", "The ODBC driver manager cannot be started"});
  }
  SQLSetEnvAttr(made, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  environment_ = made;
  return made;
}

std::unique_ptr<Link> Engine::waiting(std::string_view connection_string) {
  std::vector<std::unique_ptr<Link>> old;  // closed behind the lock
  const std::lock_guard lock(mutex_);
  const auto now = std::chrono::steady_clock::now();
  std::unique_ptr<Link> found;
  for (auto place = idle_.end(); place != idle_.begin();) {
    --place;
    const bool asked = found == nullptr && (*place)->connection_string() == connection_string;
    const bool stale = now - (*place)->idle_since > kIdleTime;
    if (!asked && !stale) continue;
    (asked && !stale ? found : old.emplace_back()) = std::move(*place);
    place = idle_.erase(place);
  }
  return found;
}

std::unique_ptr<Link> Engine::borrow(std::string_view connection_string) {
  while (auto link = waiting(connection_string)) {
    if (link->is_alive()) return link;
  }
  return std::make_unique<Link>(environment(), canceller_, std::string(connection_string));
}

void Engine::give_back(std::unique_ptr<Link> link) noexcept {
  if (link->is_lost()) return;
  link->idle_since = std::chrono::steady_clock::now();
  std::unique_ptr<Link> oldest;  // closed behind the lock
  const std::lock_guard lock(mutex_);
  if (idle_.size() >= kMostIdle) {
    oldest = std::move(idle_.front());
    idle_.erase(idle_.begin());
  }
  idle_.push_back(std::move(link));
}

std::shared_ptr<Catalogue> Engine::catalogue(const std::string& connection_string) {
  const std::lock_guard lock(mutex_);
  if (catalogues_.size() >= kKnownSources) catalogues_.clear();
  auto& known = catalogues_[connection_string];
  if (known == nullptr) known = std::make_shared<Catalogue>();
  return known;
}

}  // namespace rk::odbc
