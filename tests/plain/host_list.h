// The hosting plan list step by step, on texts alone. What catalogue::Show_HostList must equal.
#ifndef RK_TESTS_PLAIN_HOST_LIST_H_
#define RK_TESTS_PLAIN_HOST_LIST_H_

#include <map>
#include <string>

#include "catalogue/host_list.h"
#include "tests/support/recording_database.h"

namespace rk::plain {

struct HostListCase {
  std::string file;                                  // the template file
  tests::Rows plans;                                 // in the order of the query's columns
  std::map<std::string, std::vector<Value>> offers;  // by a plan's Id: own name and prices
  std::string page;                                  // of the request, "" where it names none
  catalogue::HostListParameters parameters;
};

// `page` must be "" or a whole number in reach, and the parameters such that nothing raises.
std::string host_list(const HostListCase& given);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_HOST_LIST_H_
