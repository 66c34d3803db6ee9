// Takes the time of one SQL text where the page is traced, and tells it when it ends. The page's
// thread.
#ifndef RK_ADAPTERS_ODBC_TRACE_H_
#define RK_ADAPTERS_ODBC_TRACE_H_

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/odbc/hooks.h"

namespace rk::odbc {

class Trace {
 public:
  // Null where nothing is traced. `hooks` outlives it.
  static std::unique_ptr<Trace> begin(const PageHooks& hooks, std::string_view sql);
  ~Trace();
  Trace(const Trace&) = delete;
  Trace& operator=(const Trace&) = delete;

  void add_rows(std::int64_t rows) noexcept { rows_ += rows; }

  // Counts the time of its scope; `trace` may be null.
  class Timing {
   public:
    explicit Timing(Trace* trace);
    ~Timing();
    Timing(const Timing&) = delete;
    Timing& operator=(const Timing&) = delete;

   private:
    Trace* trace_;
    std::chrono::steady_clock::time_point begin_;
  };

 private:
  Trace(const PageHooks& hooks, std::string_view sql);

  const PageHooks& hooks_;
  std::string sql_, place_;
  std::chrono::steady_clock::time_point sent_;
  std::chrono::steady_clock::duration spent_{};
  std::int64_t rows_ = 0;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_TRACE_H_
