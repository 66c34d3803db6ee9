#include "classes/host.h"

#include <array>

#include "classes/page_binding.h"
#include "services/daily_log.h"
#include "services/digest.h"
#include "services/lookups.h"
#include "services/text_codecs.h"
#include "services/web_fetch.h"
#include "site/tags.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::classes {

namespace {

constexpr std::array kOperations{
    operation<&Host::OnStartPage>("OnStartPage"),
    operation<&Host::OnEndPage>("OnEndPage"),
    operation<&Host::Init>("Init"),
    operation<&Host::ReturnText>("ReturnText"),
    operation<&Host::wskEm_Connect>("wskEm_Connect"),
    operation<&Host::wskEm_DataArrival>("wskEm_DataArrival"),
    operation<&Host::GetURL>("GetURL"),
    operation<&Host::bytes2bstr>("bytes2bstr"),
    operation<&Host::URLEncodetoUTF8>("URLEncodetoUTF8"),
    operation<&Host::GetKey>("GetKey"),
    operation<&Host::chDomainReg>("chDomainReg"),
    operation<&Host::writelog>("writelog"),
    operation<&Host::mailpass>("mailpass"),
};

}  // namespace

Host::Host(const Equipment& equipment)
    : equipment_(equipment),
      control_client_({*equipment_.sockets, equipment_.clock, equipment_.code_pages,
                       equipment_.deployment.ansi_code_page},
                      equipment_.deployment.release) {}

std::span<const Operation<Host>> Host::operations() {
  return kOperations;
}

MemberId Host::member(std::string_view name) const {
  return member_of(operations(), name);
}

Value Host::invoke(MemberId id, CallKind kind, Arguments arguments) {
  return call_operation(operations(), *this, id, kind, arguments);
}

// --- page ---------------------------------------------------------------------------------------

void Host::OnStartPage(Value& mysc) {
  platform::ScriptingContext& page = scripting_context(mysc);
  // A page that lacks one of the five objects fails here, though only one of them is kept.
  page.response();
  server_ = page.server();
  page.request();
  page.application();
  page.session();
}

void Host::OnEndPage() {
  server_.reset();
}

// --- control server -----------------------------------------------------------------------------

void Host::Init(Value& strServerIP, Value& intServerPort, Value& strServerPass) {
  control_client_.Init(strServerIP, intServerPort, strServerPass);
}

Value Host::ReturnText(Value& strTextToSend) {
  return control_client_.ReturnText(strTextToSend);
}

void Host::wskEm_Connect() {
  control_client_.wskEm_Connect();
}

void Host::wskEm_DataArrival(Value& bytesTotal) {
  to_long(bytesTotal);
  raise(errors::kObjectNotSet);
}

// --- web fetch and text codecs ------------------------------------------------------------------

services::Web Host::web() const {
  return {*equipment_.http, equipment_.code_pages, equipment_.deployment.ansi_code_page};
}

Value Host::GetURL(Value& url) {
  return services::client_fetch(web(), url);
}

Value Host::bytes2bstr(Value& vin) {
  return services::bytes2bstr(vin, equipment_.code_pages, equipment_.deployment.ansi_code_page);
}

Value Host::URLEncodetoUTF8(Value& url) {
  return services::URLEncodetoUTF8(url);
}

Value Host::GetKey(Value& HTML, Value& Start, Value& Last) {
  return site::GetKey(HTML, Start, Last);
}

// --- lookup, log and digest ---------------------------------------------------------------------

Value Host::chDomainReg(Value& domain) {
  return services::chDomainReg(web(), equipment_.deployment.endpoints, equipment_.random, domain);
}

Value Host::writelog(Value& msgstrs) {
  // The folder is asked of the page; without one the line is lost like any that cannot be written.
  if (server_ == nullptr) return {};
  const LogFolder log = equipment_.log_folder();
  services::writelog({*log.files, equipment_.clock, equipment_.code_pages,
                      equipment_.deployment.ansi_code_page, log.path},
                     msgstrs);
  return {};
}

Value Host::mailpass(Value& inputStr) {
  return services::mailpass(inputStr);
}

}  // namespace rk::classes
