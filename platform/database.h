// The database as the library and the page host's components use it: connections and record sets
// with the rules that scripts of this kind know. Objects belong to one page's thread.
//
// SQL texts are read in the Jet dialect. Failures are ScriptErrors with the numbers of
// errors::kSql... and the engine's words, 3021, 3265, 3001, 3704, 3705, 3251.
#ifndef RK_PLATFORM_DATABASE_H_
#define RK_PLATFORM_DATABASE_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/columns.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::platform {

// The numbers are those that pages pass.
enum class CursorType : std::uint8_t { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType : std::uint8_t {
  ReadOnly = 1,
  Pessimistic = 2,
  Optimistic = 3,
  BatchOptimistic = 4
};

// A statement's text, with the stretches that came out of the visitor's request. Each of those must
// stay inside one quoted text or be one number, whatever it holds; the database refuses the
// statement unrun where one does not. And with the values that stand for its "?", in their order:
// what they hold is never read as SQL. Raises -2147217904 where there are fewer values than "?".
class SqlText {
 public:
  SqlText() = default;
  explicit SqlText(std::string text) : text_(std::move(text)) {}

  SqlText& add(std::string_view part) {
    text_.append(part);
    return *this;
  }
  // A value that the operation itself read from the request.
  SqlText& add_outside(std::string_view part) {
    outside_.push_back({text_.size(), text_.size() + part.size()});
    text_.append(part);
    return *this;
  }
  // The value of the next "?". Arrays of bytes are stored as they are.
  SqlText& bind(Value value) {
    values_.push_back(std::move(value));
    return *this;
  }

  struct Stretch {
    std::size_t begin;
    std::size_t end;
  };
  const std::string& text() const noexcept { return text_; }
  const std::vector<Stretch>& outside() const noexcept { return outside_; }
  const std::vector<Value>& values() const noexcept { return values_; }

 private:
  std::string text_;
  std::vector<Stretch> outside_;
  std::vector<Value> values_;
};

class Recordset {
 public:
  virtual ~Recordset() = default;  // closes

  virtual bool bof() const = 0;
  virtual bool eof() const = 0;
  virtual void move_next() = 0;      // 3021 at the end
  virtual void move_previous() = 0;  // 3021 before the start; 3251 on a forward-only one
  virtual void move_first() = 0;
  virtual void move_last() = 0;
  // Rows forward (or back, where negative) from here, or from the first or last row.
  enum class Origin : std::uint8_t { Current, First, Last };
  virtual void move(std::int64_t rows, Origin origin) = 0;

  // -1 where the cursor does not know it (forward-only).
  virtual std::int64_t record_count() = 0;
  virtual std::int32_t page_size() const = 0;
  virtual void set_page_size(std::int32_t rows) = 0;  // 3001 below 1
  virtual std::int32_t page_count() = 0;
  virtual std::int32_t absolute_page() = 0;
  virtual void set_absolute_page(std::int32_t page) = 0;  // 3001 below 1; EOF past the last
  // From 1; -2 before the first row (BOF), -3 past the last (EOF), as scripts know them.
  virtual std::int64_t absolute_position() = 0;
  virtual void set_absolute_position(std::int64_t row) = 0;

  virtual std::size_t field_count() const = 0;
  virtual const std::string& field_name(std::size_t ordinal) const = 0;
  // A name in any letter case; 3265 where there is none.
  virtual std::size_t ordinal(std::string_view name) const = 0;
  // The current row's value; 3021 where there is no current row.
  virtual Value field(std::size_t ordinal) = 0;
  Value field(std::string_view name) { return field(ordinal(name)); }
  // The text that "&" would join, appended without a Value between; false where it is Null.
  virtual bool append_field_text(std::size_t ordinal, std::string& out) = 0;

  // What is known of a column; nothing where the database beneath tells nothing.
  virtual ColumnTraits traits(std::size_t /*ordinal*/) const { return {}; }
  // The current row's value before what set_field() changed and update() did not store yet.
  virtual Value original(std::size_t ordinal) { return field(ordinal); }
  // Reads all rows, as far as their memory allows, so that moves to and fro ask nothing of the
  // file.
  virtual void hold_rows() {}

  // A new row that update() stores; fields not set take the table's defaults.
  virtual void add_new() = 0;  // 3251 on a read-only lock
  virtual void set_field(std::size_t ordinal, const Value& value) = 0;
  void set_field(std::string_view name, const Value& value) { set_field(ordinal(name), value); }
  virtual void update() = 0;
  virtual void cancel_update() = 0;
  virtual void remove() = 0;  // the current row

  virtual void close() = 0;  // 3704 where it is closed
};

class Connection {
 public:
  virtual ~Connection() = default;  // closes

  virtual void open(std::string_view connection_string) = 0;  // 3705 where it is open
  virtual void close() = 0;                                   // 3704 where it is closed
  virtual bool is_open() const = 0;

  // A statement that gives rows: forward-only and read-only. One that gives none: a closed record
  // set is never returned; null then, and `affected`, where given, is set to the rows changed.
  virtual std::unique_ptr<Recordset> execute(const SqlText& sql,
                                             std::int64_t* affected = nullptr) = 0;
  virtual std::unique_ptr<Recordset> open_recordset(const SqlText& sql, CursorType cursor,
                                                    LockType lock) = 0;
  std::unique_ptr<Recordset> execute(std::string text) { return execute(SqlText(std::move(text))); }
  std::unique_ptr<Recordset> open_recordset(std::string text, CursorType cursor, LockType lock) {
    return open_recordset(SqlText(std::move(text)), cursor, lock);
  }

  // Raises 3251 where the database beneath does not tell.
  virtual SchemaRows schema(SchemaList /*list*/) { raise(errors::kFeatureNotAvailable); }

  // One view of the database for all reads between the two; begin_read may be called again inside.
  // Nothing happens inside a transaction of the page's own.
  virtual void begin_read() = 0;
  virtual void end_read() noexcept = 0;

  virtual void begin_transaction() = 0;
  virtual void commit_transaction() = 0;
  virtual void roll_back_transaction() = 0;
};

// One view for the reads of a region, by scope.
class ReadScope {
 public:
  explicit ReadScope(Connection& connection) : connection_(connection) { connection_.begin_read(); }
  ~ReadScope() { connection_.end_read(); }
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

 private:
  Connection& connection_;
};

// Makes connections for one page. What it made shares one engine connection while one of them has
// a transaction open.
class Database {
 public:
  virtual ~Database() = default;
  virtual std::unique_ptr<Connection> connection() = 0;
  // One for texts that the page wrote itself: on engines that are not read as Jet's they go as they
  // stand.
  virtual std::unique_ptr<Connection> page_connection() { return connection(); }
};

// What a page sent to the database, for `--trace` and the log. It is told at the statement's end:
// a record set that stays open is told after texts that were sent later.
struct TracedStatement {
  std::string_view sql;
  std::chrono::steady_clock::time_point sent = {};
  std::int64_t microseconds = 0;
  std::int64_t rows = 0;
  std::string_view place = {};  // where the page stood as it sent the text, FILE:LINE; or empty
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_DATABASE_H_
