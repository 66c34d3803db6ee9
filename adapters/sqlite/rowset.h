// What both kinds of record sets are made of: a plan and its values, rows in a buffer, the fields
// of the current row. A record set is on its session's list while it is open. The page's thread.
#ifndef RK_ADAPTERS_SQLITE_ROWSET_H_
#define RK_ADAPTERS_SQLITE_ROWSET_H_

#include <memory>
#include <string>
#include <string_view>

#include "adapters/sqlite/plan.h"
#include "adapters/sqlite/row_buffer.h"
#include "adapters/sqlite/session.h"
#include "adapters/sqlite/trace.h"
#include "platform/database.h"

namespace rk::sqlite {

// As scripts know it before they set another.
inline constexpr std::int32_t kDefaultPageSize = 10;

class Rowset : public platform::Recordset {
 public:
  // `owner` is the connection that it ends with.
  Rowset(Session& session, const void* owner, Ref<Plan> plan, std::unique_ptr<TraceEntry> trace);
  ~Rowset() override;
  Rowset(const Rowset&) = delete;
  Rowset& operator=(const Rowset&) = delete;

  std::size_t field_count() const final;
  const std::string& field_name(std::size_t ordinal) const final;
  std::size_t ordinal(std::string_view name) const final;
  Value field(std::size_t ordinal) override;
  bool append_field_text(std::size_t ordinal, std::string& out) override;
  platform::ColumnTraits traits(std::size_t ordinal) const override;
  using Recordset::field;

  void close() override;

  const void* owner() const noexcept { return owner_; }
  // Before the page writes: the rows shown from now on must not depend on the file any more.
  virtual void settle() = 0;
  // The page's view ends: what reads on through it stops.
  virtual void pause() noexcept = 0;
  // Closes without looking at what is unfinished.
  virtual void shut() noexcept;

 protected:
  // The place of the current row in the buffer; raises 3021 where there is none.
  virtual std::size_t current_row() = 0;
  void check_open() const;
  const jetsql::OutputColumn& column(std::size_t ordinal) const;  // raises 3265
  bool is_open() const noexcept { return session_ != nullptr; }

  // Times what is read in its scope, where that is traced.
  class Timing {
   public:
    explicit Timing(Rowset& set);
    ~Timing();
    Timing(const Timing&) = delete;
    Timing& operator=(const Timing&) = delete;

   private:
    Rowset& set_;
    std::chrono::steady_clock::time_point begin_;
  };

  // Adds the row that a statement stands on.
  void add_row(sqlite3_stmt* statement);

  Session* session_;  // null once it is closed
  Ref<Plan> plan_;    // null once it is closed
  RowBuffer buffer_;

 private:
  friend class Session;

  const void* owner_;
  std::unique_ptr<TraceEntry> trace_;
  Rowset* next_ = nullptr;
  Rowset* previous_ = nullptr;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_ROWSET_H_
