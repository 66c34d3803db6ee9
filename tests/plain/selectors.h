// The jump list and the class links row by row. What ShowPro_List and Show_ServerList must equal.
#ifndef RK_TESTS_PLAIN_SELECTORS_H_
#define RK_TESTS_PLAIN_SELECTORS_H_

#include <array>
#include <map>
#include <string>

#include "catalogue/selectors.h"
#include "tests/support/recording_database.h"

namespace rk::plain {

struct ProductListCase {
  // Number and name of the hosting, SQL Server, MySQL and mail plans.
  std::array<tests::Rows, 4> products;
  // The agent's own names by a product's number; none is looked at for the master.
  std::array<std::map<std::string, Value>, 4> own_names;
  bool for_agent = false;
};

std::string product_list(const ProductListCase& given);
std::string server_list(const tests::Rows& classes,
                        const catalogue::ServerListParameters& parameters);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_SELECTORS_H_
