// Show_DomainPriceList and Show_sDomainList: the domain suffixes on sale, as a price list out of a
// template and as the boxes of a search form.
#ifndef RK_CATALOGUE_DOMAIN_LISTS_H_
#define RK_CATALOGUE_DOMAIN_LISTS_H_

#include <string>
#include <string_view>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::catalogue {

// The suffixes with their prices as HTML: DomainLanguage "EN" the international ones, "CN" the
// Chinese ones, anything else all. Empty where the template lacks the style's block.
Text Show_DomainPriceList(const site::PageContext& page, const Value& Style,
                          const Value& DomainLanguage, const Value& Agent_User);

struct DomainBoxParameters {
  Value TopNum;  // most suffixes, a 16-bit number; 0: all
  Value InputWidth;
  Value InputHeight;  // of each box, in pixels
  Value DomainType;   // "EN" the international ones, "CH" the Chinese ones, anything else all
  Value OrderType;    // the column to sort by, descending
  Value Agent_User;
};

// The row of boxes. Raises 13, 6 or 94 for a TopNum that is no 16-bit number, 94 for a suffix
// whose Type is Null.
std::string Show_sDomainList(const site::PageContext& page, const DomainBoxParameters& parameters);

std::string domain_price_list_sql(std::string_view language, bool for_agent);
std::string own_domain_price_sql(std::string_view agent_user, std::string_view domain_id);
std::string domain_boxes_sql(const DomainBoxParameters& parameters);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_DOMAIN_LISTS_H_
