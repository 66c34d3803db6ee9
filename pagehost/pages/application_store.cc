#include "pagehost/pages/application_store.h"

#include <chrono>
#include <utility>

#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kObjectNotKept{
    errors::kSqlFailure,
    "An object of this class belongs to its page and cannot be kept in the application"};

void must_hold_no_objects(const Value& value) {
  if (value.is_object() && value.as_object() != nullptr) raise(kObjectNotKept);
  if (!value.is_array()) return;
  for (const Value& element : value.as_array().elements()) must_hold_no_objects(element);
}

// What the store takes in place of a value.
Value kept_form(Value value) {
  const auto* keepable =
      value.is_object() ? dynamic_cast<const KeepableObject*>(value.as_object()) : nullptr;
  if (keepable != nullptr) {
    value = Value::object(keepable->kept());
  } else {
    must_hold_no_objects(value);
  }
  value.share();
  return value;
}

// Waiting is woken by every unlock and by wake(); this bounds it where a page's time is over.
constexpr std::chrono::milliseconds kLongestWait{250};

}  // namespace

Value ApplicationStore::value(std::string_view name) const {
  const std::lock_guard held(mutex_);
  const Value* found = variables_.find(name);
  return found == nullptr ? Value() : *found;
}

std::vector<std::string> ApplicationStore::names() const {
  const std::lock_guard held(mutex_);
  std::vector<std::string> out;
  for (std::size_t i = 0; i < variables_.size(); ++i) out.push_back(variables_.at(i).name);
  return out;
}

void ApplicationStore::set(std::string_view name, Value value, const void* page,
                           const PageWatch& watch) {
  std::unique_lock held(mutex_);
  wait_for(page, watch, held);
  variables_.set(name, std::move(value));
}

void ApplicationStore::remove(std::string_view name, const void* page, const PageWatch& watch) {
  std::unique_lock held(mutex_);
  wait_for(page, watch, held);
  variables_.remove(name);
}

void ApplicationStore::clear(const void* page, const PageWatch& watch) {
  std::unique_lock held(mutex_);
  wait_for(page, watch, held);
  variables_.clear();
}

void ApplicationStore::lock(const void* page, const PageWatch& watch) {
  std::unique_lock held(mutex_);
  wait_for(page, watch, held);
  holder_ = page;
  ++times_held_;
}

void ApplicationStore::unlock(const void* page) {
  const std::lock_guard held(mutex_);
  if (holder_ != page || --times_held_ > 0) return;
  holder_ = nullptr;
  changed_.notify_all();
}

void ApplicationStore::unlock_all(const void* page) {
  const std::lock_guard held(mutex_);
  if (holder_ != page) return;
  holder_ = nullptr;
  times_held_ = 0;
  changed_.notify_all();
}

void ApplicationStore::end_lock() {
  const std::lock_guard held(mutex_);
  holder_ = nullptr;
  times_held_ = 0;
  changed_.notify_all();
}

void ApplicationStore::wake() {
  changed_.notify_all();
}

void ApplicationStore::wait_for(const void* page, const PageWatch& watch,
                                std::unique_lock<std::mutex>& held) {
  while (holder_ != nullptr && holder_ != page) {
    watch.check();
    changed_.wait_for(held, kLongestWait);
  }
}

Value ApplicationView::value(std::string_view name) {
  Value stored = store_.value(name);
  auto* kept = stored.is_object() ? dynamic_cast<KeptObject*>(stored.as_object()) : nullptr;
  if (kept == nullptr) return stored;
  if (page_ == nullptr) return Value::nothing();
  Ref<Object>& made = made_[Ref<KeptObject>(kept)];
  if (!made) made = kept->made_for(*page_);
  return Value::object(made);
}

void ApplicationView::set_value(std::string_view name, Value value) {
  store_.set(name, kept_form(std::move(value)), this, *watch_);
}

void ApplicationView::page_is_over() {
  made_.clear();
  page_ = nullptr;
  store_.unlock_all(this);
}

}  // namespace rk::pagehost
