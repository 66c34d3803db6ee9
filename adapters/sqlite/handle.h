// One connection of the engine to one file: its prepared statements by shape, its tables, its views
// (read transactions) and writes. Borrowed from a pool by one page at a time; whoever holds it is
// the only thread that uses it.
#ifndef RK_ADAPTERS_SQLITE_HANDLE_H_
#define RK_ADAPTERS_SQLITE_HANDLE_H_

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/sqlite/catalogue.h"
#include "adapters/sqlite/connection_string.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/limits.h"
#include "adapters/sqlite/lru.h"
#include "adapters/sqlite/plan.h"
#include "jetsql/translate.h"

struct sqlite3;
struct sqlite3_stmt;

namespace rk::sqlite {

// Shapes kept by a connection: a site has some two hundred texts, and those that pages vary (names
// of columns, lists of numbers) must not push these out at once.
inline constexpr std::size_t kKeptPlans = 512;

class Handle {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  // Raises -2147467259 where the file cannot be opened or is no database.
  Handle(std::string path, OpenMode mode, std::chrono::milliseconds busy);
  ~Handle();
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  // Statements from now on stop when `limits` say so; null: none does. Borrowed.
  void watch(const Limits* limits);

  // A view: all reads see one state of the file. The schema is looked at as it begins. Raises.
  void begin_view();
  void end_view() noexcept;
  bool in_view() const noexcept { return in_view_; }

  // A transaction that may write, alone from its begin. Raises where the file stays locked; where
  // it is known to be, it was waited for since `waited_since` already.
  void begin_write(std::optional<TimePoint> waited_since);
  // Since when the last begin_write waited in vain; nothing where it did not.
  std::optional<TimePoint> waited_in_vain_since() const noexcept { return in_vain_since_; }
  void commit_write();
  void roll_back() noexcept;
  // A part of a transaction that can be undone alone.
  void begin_part();
  void end_part(bool keep) noexcept;
  // Whether the engine has a transaction open; false after a failure that made it roll back.
  bool in_transaction() const noexcept;

  // The plan of a text, translated at its first use. Inside a view or a transaction. Raises.
  Ref<Plan> plan(std::string_view sql, const jetsql::Shape& shape);
  Lease lease(const Ref<Plan>& plan, std::size_t form);
  // A statement of the adapter's own, kept by its text.
  Ref<Plan> own_plan(const std::string& text);
  // After a statement that changed tables: nothing known of them holds.
  void forget_schema();
  const jetsql::Table* table(std::string_view name) { return catalogue_->table(name); }

  // True for a row, false at the end. Raises.
  bool step(sqlite3_stmt* statement);
  std::int64_t changes() const noexcept;
  std::int64_t last_row_id() const noexcept;

  // Another number after anything was changed in the file by anyone. Inside a view only.
  std::uint32_t change_sign() const noexcept;

  std::size_t kept_plans() const noexcept { return plans_.size(); }

 private:
  enum Fixed : std::size_t {
    kBegin,
    kBeginImmediate,
    kCommit,
    kRollback,
    kSavepoint,
    kRelease,
    kUndo,
    kSchema,
    kFixed
  };
  struct Closer {
    void operator()(sqlite3* database) const noexcept;
  };
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const noexcept;
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

  void open(OpenMode mode);
  void configure(OpenMode mode);
  void run_text(const char* text);
  Statement prepare(std::string_view text);
  int run(Fixed which) noexcept;
  void check_schema();
  [[noreturn]] void fail(int code);
  static int is_over(void* self) noexcept;
  static int wait_for_others(void* self, int tries) noexcept;
  bool page_is_over() const noexcept;

  std::string path_;
  std::chrono::milliseconds busy_;
  TimePoint waiting_since_;
  std::optional<TimePoint> waited_before_;  // for the wait that comes
  std::optional<TimePoint> in_vain_since_;
  const Limits* limits_ = nullptr;
  bool shielded_ = false;  // an end of a transaction is never interrupted
  bool in_view_ = false;
  std::int64_t schema_version_ = -1;

  Functions functions_;
  std::unique_ptr<sqlite3, Closer> database_;
  std::unique_ptr<Catalogue> catalogue_;
  std::array<Statement, kFixed> fixed_;
  Lru<Ref<Plan>> plans_{kKeptPlans};
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_HANDLE_H_
