#include "adapters/odbc/page_database.h"

#include <utility>

#include "adapters/odbc/failure.h"
#include "adapters/odbc/forward_recordset.h"
#include "adapters/odbc/held_recordset.h"
#include "adapters/odbc/library_text.h"
#include "adapters/odbc/schema_rows.h"
#include "jetsql/translate.h"
#include "value/script_error.h"

namespace rk::odbc {
namespace {

using platform::CursorType;
using platform::LockType;
using platform::SqlText;

void check_outside(const SqlText& sql) {
  try {
    for (const SqlText::Stretch& stretch : sql.outside()) {
      jetsql::check_outside(sql.text(), stretch.begin, stretch.end);
    }
  } catch (const jetsql::SqlError& error) {  // passed on as the page's error
    raise_database_error(static_cast<std::int32_t>(error.number()), error.what());
  }
}

}  // namespace

PageSessions::PageSessions(Engine& engine, PageHooks hooks)
    : engine_(engine), hooks_(std::make_shared<const PageHooks>(std::move(hooks))) {}

std::shared_ptr<Session> PageSessions::session(std::string_view connection_string) {
  for (const auto& known : sessions_) {
    if (known->connection_string() == connection_string) return known;
  }
  return sessions_.emplace_back(
      std::make_shared<Session>(engine_, hooks_, std::string(connection_string)));
}

PageDatabase::PageDatabase(Engine& engine, PageHooks hooks)
    : sessions_(std::make_shared<PageSessions>(engine, std::move(hooks))) {}

std::unique_ptr<platform::Connection> PageDatabase::connection() {
  return std::make_unique<PageConnection>(sessions_, Author::Library);
}

std::unique_ptr<platform::Connection> PageDatabase::page_connection() {
  return std::make_unique<PageConnection>(sessions_, Author::Page);
}

PageConnection::PageConnection(std::shared_ptr<PageSessions> sessions, Author author)
    : sessions_(std::move(sessions)), author_(author) {}

PageConnection::~PageConnection() {
  shut();
}

void PageConnection::open(std::string_view connection_string) {
  if (session_ != nullptr) raise(errors::kObjectOpen);
  auto session = sessions_->session(connection_string);
  session->attach();
  session_ = std::move(session);
}

void PageConnection::close() {
  session();
  shut();
}

void PageConnection::shut() noexcept {
  if (session_ == nullptr) return;
  session_->close_sets_of(this);
  if (std::exchange(owns_transaction_, false)) session_->undo();
  session_->detach();
  session_ = nullptr;
}

Session& PageConnection::session() const {
  if (session_ == nullptr) raise(errors::kObjectClosed);
  return *session_;
}

Query PageConnection::query_of(const SqlText& sql) {
  check_outside(sql);
  if (author_ == Author::Library) return library_query(*session_, sql);
  Query query;
  query.sql = sql.text();
  query.values = sql.values();
  return query;
}

// Where a table or column is missing, what is known of the tables may be old.
template <class Work>
auto PageConnection::watching_schema(Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const ScriptError& error) {  // passed on
    const bool missing =
        error.number() == errors::kSqlMissingTable || error.number() == errors::kSqlMissingColumn;
    if (missing && session_ != nullptr) session_->catalogue().forget();
    throw;
  }
}

std::unique_ptr<platform::Recordset> PageConnection::execute(const SqlText& sql,
                                                             std::int64_t* affected) {
  Session& session = this->session();
  auto trace = Trace::begin(session.hooks(), sql.text());
  return watching_schema([&] { return ran(query_of(sql), affected, std::move(trace)); });
}

std::unique_ptr<platform::Recordset> PageConnection::ran(Query query, std::int64_t* affected,
                                                         std::unique_ptr<Trace> trace) {
  const Trace::Timing timing(trace.get());
  auto statement = session_->statement();
  statement->run(query.sql, query.values);
  const bool gives_rows = statement->find_rows();
  if (affected != nullptr) *affected = gives_rows ? 0 : statement->changed();
  if (gives_rows) {
    return std::make_unique<ForwardRecordset>(*session_, this, std::move(query),
                                              std::move(statement), std::move(trace));
  }
  if (trace != nullptr) trace->add_rows(statement->changed());
  return nullptr;
}

std::unique_ptr<platform::Recordset> PageConnection::open_recordset(const SqlText& sql,
                                                                    CursorType cursor,
                                                                    LockType lock) {
  Session& session = this->session();
  auto trace = Trace::begin(session.hooks(), sql.text());
  return watching_schema([&]() -> std::unique_ptr<platform::Recordset> {
    Query query = query_of(sql);
    if (cursor == CursorType::ForwardOnly && lock == LockType::ReadOnly) {
      return ran(std::move(query), nullptr, std::move(trace));
    }
    return prepared(std::move(query), cursor, lock, std::move(trace));
  });
}

// The engine reads the text at once, so that one that cannot run fails here; it runs where the
// driver says nothing of its columns before.
std::unique_ptr<platform::Recordset> PageConnection::prepared(Query query, CursorType cursor,
                                                              LockType lock,
                                                              std::unique_ptr<Trace> trace) {
  const Trace::Timing timing(trace.get());
  auto statement = session_->statement();
  statement->prepare(query.sql);
  const bool has_run = statement->columns().empty();
  if (has_run) {
    statement->run_prepared(query.values);
    if (!statement->find_rows()) {
      if (trace != nullptr) trace->add_rows(statement->changed());
      return nullptr;
    }
  }
  return std::make_unique<HeldRecordset>(*session_, this, std::move(query), std::move(statement),
                                         has_run, cursor, lock, std::move(trace));
}

platform::SchemaRows PageConnection::schema(platform::SchemaList list) {
  return schema_rows(session(), list);
}

void PageConnection::begin_read() {
  session();
}

void PageConnection::begin_transaction() {
  session().begin_transaction();
  owns_transaction_ = true;
}

void PageConnection::commit_transaction() {
  session().commit_transaction();
  owns_transaction_ = false;
}

void PageConnection::roll_back_transaction() {
  session().roll_back_transaction();
  owns_transaction_ = false;
}

}  // namespace rk::odbc
