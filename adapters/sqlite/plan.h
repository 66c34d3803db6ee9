// A text's translation with the statements that were prepared of it, and the row counts that are
// known of it. Kept by a handle under the text's shape; a record set that uses it holds it.
// One page's thread at a time.
#ifndef RK_ADAPTERS_SQLITE_PLAN_H_
#define RK_ADAPTERS_SQLITE_PLAN_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "adapters/sqlite/lru.h"
#include "jetsql/translate.h"
#include "value/ref.h"

struct sqlite3_stmt;

namespace rk::sqlite {

// The statements of a Select; those of a write are numbered in their order.
enum Form : std::size_t {
  kWhole,
  kKeyed,
  kWindow,
  kKeyedWindow,
  kReversed,
  kKeyedReversed,
  kRow,
  kCount,
  kForms
};

// A count of rows and the state of the database that it was made in.
struct KeptCount {
  std::uint32_t sign = 0;
  std::int64_t rows = 0;
};

class Plan final : public RefCounted {
 public:
  explicit Plan(jetsql::Translation made);

  std::string text(std::size_t form) const;
  // An idle statement, or null.
  sqlite3_stmt* take(std::size_t form);
  // A reset statement.
  void give_back(std::size_t form, sqlite3_stmt* statement);

  void keep_count(std::string key, KeptCount count);

  const jetsql::Translation translation;
  // All parameters are literals of the text: it gives the same rows while nothing changes.
  const bool only_literals;
  const bool asks_clock;
  // By the values of the literals.
  Lru<KeptCount> counts;

 private:
  ~Plan() override;

  std::vector<std::vector<sqlite3_stmt*>> idle_;  // by form
};

// A statement out of a plan, given back by scope.
class Lease {
 public:
  Lease() = default;
  Lease(Ref<Plan> plan, std::size_t form, sqlite3_stmt* statement)
      : plan_(std::move(plan)), form_(form), statement_(statement) {}
  Lease(Lease&& other) noexcept
      : plan_(std::move(other.plan_)),
        form_(other.form_),
        statement_(std::exchange(other.statement_, nullptr)) {}
  Lease& operator=(Lease&& other) noexcept {
    release();
    plan_ = std::move(other.plan_);
    form_ = other.form_;
    statement_ = std::exchange(other.statement_, nullptr);
    return *this;
  }
  ~Lease() { release(); }

  // Resets the statement, which ends its hold on the database.
  void release() noexcept;

  sqlite3_stmt* statement() const noexcept { return statement_; }
  explicit operator bool() const noexcept { return statement_ != nullptr; }

 private:
  Ref<Plan> plan_;
  std::size_t form_ = 0;
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_PLAN_H_
