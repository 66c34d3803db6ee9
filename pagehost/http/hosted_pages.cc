#include "pagehost/http/hosted_pages.h"

namespace rk::http {

bool HostedPages::admit(const pagehost::PageRequest& request,
                        std::function<void(pagehost::SessionTurn)> ready,
                        std::function<bool()> wanted) {
  return host_.admit(request, std::move(ready), std::move(wanted));
}

pagehost::PageAnswer HostedPages::run(const pagehost::PageRequest& request,
                                      pagehost::SessionTurn turn, pagehost::AnswerSink* sink) {
  return host_.run(request, std::move(turn), sink);
}

pagehost::PageAnswer HostedPages::answer_not_found(const pagehost::PageRequest& request,
                                                   pagehost::SessionTurn turn,
                                                   pagehost::AnswerSink* sink) {
  return host_.answer_not_found(request, std::move(turn), sink);
}

void HostedPages::end_running_pages() {
  host_.end_running_pages();
}
void HostedPages::sweep_sessions() {
  host_.sweep_sessions();
}
int HostedPages::code_page() const {
  return host_.code_page();
}

}  // namespace rk::http
