// One page's use of one data source: all connections of the page to it share one link and one
// transaction, so that a page never waits for itself. It knows the record sets that are open. The
// page's thread.
#ifndef RK_ADAPTERS_ODBC_SESSION_H_
#define RK_ADAPTERS_ODBC_SESSION_H_

#include <memory>
#include <string>
#include <vector>

#include "adapters/odbc/catalogue.h"
#include "adapters/odbc/hooks.h"
#include "adapters/odbc/link.h"
#include "adapters/odbc/statement.h"

namespace rk::odbc {

class Engine;
class Rowset;

class Session {
 public:
  Session(Engine& engine, std::shared_ptr<const PageHooks> hooks, std::string connection_string);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  const std::string& connection_string() const noexcept { return connection_string_; }
  // The first connection that is opened borrows the link, the last that is closed gives it back.
  void attach();
  void detach() noexcept;

  Link& link() { return *link_; }
  Catalogue& catalogue() { return *catalogue_; }
  const PageHooks& hooks() const noexcept { return *hooks_; }
  // Before a statement is sent: reads what others have left where the driver reads only one.
  std::unique_ptr<Statement> statement();

  // Raises where one is open: data sources have none within another.
  void begin_transaction();
  void commit_transaction();
  void roll_back_transaction();  // raises where none is open
  void undo() noexcept;
  bool in_transaction() const noexcept { return in_transaction_; }

  void add(Rowset& set) { sets_.push_back(&set); }
  void remove(Rowset& set) noexcept;
  // Lets every open record set read what it may still show. Raises.
  void settle_sets();
  void close_sets_of(const void* owner) noexcept;

 private:
  void check_transaction() const;

  Engine& engine_;
  std::shared_ptr<const PageHooks> hooks_;
  const std::string connection_string_;
  const std::shared_ptr<Catalogue> catalogue_;
  std::unique_ptr<Link> link_;
  int attached_ = 0;
  bool in_transaction_ = false;
  std::vector<Rowset*> sets_;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_SESSION_H_
