// How a page bounds what it waits for. Called on the page's thread, from inside the engine too: a
// call is short and never raises, but for end().
#ifndef RK_ADAPTERS_SQLITE_LIMITS_H_
#define RK_ADAPTERS_SQLITE_LIMITS_H_

#include <functional>

namespace rk::sqlite {

struct Limits {
  // Whether the page's time is over; empty where it never is.
  std::function<bool()> expired;
  // Called before a statement that was interrupted for it raises -2147217871; may raise what ends
  // the page instead. May be empty.
  std::function<void()> end;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_LIMITS_H_
