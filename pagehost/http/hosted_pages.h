// The pages of a PageHost, as the front runs them.
#ifndef RK_PAGEHOST_HTTP_HOSTED_PAGES_H_
#define RK_PAGEHOST_HTTP_HOSTED_PAGES_H_

#include <functional>

#include "pagehost/http/pages.h"

namespace rk::http {

class HostedPages final : public Pages {
 public:
  // The host outlives this.
  explicit HostedPages(pagehost::PageHost& host) : host_(host) {}
  bool admit(const pagehost::PageRequest& request, std::function<void(pagehost::SessionTurn)> ready,
             std::function<bool()> wanted) override;
  pagehost::PageAnswer run(const pagehost::PageRequest& request, pagehost::SessionTurn turn,
                           pagehost::AnswerSink* sink) override;
  pagehost::PageAnswer answer_not_found(const pagehost::PageRequest& request,
                                        pagehost::SessionTurn turn,
                                        pagehost::AnswerSink* sink) override;
  void end_running_pages() override;
  void sweep_sessions() override;
  int code_page() const override;

 private:
  pagehost::PageHost& host_;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_HOSTED_PAGES_H_
