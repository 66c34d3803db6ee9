// Cancels statements of pages whose time is over: a driver that waits for its server asks nobody.
// One thread looks after all statements that run, and sleeps while none does; it is started with
// the first. Any thread may add a statement.
#ifndef RK_ADAPTERS_ODBC_CANCELLER_H_
#define RK_ADAPTERS_ODBC_CANCELLER_H_

#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace rk::odbc {

class Canceller {
 public:
  Canceller() = default;
  ~Canceller();
  Canceller(const Canceller&) = delete;
  Canceller& operator=(const Canceller&) = delete;

  // While it lives, the statement is cancelled once `expired` says so.
  class Scope {
   public:
    // `expired` may be empty, and outlives the scope.
    Scope(Canceller& canceller, void* statement, const std::function<bool()>& expired);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Canceller& canceller_;
    bool watched_ = false;
    std::list<std::pair<void*, const std::function<bool()>*>>::iterator place_;
  };

 private:
  void run();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::list<std::pair<void*, const std::function<bool()>*>> running_;
  bool stop_ = false;
  std::thread thread_;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_CANCELLER_H_
