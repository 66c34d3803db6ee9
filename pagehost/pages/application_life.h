// ApplicationLife: the application from its start-up script's OnStart to its OnEnd, with what lives
// as long; and ApplicationLives, which lets a new one follow when the script changed.
//
// A page stays in one life from its beginning to its end. A change waits for the pages in progress,
// and pages that come meanwhile wait for the change. A page that runs on beyond that (it may be
// waiting for one of those) keeps the life that it began in. Several threads may call.
#ifndef RK_PAGEHOST_PAGES_APPLICATION_LIFE_H_
#define RK_PAGEHOST_PAGES_APPLICATION_LIFE_H_

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "pagehost/pages/application_store.h"
#include "pagehost/pages/page_cache.h"
#include "pagehost/pages/page_host.h"
#include "pagehost/pages/page_reader.h"
#include "pagehost/pages/session_store.h"
#include "value/object.h"

namespace rk::pagehost {

// Script and files are settled before any page enters.
struct ApplicationLife {
  ApplicationLife(const PageHostOptions& options, const PageHostParts& parts)
      : sessions(*parts.clock, *parts.random, options.session_timeout, options.max_sessions,
                 kMaxWaitingTurns) {}

  // global.asa; null where the site has none or it does not compile.
  std::shared_ptr<const CompiledPage> start_up;
  std::optional<PageFailure> failure;  // why it does not compile
  std::vector<FileState> files;        // of which it was made
  ApplicationStore application;
  // Behind the application, which objects that a session keeps refer to.
  SessionStore sessions;
  // Objects of <object scope="Application">, made when first used.
  std::mutex objects_mutex;
  std::map<std::string, Ref<Object>> objects;  // by lower-case id

 private:
  friend class ApplicationLives;
  std::size_t stays_ = 0;  // under the mutex of the lives
};

class ApplicationLives {
 public:
  using Life = std::shared_ptr<ApplicationLife>;
  // How often the files of the start-up script are looked at, at most: by the first page that
  // comes then, so that no other page pays for it.
  static constexpr std::chrono::milliseconds kLookEvery{500};

  // `first` is the life before the start.
  ApplicationLives(Life first, std::chrono::milliseconds longest_wait)
      : longest_wait_(longest_wait), life_(std::move(first)) {}

  // A page's stay; over when it goes.
  class Stay {
   public:
    Stay(ApplicationLives& lives, Life life) : lives_(&lives), life_(std::move(life)) {}
    Stay(Stay&& other) noexcept : lives_(other.lives_), life_(std::move(other.life_)) {}
    ~Stay();
    Stay& operator=(Stay&&) = delete;
    const Life& life() const { return life_; }

   private:
    ApplicationLives* lives_;
    Life life_;  // null where moved from
  };

  // The right of one thread to let another life follow; the old one stays where none was given.
  class Change {
   public:
    explicit Change(ApplicationLives& lives) : lives_(&lives) {}
    Change(Change&& other) noexcept : lives_(std::exchange(other.lives_, nullptr)) {}
    ~Change();
    Change& operator=(Change&&) = delete;
    const Life& old() const { return lives_->life_; }
    void follow(Life next) { next_ = std::move(next); }

   private:
    ApplicationLives* lives_;
    Life next_;
  };

  Life now() const;  // never waits
  Stay enter();
  bool is_changing() const { return changing_; }

  // Whether it is this thread's to look at the files now.
  bool take_look(std::chrono::steady_clock::time_point now);
  // Once the pages in progress are over, or have been waited for long enough. Nothing where
  // another thread is at it.
  std::optional<Change> begin_change();

  // Lives before this one that still have sessions of pages in progress then.
  std::vector<Life> earlier() const;
  void forget_earlier_without_sessions();

 private:
  void end_change(Life next);
  void leave(ApplicationLife& life);

  const std::chrono::milliseconds longest_wait_;
  std::atomic<std::chrono::steady_clock::rep> next_look_{0};
  std::atomic<bool> changing_{false};  // written under the mutex
  mutable std::mutex mutex_;           // of all below, and of the lives' stays
  std::condition_variable changed_;
  std::condition_variable emptied_;
  Life life_;
  std::vector<Life> earlier_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_APPLICATION_LIFE_H_
