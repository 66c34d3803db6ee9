// The payment methods of a site: how to pay, and the choices of the page that reports a payment.
#ifndef RK_SHOP_PAYMENT_H_
#define RK_SHOP_PAYMENT_H_

#include <string>

#include "platform/clock.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::shop {

// The file "User-Service-PayType.html" with its loop block filled for each method. Raises 94 for a
// method without PayInfo (Null).
Text Show_PayType(const site::PageContext& page, const Value& Agent_User);

// The file "User-Service-EnterPay.html" with its loop block filled for each method, the session's
// UserName and today's date.
Text Show_EnterPay(const site::PageContext& page, const platform::Clock& clock,
                   const Value& Agent_User);

std::string pay_type_sql(const Value& agent_user);
std::string enter_pay_sql(const Value& agent_user);

}  // namespace rk::shop

#endif  // RK_SHOP_PAYMENT_H_
