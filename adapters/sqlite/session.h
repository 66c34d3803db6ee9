// One page's use of one database file: all connections of the page to it share one engine
// connection, one view and one transaction. It knows the record sets that are open, because a
// write of the page must not change the rows they show, and a transaction must not wait for them.
// The page's thread.
#ifndef RK_ADAPTERS_SQLITE_SESSION_H_
#define RK_ADAPTERS_SQLITE_SESSION_H_

#include <memory>
#include <optional>
#include <vector>

#include "adapters/sqlite/database_file.h"
#include "adapters/sqlite/engine.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/row_buffer.h"
#include "adapters/sqlite/statement_values.h"

namespace rk::sqlite {

class Rowset;

// What all connections of a page have in common.
struct PageState {
  const platform::Clock& clock;
  PageHooks hooks;
};

class Session {
 public:
  Session(std::shared_ptr<const PageState> page, std::shared_ptr<DatabaseFile> file);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The first connection that is opened borrows the engine connection, the last that is closed
  // gives it back.
  void attach();
  void detach() noexcept;
  bool is_attached() const noexcept { return attached_ > 0; }

  Handle& handle() { return *handle_; }
  const DatabaseFile& file() const noexcept { return *file_; }
  const PageHooks& hooks() const noexcept { return page_->hooks; }
  const platform::Clock& clock() const noexcept { return page_->clock; }

  void begin_read() noexcept { ++read_depth_; }
  void end_read() noexcept;
  // The view begins with the first statement that reads in it.
  void enter_view();
  // Whether a scope of the page's is open, so that a statement may go on within it.
  bool in_scope() const noexcept { return read_depth_ > 0 && transactions_ == 0; }

  // A nested one is a part of the one around it.
  void begin_transaction();
  void commit_transaction();
  void roll_back_transaction() noexcept;
  bool in_transaction() const noexcept { return transactions_ > 0; }
  // Raises where the page has no transaction open.
  void check_transaction();

  void add(Rowset& set);
  void remove(Rowset& set) noexcept;
  // Lets every open record set read what it may still show. Raises.
  void settle_sets();
  void close_sets_of(const void* owner) noexcept;

  RowBuffer take_buffer();
  void give_buffer(RowBuffer buffer) noexcept;
  // The text read last and its values; their storage is used again.
  jetsql::Shape& shape() noexcept { return shape_; }
  RunValues& values() noexcept { return values_; }

 private:
  friend class Change;
  friend class Reading;

  void begin_writing();
  void end_writing(bool keep);
  void start_write(WriterQueue::TimePoint asked);
  void leave_queue() noexcept;
  // After a failure by which the engine gave up the whole transaction.
  void notice_lost_transaction() noexcept;
  void pause_sets() noexcept;

  std::shared_ptr<const PageState> page_;
  std::shared_ptr<DatabaseFile> file_;
  std::unique_ptr<Handle> handle_;
  int attached_ = 0;
  int read_depth_ = 0;
  int transactions_ = 0;
  bool queued_ = false;  // this page is the file's writer
  Rowset* sets_ = nullptr;
  std::vector<RowBuffer> buffers_;
  jetsql::Shape shape_;
  RunValues values_;
};

// A scope in which one or more statements read one view.
class Reading {
 public:
  explicit Reading(Session& session) : session_(session) {
    session_.begin_read();
    try {
      session_.enter_view();
    } catch (...) {
      session_.end_read();
      throw;
    }
  }
  ~Reading() { session_.end_read(); }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

 private:
  Session& session_;
};

// A scope in which statements write: a transaction of their own, or inside the page's. What was
// not kept is undone.
class Change {
 public:
  // `several` statements that are undone together; one alone the engine undoes itself.
  Change(Session& session, bool several);
  ~Change();
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;

  void keep();

 private:
  Session& session_;
  const bool inside_;
  const bool part_;
  bool done_ = false;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_SESSION_H_
