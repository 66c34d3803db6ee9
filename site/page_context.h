// The page that an object of the library serves: what OnStartPage took from the page host.
//
// Every operation receives it; none keeps anything else between two calls. Belongs to one page's
// thread.
#ifndef RK_SITE_PAGE_CONTEXT_H_
#define RK_SITE_PAGE_CONTEXT_H_

#include <memory>

#include "platform/page.h"

namespace rk::site {

class PageContext {
 public:
  // Takes Response, Server, Request, Application and Session, in this order.
  void start(platform::ScriptingContext& context);
  // Lets go of Response, Server, Request and Application.
  void end() noexcept;

  // Each raises 424 before start(), and, but for the session, after end().
  platform::Response& response() const;
  platform::Server& server() const;
  platform::Request& request() const;
  platform::Application& application() const;
  platform::Session& session() const;

 private:
  std::shared_ptr<platform::Response> response_;
  std::shared_ptr<platform::Server> server_;
  std::shared_ptr<platform::Request> request_;
  std::shared_ptr<platform::Application> application_;
  std::shared_ptr<platform::Session> session_;
};

}  // namespace rk::site

#endif  // RK_SITE_PAGE_CONTEXT_H_
