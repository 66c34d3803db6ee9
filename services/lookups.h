// Questions to outside parties: whether a domain is free, where the registrars' interfaces are
// called, and whether a filing number is on record for a domain.
#ifndef RK_SERVICES_LOOKUPS_H_
#define RK_SERVICES_LOOKUPS_H_

#include <string>

#include "platform/page.h"
#include "platform/random.h"
#include "services/web_fetch.h"
#include "value/value.h"

namespace rk::services {

// Base addresses of the outside services, without the path; empty where none is configured.
struct Endpoints {
  std::string availability;
  std::string hichina;
  std::string xinnet;
  std::string filing;
};

// The registrar's reply as it stands, or "0119". Raises where no address is configured.
Value chDomainReg(const Web& web, const Endpoints& endpoints, platform::Random& random,
                  const Value& domain);
// The address that a key stands for, ready for the page's own parameters; Empty for a key that is
// not known (letter case counts). Raises where no address is configured.
Value getapiurl(const Endpoints& endpoints, platform::Random& random, const Value& apitype);
// "0": not on record; "1": on record, and the first row names the domain; "2": anything else.
// Raises where no address is configured.
Value Getbeian(const Web& web, const Endpoints& endpoints, platform::Server& server,
               const Value& sStr, const Value& domain);

}  // namespace rk::services

#endif  // RK_SERVICES_LOOKUPS_H_
