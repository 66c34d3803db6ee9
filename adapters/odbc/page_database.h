// What a page works with: its connections, which share one session per data source. The page's
// thread.
#ifndef RK_ADAPTERS_ODBC_PAGE_DATABASE_H_
#define RK_ADAPTERS_ODBC_PAGE_DATABASE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/odbc/engine.h"
#include "adapters/odbc/query.h"
#include "adapters/odbc/session.h"
#include "adapters/odbc/trace.h"
#include "platform/database.h"

namespace rk::odbc {

// Who wrote the texts of a connection: the library's are Jet's on every engine and are written anew
// for it, a page's go as they stand.
enum class Author : std::uint8_t { Library, Page };

// The sessions of a page. Connections hold it, so that one may outlive the page's Database.
class PageSessions {
 public:
  PageSessions(Engine& engine, PageHooks hooks);
  std::shared_ptr<Session> session(std::string_view connection_string);

 private:
  Engine& engine_;
  std::shared_ptr<const PageHooks> hooks_;
  std::vector<std::shared_ptr<Session>> sessions_;
};

class PageDatabase final : public platform::Database {
 public:
  PageDatabase(Engine& engine, PageHooks hooks);
  std::unique_ptr<platform::Connection> connection() override;
  std::unique_ptr<platform::Connection> page_connection() override;

 private:
  std::shared_ptr<PageSessions> sessions_;
};

class PageConnection final : public platform::Connection {
 public:
  PageConnection(std::shared_ptr<PageSessions> sessions, Author author);
  ~PageConnection() override;
  PageConnection(const PageConnection&) = delete;
  PageConnection& operator=(const PageConnection&) = delete;

  void open(std::string_view connection_string) override;
  void close() override;
  bool is_open() const override { return session_ != nullptr; }

  std::unique_ptr<platform::Recordset> execute(const platform::SqlText& sql,
                                               std::int64_t* affected) override;
  std::unique_ptr<platform::Recordset> open_recordset(const platform::SqlText& sql,
                                                      platform::CursorType cursor,
                                                      platform::LockType lock) override;
  using Connection::execute;
  using Connection::open_recordset;

  platform::SchemaRows schema(platform::SchemaList list) override;

  // Each statement sees what was committed before it: a view for several is the data source's own
  // affair (its isolation level).
  void begin_read() override;
  void end_read() noexcept override {}
  void begin_transaction() override;
  void commit_transaction() override;
  void roll_back_transaction() override;

 private:
  Session& session() const;  // raises 3704
  Query query_of(const platform::SqlText& sql);
  template <class Work>
  auto watching_schema(Work work) -> decltype(work());
  std::unique_ptr<platform::Recordset> ran(Query query, std::int64_t* affected,
                                           std::unique_ptr<Trace> trace);
  std::unique_ptr<platform::Recordset> prepared(Query query, platform::CursorType cursor,
                                                platform::LockType lock,
                                                std::unique_ptr<Trace> trace);
  void shut() noexcept;

  std::shared_ptr<PageSessions> sessions_;
  std::shared_ptr<Session> session_;  // null while it is closed
  const Author author_;
  bool owns_transaction_ = false;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_PAGE_DATABASE_H_
