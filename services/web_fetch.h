// Fetches from outside by GET, as text of the ANSI code page. Neither raises anything; what could
// not be fetched reads as "0119". The status of an answer does not matter.
#ifndef RK_SERVICES_WEB_FETCH_H_
#define RK_SERVICES_WEB_FETCH_H_

#include "platform/code_page.h"
#include "platform/http.h"
#include "value/value.h"

namespace rk::services {

// What a fetch needs of the outside; owned by the program.
struct Web {
  platform::Http& http;
  const platform::CodePages& code_pages;
  int ansi_code_page;
};

// SiteMain's: 50 seconds for each phase.
Value server_fetch(const Web& web, const Value& url);
// Host's: the layer's own time-outs.
Value client_fetch(const Web& web, const Value& url);

}  // namespace rk::services

#endif  // RK_SERVICES_WEB_FETCH_H_
