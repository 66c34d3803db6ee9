#include "adapters/odbc/canceller.h"

#include <sql.h>
#include <sqlext.h>

#include <chrono>

namespace rk::odbc {
namespace {

// How often pages are asked: short beside the seconds that their times are set in.
constexpr std::chrono::milliseconds kPeriod{100};

}  // namespace

Canceller::~Canceller() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

Canceller::Scope::Scope(Canceller& canceller, void* statement, const std::function<bool()>& expired)
    : canceller_(canceller) {
  if (!expired) return;
  const std::lock_guard lock(canceller_.mutex_);
  place_ = canceller_.running_.emplace(canceller_.running_.end(), statement, &expired);
  watched_ = true;
  if (!canceller_.thread_.joinable()) {
    canceller_.thread_ = std::thread([&canceller] { canceller.run(); });
  } else if (canceller_.running_.size() == 1) {
    canceller_.changed_.notify_all();
  }
}

Canceller::Scope::~Scope() {
  if (!watched_) return;
  const std::lock_guard lock(canceller_.mutex_);
  canceller_.running_.erase(place_);
}

// Cancels with the lock held, so that no statement ends, and is freed, in between.
void Canceller::run() {
  std::unique_lock lock(mutex_);
  while (!stop_) {
    if (running_.empty()) {
      changed_.wait(lock);
      continue;
    }
    changed_.wait_for(lock, kPeriod);
    for (const auto& [statement, expired] : running_) {
      if ((*expired)()) SQLCancel(statement);
    }
  }
}

}  // namespace rk::odbc
