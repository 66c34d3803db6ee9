// PageTime: how long one page may run still, and where it is. Made for a page and shared with what
// works on its behalf; told when the page is over, so that nothing kept longer looks at it.
#ifndef RK_PAGEHOST_PAGES_PAGE_TIME_H_
#define RK_PAGEHOST_PAGES_PAGE_TIME_H_

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "pagehost/pages/programs.h"
#include "platform/clock.h"
#include "platform/page.h"

namespace rk::pagehost {

class PageTime final : public PageWatch {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  PageTime(const platform::Clock& clock, std::chrono::seconds limit,
           std::shared_ptr<const std::atomic<bool>> stopping)
      : clock_(clock), began_(clock.steady()), limit_(limit), stopping_(std::move(stopping)) {}

  Moment deadline() const override {
    return running_ ? began_ + std::chrono::seconds(limit_) : Moment::max();
  }
  bool over() const override {
    return running_ && (*stopping_ || clock_.steady() >= began_ + limit_.load());
  }
  void check() const override {
    if (!running_) return;
    if (*stopping_) throw platform::PageEnd{platform::PageEnd::Reason::Stopping};
    if (over()) throw platform::PageEnd{platform::PageEnd::Reason::TimedOut};
  }
  std::string place() const override { return running_ && place_ ? place_() : std::string(); }

  std::chrono::seconds limit() const { return limit_; }
  // From the page's beginning.
  void set_limit(std::chrono::seconds limit) { limit_ = limit; }
  void set_place(std::function<std::string()> place) { place_ = std::move(place); }
  void page_is_over() { running_ = false; }

 private:
  const platform::Clock& clock_;
  Moment began_;
  std::atomic<std::chrono::seconds> limit_;
  std::atomic<bool> running_ = true;
  std::shared_ptr<const std::atomic<bool>> stopping_;
  std::function<std::string()> place_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_TIME_H_
