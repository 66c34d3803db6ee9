// The page of one hosting plan tag by tag, on texts alone. What Show_HostInfo must equal.
#ifndef RK_TESTS_PLAIN_HOST_INFO_H_
#define RK_TESTS_PLAIN_HOST_INFO_H_

#include <map>
#include <string>
#include <vector>

#include "value/value.h"

namespace rk::plain {

struct HostInfoCase {
  std::string file;                   // the template file
  std::map<std::string, Value> plan;  // by the columns' names; HostInfo is not Null
  bool for_agent = false;
  std::vector<Value> own;  // the agent's own name and prices, empty where there is no such row
  Value cpu_limit;         // of the plan's pool
  Value mail_name;         // of its free mail plan and databases, where it has them
  Value sql_name;
  Value my_sql_name;
};

std::string host_info(const HostInfoCase& given);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_HOST_INFO_H_
