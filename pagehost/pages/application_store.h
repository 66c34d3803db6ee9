// ApplicationStore: the values that all pages share, and the lock that one page at a time may hold.
// Several threads may call. ApplicationView is one page's hand on it, typed for the library.
//
// Reading never waits. A page that holds the lock makes others wait that lock or store; at most as
// long as they may run. Values are shared between threads, so arrays and texts in the store are
// never changed in place. Of objects only those are taken that can be made anew for each page
// (KeepableObject).
#ifndef RK_PAGEHOST_PAGES_APPLICATION_STORE_H_
#define RK_PAGEHOST_PAGES_APPLICATION_STORE_H_

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/programs.h"
#include "pagehost/pages/variable_store.h"
#include "platform/page.h"

namespace rk::pagehost {

class ApplicationStore {
 public:
  Value value(std::string_view name) const;  // Empty where never stored
  std::vector<std::string> names() const;

  // `page` is whoever asks, for the lock. They wait while another page holds it.
  void set(std::string_view name, Value value, const void* page, const PageWatch& watch);
  void remove(std::string_view name, const void* page, const PageWatch& watch);
  void clear(const void* page, const PageWatch& watch);
  void lock(const void* page, const PageWatch& watch);
  void unlock(const void* page);
  void unlock_all(const void* page);
  // Whoever holds the lock holds it no longer: at the application's end.
  void end_lock();
  // Whoever waits looks again whether its time is over.
  void wake();

 private:
  void wait_for(const void* page, const PageWatch& watch, std::unique_lock<std::mutex>& held);

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  VariableStore variables_;
  const void* holder_ = nullptr;
  std::size_t times_held_ = 0;
};

struct RefOrder {
  bool operator()(const Ref<KeptObject>& a, const Ref<KeptObject>& b) const noexcept {
    return std::less<const KeptObject*>()(a.get(), b.get());
  }
};

class ApplicationView final : public platform::Application {
 public:
  // Without a page, kept objects read as Nothing.
  ApplicationView(ApplicationStore& store, std::shared_ptr<const PageWatch> watch,
                  PageServices* page = nullptr)
      : store_(store), watch_(std::move(watch)), page_(page) {}
  ~ApplicationView() override { store_.unlock_all(this); }

  Value value(std::string_view name) override;
  void set_value(std::string_view name, Value value) override;
  void lock() override { store_.lock(this, *watch_); }
  void unlock() override { store_.unlock(this); }

  std::vector<std::string> names() const { return store_.names(); }
  void remove(std::string_view name) { store_.remove(name, this, *watch_); }
  void clear() { store_.clear(this, *watch_); }
  void page_is_over();

 private:
  ApplicationStore& store_;
  std::shared_ptr<const PageWatch> watch_;
  PageServices* page_;
  // What was made for this page, by what the store keeps; so that a name gives one object a page.
  std::map<Ref<KeptObject>, Ref<Object>, RefOrder> made_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_APPLICATION_STORE_H_
