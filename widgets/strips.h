// Strips for a storefront's side and bottom bars: partner links, hosted sites, companies and
// downloads. Each brings its own style block; the link strips end with a call of the site's
// scrolling script.
#ifndef RK_WIDGETS_STRIPS_H_
#define RK_WIDGETS_STRIPS_H_

#include <string>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::widgets {

// As pages pass them; numbers may be texts. Widths and heights in pixels.
struct LinkParameters {
  Value linkWidth;
  Value linkHeight;
  Value NumWidth;  // of one link
  Value TopNum;    // most links
  Value stopTime;  // the scroller's pause
  Value sLen;      // units of the longest name that is shown whole
  Value Agent_User;
};
std::string Show_Links(const site::PageContext& page, const LinkParameters& parameters);
std::string Show_FtpLinks(const site::PageContext& page, const LinkParameters& parameters);

// Empty on an agent's site and where there are no companies. sNum: most companies, all where it is
// not above 0.
Value Show_NCompany(const site::PageContext& page, const Value& sNum, const Value& sWindth,
                    const Value& ulWidth, const Value& Agent_User);

// ShowNum: most downloads; sNum: units of the longest name that is shown whole.
std::string Show_DownLoad(const site::PageContext& page, const Value& ShowNum, const Value& sWidth,
                          const Value& sNum, const Value& Agent_User);

std::string links_sql(const LinkParameters& parameters);
std::string ftp_links_sql(const LinkParameters& parameters);
std::string companies_sql(const Value& most);
std::string downloads_sql(const Value& most, const Value& agent_user);

}  // namespace rk::widgets

#endif  // RK_WIDGETS_STRIPS_H_
