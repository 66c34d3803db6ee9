#include "adapters/odbc/trace.h"

namespace rk::odbc {

std::unique_ptr<Trace> Trace::begin(const PageHooks& hooks, std::string_view sql) {
  return hooks.trace ? std::unique_ptr<Trace>(new Trace(hooks, sql)) : nullptr;
}

Trace::Trace(const PageHooks& hooks, std::string_view sql)
    : hooks_(hooks),
      sql_(sql),
      place_(hooks.place ? hooks.place() : std::string()),
      sent_(std::chrono::steady_clock::now()) {}

Trace::~Trace() {
  const auto spent = std::chrono::duration_cast<std::chrono::microseconds>(spent_);
  hooks_.trace({sql_, sent_, spent.count(), rows_, place_});
}

Trace::Timing::Timing(Trace* trace) : trace_(trace) {
  if (trace_ != nullptr) begin_ = std::chrono::steady_clock::now();
}

Trace::Timing::~Timing() {
  if (trace_ != nullptr) trace_->spent_ += std::chrono::steady_clock::now() - begin_;
}

}  // namespace rk::odbc
