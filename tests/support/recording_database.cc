#include "tests/support/recording_database.h"

#include <algorithm>
#include <utility>

#include "value/conversions.h"
#include "value/text.h"

namespace rk::tests {

namespace {

using platform::CursorType;
using platform::LockType;

constexpr std::int32_t kUsualPageSize = 10;

// The rows of one answer, walked as the real record sets are.
class ScriptedRecordset : public platform::Recordset {
 public:
  ScriptedRecordset(RecordingDatabase& log, const Rows& rows, CursorType cursor, LockType lock)
      : log_(log), rows_(rows), cursor_(cursor), lock_(lock) {}
  ~ScriptedRecordset() override {
    if (open_) log_.record("close recordset");
  }

  bool bof() const override { return at_ < 0 || count() == 0; }
  bool eof() const override { return at_ >= count() || count() == 0; }
  void move_next() override {
    if (eof()) raise(errors::kNoCurrentRecord);
    ++at_;
  }
  void move_previous() override {
    if (cursor_ == CursorType::ForwardOnly) raise(errors::kFeatureNotAvailable);
    if (bof()) raise(errors::kNoCurrentRecord);
    --at_;
  }
  void move_first() override { at_ = 0; }
  void move_last() override { at_ = std::max<std::int64_t>(count() - 1, 0); }
  void move(std::int64_t rows, Origin origin) override {
    const std::int64_t from = origin == Origin::First  ? 0
                              : origin == Origin::Last ? count() - 1
                                                       : at_;
    at_ = std::clamp<std::int64_t>(from + rows, -1, count());
  }

  std::int64_t record_count() override { return cursor_ == CursorType::ForwardOnly ? -1 : count(); }
  std::int32_t page_size() const override { return page_size_; }
  void set_page_size(std::int32_t rows) override {
    if (rows < 1) raise(errors::kInvalidArgument);
    page_size_ = rows;
  }
  std::int32_t page_count() override {
    return static_cast<std::int32_t>((count() + page_size_ - 1) / page_size_);
  }
  std::int32_t absolute_page() override { return static_cast<std::int32_t>(at_ / page_size_ + 1); }
  void set_absolute_page(std::int32_t page) override {
    if (count() == 0) raise(errors::kNoCurrentRecord);
    if (page < 1) raise(errors::kInvalidArgument);
    at_ = std::min<std::int64_t>((std::int64_t{page} - 1) * page_size_, count());
  }
  std::int64_t absolute_position() override { return bof() ? -2 : eof() ? -3 : at_ + 1; }
  void set_absolute_position(std::int64_t row) override {
    if (count() == 0) raise(errors::kNoCurrentRecord);
    if (row < 1) raise(errors::kInvalidArgument);
    at_ = std::min(row - 1, count());
  }

  std::size_t field_count() const override { return rows_.columns.size(); }
  const std::string& field_name(std::size_t ordinal) const override {
    return rows_.columns.at(ordinal);
  }
  std::size_t ordinal(std::string_view name) const override {
    for (std::size_t i = 0; i < rows_.columns.size(); ++i) {
      if (equal_ignoring_case(rows_.columns[i], name)) return i;
    }
    raise(errors::kItemNotFound);
  }
  Value field(std::size_t ordinal) override {
    if (bof() || eof()) raise(errors::kNoCurrentRecord);
    return rows_.rows[static_cast<std::size_t>(at_)].at(ordinal);
  }
  bool append_field_text(std::size_t ordinal, std::string& out) override {
    const Value value = field(ordinal);
    if (value.is_null()) return false;
    append_text(out, value);
    return true;
  }

  void add_new() override {
    if (lock_ == LockType::ReadOnly) raise(errors::kFeatureNotAvailable);
    log_.record("add_new");
  }
  void set_field(std::size_t ordinal, const Value& value) override {
    const std::string shown = value.is_null() ? "Null" : joined_text(value).string();
    log_.record("set " + field_name(ordinal) + "=" + shown);
  }
  void update() override { log_.record("update"); }
  void cancel_update() override { log_.record("cancel_update"); }
  void remove() override { log_.record("remove"); }

  void close() override {
    if (!open_) raise(errors::kObjectClosed);
    open_ = false;
    log_.record("close recordset");
  }

 private:
  std::int64_t count() const { return static_cast<std::int64_t>(rows_.rows.size()); }

  RecordingDatabase& log_;
  const Rows rows_;
  const CursorType cursor_;
  const LockType lock_;
  std::int64_t at_ = 0;
  std::int32_t page_size_ = kUsualPageSize;
  bool open_ = true;
};

class RecordingConnection : public platform::Connection {
 public:
  explicit RecordingConnection(RecordingDatabase& log) : log_(log) {}
  ~RecordingConnection() override {
    if (open_) log_.record("close");
  }

  void open(std::string_view connection_string) override {
    if (open_) raise(errors::kObjectOpen);
    log_.check_open();
    open_ = true;
    log_.record("open " + std::string(connection_string));
  }
  void close() override {
    if (!open_) raise(errors::kObjectClosed);
    open_ = false;
    log_.record("close");
  }
  bool is_open() const override { return open_; }

  using Connection::execute;
  using Connection::open_recordset;
  std::unique_ptr<platform::Recordset> execute(const platform::SqlText& sql,
                                               std::int64_t* affected) override {
    if (affected != nullptr) *affected = 0;
    return rows("execute ", sql, CursorType::ForwardOnly, LockType::ReadOnly);
  }
  std::unique_ptr<platform::Recordset> open_recordset(const platform::SqlText& sql,
                                                      CursorType cursor, LockType lock) override {
    const std::string event = std::string("recordset ") + std::to_string(static_cast<int>(cursor)) +
                              " " + std::to_string(static_cast<int>(lock)) + " ";
    return rows(event, sql, cursor, lock);
  }

  void begin_read() override { log_.change_reading(1); }
  void end_read() noexcept override { log_.change_reading(-1); }
  void begin_transaction() override { log_.record("begin"); }
  void commit_transaction() override { log_.record("commit"); }
  void roll_back_transaction() override { log_.record("roll back"); }

 private:
  std::unique_ptr<platform::Recordset> rows(const std::string& event, const platform::SqlText& sql,
                                            CursorType cursor, LockType lock) {
    if (!open_) raise(errors::kObjectClosed);
    log_.record_statement(event, sql);
    return std::make_unique<ScriptedRecordset>(log_, log_.rows_of(sql.text()), cursor, lock);
  }

  RecordingDatabase& log_;
  bool open_ = false;
};

std::string with_marks(const platform::SqlText& sql) {
  std::string marked;
  std::size_t from = 0;
  for (const platform::SqlText::Stretch& stretch : sql.outside()) {
    marked.append(sql.text(), from, stretch.begin - from).append("<<");
    marked.append(sql.text(), stretch.begin, stretch.end - stretch.begin).append(">>");
    from = stretch.end;
  }
  return marked.append(sql.text(), from);
}

}  // namespace

std::vector<std::string> RecordingDatabase::statements() const {
  return statements_;
}

void RecordingDatabase::clear_log() {
  log_.clear();
  statements_.clear();
  marked_.clear();
  bound_.clear();
  outside_view_.clear();
}

std::unique_ptr<platform::Connection> RecordingDatabase::connection() {
  return std::make_unique<RecordingConnection>(*this);
}

void RecordingDatabase::record_statement(std::string event, const platform::SqlText& sql) {
  log_.push_back(std::move(event) + sql.text());
  statements_.push_back(sql.text());
  if (reading_ == 0) outside_view_.push_back(sql.text());
  marked_.push_back(with_marks(sql));
  std::string values;
  for (const Value& value : sql.values()) {
    values += (values.empty() ? "" : ",") + joined_text(value).string();
  }
  if (!sql.values().empty()) bound_.push_back(std::move(values));
}

const Rows& RecordingDatabase::rows_of(const std::string& sql) const {
  if (const auto failure = failures_.find(sql); failure != failures_.end()) throw failure->second;
  const auto answer = answers_.find(sql);
  if (answer == answers_.end()) throw ScriptError(errors::kSqlSyntax, "No rows for: " + sql);
  return answer->second;
}

void RecordingDatabase::check_open() const {
  if (open_failure_ != nullptr) throw *open_failure_;
}

}  // namespace rk::tests
