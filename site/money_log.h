// WriteMoneyLog: one row in the log of account movements.
#ifndef RK_SITE_MONEY_LOG_H_
#define RK_SITE_MONEY_LOG_H_

#include "platform/clock.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::site {

// Stored as pages pass them.
struct Movement {
  Value User;
  Value LogType;
  Value Money;
  Value BuyMoney;
  Value LogMoney;
  Value Info;
};

// Adds the movement with the clock's date and time, to the second. Raises what the database raises
// for a value that a column cannot take; no row is added then.
void WriteMoneyLog(const PageContext& page, const platform::Clock& clock, const Movement& movement);

}  // namespace rk::site

#endif  // RK_SITE_MONEY_LOG_H_
