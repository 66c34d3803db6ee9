// The lists of database and mail plans and of domains step by step, on texts alone. What the
// operations of the catalogue must equal.
#ifndef RK_TESTS_PLAIN_PLAN_LISTS_H_
#define RK_TESTS_PLAIN_PLAN_LISTS_H_

#include <map>
#include <string>
#include <vector>

#include "catalogue/domain_lists.h"
#include "catalogue/plan_lists.h"
#include "tests/support/recording_database.h"

namespace rk::plain {

// By a row's Id: the agent's own values.
using Offers = std::map<std::string, std::vector<Value>>;

// The parameters must be such that nothing raises.
std::string plan_list(catalogue::PlanList list, const std::string& file, const tests::Rows& plans,
                      const Offers& offers, const catalogue::PlanListParameters& parameters);

std::string domain_price_list(const std::string& file, const Value& style,
                              const tests::Rows& domains, const Offers& offers, bool for_agent);

// Rows of Type (not Null) and DefaultCheck (a Boolean or Null).
std::string domain_boxes(const tests::Rows& domains,
                         const catalogue::DomainBoxParameters& parameters);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_PLAN_LISTS_H_
