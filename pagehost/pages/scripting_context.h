// The scripting context: the five objects of the page, for classes that ask for it in OnStartPage:
// typed for the library, by name for scripts. Made once a page.
#ifndef RK_PAGEHOST_PAGES_SCRIPTING_CONTEXT_H_
#define RK_PAGEHOST_PAGES_SCRIPTING_CONTEXT_H_

#include <memory>
#include <span>
#include <string_view>

#include "pagehost/pages/application_store.h"
#include "pagehost/pages/request.h"
#include "pagehost/pages/response.h"
#include "pagehost/pages/server_object.h"
#include "pagehost/pages/session_object.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/clock.h"
#include "platform/page.h"

namespace rk::pagehost {

struct PageParts {
  std::shared_ptr<PageResponse> response;
  std::shared_ptr<RequestView> request;
  std::shared_ptr<ServerView> server;
  std::shared_ptr<ApplicationView> application;
  std::shared_ptr<SessionView> session;
};

class ContextObject final : public TabledObject<ContextObject, platform::ScriptingContext> {
 public:
  ContextObject(PageParts parts, const platform::Clock& clock);
  std::string_view type_name() const override { return "IScriptingContext"; }
  static std::span<const Member<ContextObject>> members();

  std::shared_ptr<platform::Response> response() override { return parts_.response; }
  std::shared_ptr<platform::Server> server() override { return parts_.server; }
  std::shared_ptr<platform::Request> request() override { return parts_.request; }
  std::shared_ptr<platform::Application> application() override { return parts_.application; }
  std::shared_ptr<platform::Session> session() override { return parts_.session; }

 private:
  Value response_object(const Call& call);
  Value request_object(const Call& call);
  Value server_object(const Call& call);
  Value application_object(const Call& call);
  Value session_object(const Call& call);
  Ref<Object> static_objects(bool of_session) const;

  PageParts parts_;
  const platform::Clock& clock_;
  Ref<Object> response_;
  Ref<Object> request_;
  Ref<Object> server_;
  Ref<Object> application_;
  Ref<Object> session_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_SCRIPTING_CONTEXT_H_
