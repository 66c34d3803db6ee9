#include "app/host_owners.h"

#include <algorithm>
#include <memory>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::app {
namespace {

std::unique_ptr<platform::Recordset> rows_of(platform::Connection& connection, const char* sql) {
  return connection.open_recordset(sql, platform::CursorType::ForwardOnly,
                                   platform::LockType::ReadOnly);
}

std::string text_of(platform::Recordset& rows) {
  std::string text;
  rows.append_field_text(0, text);
  return text;
}

bool lists(std::string_view domains, std::string_view host) {
  while (true) {
    const std::size_t end = std::min(domains.find(','), domains.size());
    if (domains.substr(0, end) == host) return true;
    if (end == domains.size()) return false;
    domains.remove_prefix(end + 1);
  }
}

}  // namespace

bool is_owned_host(std::string_view host, platform::Connection& connection) {
  const std::string lowered = lowered_ascii(host);
  const auto site = rows_of(connection, "Select [SiteDomain] From [SysTem]");
  if (!site->eof()) {
    const std::string domain = text_of(*site);
    if (domain.empty() || domain.find(lowered) != std::string::npos) return true;
  }
  const auto agents = rows_of(connection, "Select [AgentDomain] From [Rk_AgentSet]");
  for (; !agents->eof(); agents->move_next()) {
    if (lists(lowered_ascii(text_of(*agents)), lowered)) return true;
  }
  return false;
}

void HostOwners::note(std::string_view host, platform::Database& database,
                      std::string_view connection_string) {
  {
    const std::lock_guard lock(mutex_);
    if (seen_.size() >= kMaxHosts || !seen_.emplace(host).second) return;
  }
  try {
    const std::unique_ptr<platform::Connection> connection = database.connection();
    connection->open(connection_string);
    if (is_owned_host(host, *connection)) return;
  } catch (const ScriptError&) {
    const std::lock_guard lock(mutex_);
    seen_.erase(std::string(host));
    return;
  }
  log_.note("host \"" + std::string(host) +
            "\" is neither the master site's nor an agent's; it is shown the master site");
}

}  // namespace rk::app
