// GetCTSelect and GetCTName: provinces and cities for order forms.
#ifndef RK_SITE_REGIONS_H_
#define RK_SITE_REGIONS_H_

#include <string>
#include <string_view>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::site {

// Option elements: GetType "pro" for all provinces, "ct" for the cities of the province whose code
// begins with sIndex; NowValue's is selected. Another GetType raises what the database raises for
// an empty text.
std::string GetCTSelect(const PageContext& page, const Value& NowValue, const Value& GetType,
                        const Value& sIndex);

// A region's name (ShowType 0), its romanised name (1), its code (2) or its short form (3);
// Beijing's where the code is not known. Empty for another ShowType.
Value GetCTName(const PageContext& page, const Value& ProvCode, const Value& ShowType);

}  // namespace rk::site

#endif  // RK_SITE_REGIONS_H_
