// What the host wants to be asked and told while a page uses a data source.
#ifndef RK_ADAPTERS_ODBC_HOOKS_H_
#define RK_ADAPTERS_ODBC_HOOKS_H_

#include <functional>
#include <string>

#include "platform/database.h"

namespace rk::odbc {

struct PageHooks {
  // Whether the page's time is over; any thread asks, and never once the page's connections are
  // closed. Empty where it never is.
  std::function<bool()> expired;
  // Called before a statement that was cancelled for it raises -2147217871; may raise what ends the
  // page instead. May be empty.
  std::function<void()> end;
  // Told of each text that the page sent, once its rows are read. Empty: no times are taken.
  std::function<void(const platform::TracedStatement&)> trace;
  // Where the page stands (FILE:LINE), asked as a text is sent; may be empty.
  std::function<std::string()> place;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_HOOKS_H_
