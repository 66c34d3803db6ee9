#include "pagehost/pages/application_life.h"

namespace rk::pagehost {

ApplicationLives::Stay::~Stay() {
  if (life_) lives_->leave(*life_);
}

ApplicationLives::Change::~Change() {
  if (lives_ != nullptr) lives_->end_change(std::move(next_));
}

ApplicationLives::Life ApplicationLives::now() const {
  const std::lock_guard held(mutex_);
  return life_;
}

ApplicationLives::Stay ApplicationLives::enter() {
  std::unique_lock held(mutex_);
  changed_.wait(held, [this] { return !changing_; });
  ++life_->stays_;
  return Stay(*this, life_);
}

void ApplicationLives::leave(ApplicationLife& life) {
  const std::lock_guard held(mutex_);
  if (--life.stays_ == 0 && changing_) emptied_.notify_all();
}

bool ApplicationLives::take_look(std::chrono::steady_clock::time_point now) {
  auto due = next_look_.load(std::memory_order_relaxed);
  const auto moment = now.time_since_epoch();
  if (moment.count() < due) return false;
  return next_look_.compare_exchange_strong(due, (moment + kLookEvery).count());
}

std::optional<ApplicationLives::Change> ApplicationLives::begin_change() {
  std::unique_lock held(mutex_);
  if (changing_) return std::nullopt;
  changing_ = true;
  emptied_.wait_for(held, longest_wait_, [this] { return life_->stays_ == 0; });
  return std::optional<Change>(std::in_place, *this);
}

void ApplicationLives::end_change(Life next) {
  const std::lock_guard held(mutex_);
  if (next) earlier_.push_back(std::exchange(life_, std::move(next)));
  changing_ = false;
  changed_.notify_all();
}

std::vector<ApplicationLives::Life> ApplicationLives::earlier() const {
  const std::lock_guard held(mutex_);
  return earlier_;
}

void ApplicationLives::forget_earlier_without_sessions() {
  std::vector<Life> over;  // let go without the lock
  const std::lock_guard held(mutex_);
  std::erase_if(earlier_, [&](const Life& life) {
    if (life->sessions.size() > 0) return false;
    over.push_back(life);
    return true;
  });
}

}  // namespace rk::pagehost
