// What the front needs of who runs the pages, behind an interface so that its tests can play one.
// The real ones are HostedPages.
#ifndef RK_PAGEHOST_HTTP_PAGES_H_
#define RK_PAGEHOST_HTTP_PAGES_H_

#include <functional>

#include "pagehost/pages/page_host.h"
#include "pagehost/pages/page_request.h"

namespace rk::http {

class Pages {
 public:
  virtual ~Pages() = default;
  // These are PageHost's operations of the same names.
  virtual bool admit(const pagehost::PageRequest& request,
                     std::function<void(pagehost::SessionTurn)> ready,
                     std::function<bool()> wanted) = 0;
  virtual pagehost::PageAnswer run(const pagehost::PageRequest& request, pagehost::SessionTurn turn,
                                   pagehost::AnswerSink* sink) = 0;
  virtual pagehost::PageAnswer answer_not_found(const pagehost::PageRequest& request,
                                                pagehost::SessionTurn turn,
                                                pagehost::AnswerSink* sink) = 0;
  virtual void end_running_pages() = 0;
  virtual void sweep_sessions() = 0;
  virtual int code_page() const = 0;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_PAGES_H_
