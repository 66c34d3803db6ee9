#include "site/money_log.h"

#include <cmath>

#include "platform/database.h"
#include "site/storefront.h"

namespace rk::site {

namespace {

constexpr double kSecondsADay = 86400;
// What a time that is a whole second may lack after the arithmetic of days.
constexpr double kRoundingSlack = 1e-5;

Value to_the_second(double days) {
  return Value::date(std::floor(days * kSecondsADay + kRoundingSlack) / kSecondsADay);
}

}  // namespace

void WriteMoneyLog(const PageContext& page, const platform::Clock& clock,
                   const Movement& movement) {
  const auto db = open_database(page);
  const auto log = db->open_recordset("Select * From MoneyLog", platform::CursorType::Keyset,
                                      platform::LockType::Optimistic);
  log->add_new();
  log->set_field("user", movement.User);
  log->set_field("type", movement.LogType);
  log->set_field("money", movement.Money);
  log->set_field("buymoney", movement.BuyMoney);
  log->set_field("logmoney", movement.LogMoney);
  log->set_field("info", movement.Info);
  log->set_field("now", to_the_second(clock.now()));
  log->update();
  log->close();
  db->close();
}

}  // namespace rk::site
