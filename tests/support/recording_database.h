// A database for tests that records what it was asked, in order, and answers with scripted rows.
//
// The log has one line an event: "open DSN", "execute SQL", "recordset 1 3 SQL" (cursor and lock
// type), "close recordset", "close"; a row that is stored adds "add_new", "set COLUMN=VALUE" and
// "update". Views for reading are not logged but must balance: reading() is 0 at the end. A text
// that is sent while no view is open is kept in outside_view(): two such texts may see two states
// of the database.
#ifndef RK_TESTS_SUPPORT_RECORDING_DATABASE_H_
#define RK_TESTS_SUPPORT_RECORDING_DATABASE_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "value/script_error.h"

namespace rk::tests {

struct Rows {
  std::vector<std::string> columns;
  std::vector<std::vector<Value>> rows;
};

// Short ways to write the values of a row.
inline Value text(std::string_view utf8) {
  return Value::text(utf8);
}
inline Value number(std::int32_t n) {
  return Value::long_integer(n);
}
inline Value real(double n) {
  return Value::real(n);
}

class RecordingDatabase : public platform::Database {
 public:
  // Rows for a statement of exactly this text. A statement without an answer raises
  // errors::kSqlSyntax, naming itself.
  void answer(std::string sql, Rows rows) { answers_[std::move(sql)] = std::move(rows); }
  void fail(std::string sql, const ScriptError& error) {
    failures_.insert({std::move(sql), error});
  }
  void fail_open(const ScriptError& error) { open_failure_ = std::make_unique<ScriptError>(error); }

  const std::vector<std::string>& log() const { return log_; }
  // The statements alone.
  std::vector<std::string> statements() const;
  // What of the statements came from the request, marked: Like '%<<shop.example>>%'.
  const std::vector<std::string>& marked() const { return marked_; }
  // The values bound to each statement that has some, with commas between.
  const std::vector<std::string>& bound() const { return bound_; }
  int reading() const { return reading_; }
  const std::vector<std::string>& outside_view() const { return outside_view_; }
  void clear_log();

  std::unique_ptr<platform::Connection> connection() override;

  // For the connections and record sets that it made.
  void record(std::string event) { log_.push_back(std::move(event)); }
  void record_statement(std::string event, const platform::SqlText& sql);
  const Rows& rows_of(const std::string& sql) const;
  void check_open() const;
  void change_reading(int by) { reading_ += by; }

 private:
  std::map<std::string, Rows> answers_;
  std::map<std::string, ScriptError> failures_;
  std::unique_ptr<ScriptError> open_failure_;
  std::vector<std::string> log_;
  std::vector<std::string> statements_;
  std::vector<std::string> marked_;
  std::vector<std::string> bound_;
  std::vector<std::string> outside_view_;
  int reading_ = 0;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_RECORDING_DATABASE_H_
