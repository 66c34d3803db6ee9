// What a page works with: its connections, which share one session per file. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_PAGE_DATABASE_H_
#define RK_ADAPTERS_SQLITE_PAGE_DATABASE_H_

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/sqlite/engine.h"
#include "adapters/sqlite/session.h"
#include "adapters/sqlite/trace.h"
#include "platform/database.h"

namespace rk::sqlite {

// The sessions of a page. Connections hold it, so that one may outlive the page's Database.
class PageSessions {
 public:
  PageSessions(Engine& engine, PageHooks hooks);
  // Raises -2147467259.
  std::shared_ptr<Session> session(std::string_view connection_string);

 private:
  std::shared_ptr<Session> session_of_file(std::shared_ptr<DatabaseFile> file);

  Engine& engine_;
  std::shared_ptr<const PageState> state_;
  std::vector<std::pair<std::string, std::shared_ptr<Session>>> sessions_;
};

class PageDatabase final : public platform::Database {
 public:
  PageDatabase(Engine& engine, PageHooks hooks);
  std::unique_ptr<platform::Connection> connection() override;

 private:
  std::shared_ptr<PageSessions> sessions_;
};

class PageConnection final : public platform::Connection {
 public:
  explicit PageConnection(std::shared_ptr<PageSessions> sessions);
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

  void begin_read() override;
  void end_read() noexcept override;
  void begin_transaction() override;
  void commit_transaction() override;
  void roll_back_transaction() override;

 private:
  Session& session() const;  // raises 3704
  Ref<Plan> plan_of(const platform::SqlText& sql, RunValues& values);
  std::unique_ptr<platform::Recordset> opened(Ref<Plan> plan, RunValues& values,
                                              platform::CursorType cursor, platform::LockType lock,
                                              std::unique_ptr<TraceEntry> trace);
  std::int64_t write(const platform::SqlText& sql, RunValues& values);
  void shut() noexcept;

  std::shared_ptr<PageSessions> sessions_;
  std::shared_ptr<Session> session_;  // null while it is closed
  int read_scopes_ = 0;
  int transactions_ = 0;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_PAGE_DATABASE_H_
