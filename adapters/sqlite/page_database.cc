#include "adapters/sqlite/page_database.h"

#include <algorithm>
#include <utility>

#include "adapters/sqlite/database_file.h"
#include "adapters/sqlite/failure.h"
#include "adapters/sqlite/forward_recordset.h"
#include "adapters/sqlite/paged_recordset.h"
#include "adapters/sqlite/schema_rows.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

using platform::CursorType;
using platform::LockType;
using platform::SqlText;
using Kind = jetsql::Translation::Kind;

void check_outside(const SqlText& sql) {
  try {
    for (const SqlText::Stretch& stretch : sql.outside()) {
      jetsql::check_outside(sql.text(), stretch.begin, stretch.end);
    }
  } catch (const jetsql::SqlError& error) {
    raise_failure(error);
  }
}

bool changes_schema(const jetsql::Translation& translation) {
  return translation.kind == Kind::Define || translation.kind == Kind::SelectInto;
}

}  // namespace

PageSessions::PageSessions(Engine& engine, PageHooks hooks)
    : engine_(engine),
      state_(std::make_shared<const PageState>(PageState{engine.clock(), std::move(hooks)})) {}

std::shared_ptr<Session> PageSessions::session(std::string_view connection_string) {
  for (auto& [text, known] : sessions_) {
    if (text != connection_string) continue;
    // While a connection is open the page stays with the file it opened.
    if (known->is_attached() || known->file().is_current()) return known;
    known = session_of_file(engine_.file(connection_string));
    return known;
  }
  auto made = session_of_file(engine_.file(connection_string));
  sessions_.emplace_back(connection_string, made);
  return made;
}

// Two spellings of one file are one session, or a page could wait for itself.
std::shared_ptr<Session> PageSessions::session_of_file(std::shared_ptr<DatabaseFile> file) {
  for (const auto& [text, known] : sessions_) {
    if (&known->file() == file.get()) return known;
  }
  return std::make_shared<Session>(state_, std::move(file));
}

PageDatabase::PageDatabase(Engine& engine, PageHooks hooks)
    : sessions_(std::make_shared<PageSessions>(engine, std::move(hooks))) {}

std::unique_ptr<platform::Connection> PageDatabase::connection() {
  return std::make_unique<PageConnection>(sessions_);
}

PageConnection::PageConnection(std::shared_ptr<PageSessions> sessions)
    : sessions_(std::move(sessions)) {}

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
  for (; transactions_ > 0; --transactions_) session_->roll_back_transaction();
  for (; read_scopes_ > 0; --read_scopes_) session_->end_read();
  session_->detach();
  session_ = nullptr;
}

Session& PageConnection::session() const {
  if (session_ == nullptr) raise(errors::kObjectClosed);
  return *session_;
}

// The plan of a text and the values that it is run with. In a scope of the session.
Ref<Plan> PageConnection::plan_of(const SqlText& sql, RunValues& values) {
  jetsql::Shape& shape = session_->shape();
  jetsql::read_shape(sql.text(), shape);
  Ref<Plan> plan = session_->handle().plan(sql.text(), shape);
  std::swap(values.literals, shape.literals);
  values.bound = sql.values();
  if (plan->asks_clock) values.now = session_->clock().now();
  return plan;
}

std::unique_ptr<platform::Recordset> PageConnection::execute(const SqlText& sql,
                                                             std::int64_t* affected) {
  Session& session = this->session();
  TraceScope trace(session, sql.text());
  check_outside(sql);
  RunValues& values = session.values();
  {
    const Reading reading(session);
    Ref<Plan> plan = plan_of(sql, values);
    if (plan->translation.reads()) {
      if (affected != nullptr) *affected = 0;
      return std::make_unique<ForwardRecordset>(session, this, std::move(plan), values,
                                                trace.hand_over());
    }
  }
  const std::int64_t rows = write(sql, values);
  if (affected != nullptr) *affected = rows;
  trace.note_rows(rows);
  return nullptr;
}

std::int64_t PageConnection::write(const SqlText& sql, RunValues& values) {
  Handle& handle = session_->handle();
  Change change(*session_, true);
  // The plan is looked up again: the tables may have changed before the transaction began.
  const Ref<Plan> plan = plan_of(sql, values);
  const jetsql::Translation& translation = plan->translation;
  for (std::size_t i = 0; i < translation.statements.size(); ++i) {
    const Lease lease = handle.lease(plan, i);
    bind_values(lease.statement(), translation.parameters, values);
    while (handle.step(lease.statement())) {
    }
  }
  const std::int64_t rows = translation.kind == Kind::Define ? 0 : handle.changes();
  if (changes_schema(translation)) handle.forget_schema();
  change.keep();
  return rows;
}

std::unique_ptr<platform::Recordset> PageConnection::open_recordset(const SqlText& sql,
                                                                    CursorType cursor,
                                                                    LockType lock) {
  Session& session = this->session();
  TraceScope trace(session, sql.text());
  check_outside(sql);
  RunValues& values = session.values();
  {
    const Reading reading(session);
    Ref<Plan> plan = plan_of(sql, values);
    if (plan->translation.reads()) {
      return opened(std::move(plan), values, cursor, lock, trace.hand_over());
    }
  }
  trace.note_rows(write(sql, values));
  return nullptr;
}

std::unique_ptr<platform::Recordset> PageConnection::opened(Ref<Plan> plan, RunValues& values,
                                                            CursorType cursor, LockType lock,
                                                            std::unique_ptr<TraceEntry> trace) {
  if (cursor == CursorType::ForwardOnly && lock == LockType::ReadOnly) {
    return std::make_unique<ForwardRecordset>(*session_, this, std::move(plan), values,
                                              std::move(trace));
  }
  return std::make_unique<PagedRecordset>(*session_, this, std::move(plan), std::move(values),
                                          cursor, lock, std::move(trace));
}

platform::SchemaRows PageConnection::schema(platform::SchemaList list) {
  return schema_rows(session(), list);
}

void PageConnection::begin_read() {
  session().begin_read();
  ++read_scopes_;
}

void PageConnection::end_read() noexcept {
  if (session_ == nullptr || read_scopes_ == 0) return;
  --read_scopes_;
  session_->end_read();
}

void PageConnection::begin_transaction() {
  session().begin_transaction();
  ++transactions_;
}

void PageConnection::commit_transaction() {
  Session& session = this->session();
  session.check_transaction();
  if (transactions_ > 0) --transactions_;
  session.commit_transaction();
}

void PageConnection::roll_back_transaction() {
  Session& session = this->session();
  session.check_transaction();
  // Walks go on with the rows that were there.
  session.settle_sets();
  if (transactions_ > 0) --transactions_;
  session.roll_back_transaction();
}

}  // namespace rk::sqlite
