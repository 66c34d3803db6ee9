// SessionStore: the visitors' sessions, by identifier, each used by one page at a time. Several
// threads may call.
//
// Whoever holds a session's turn owns its contents; the turn is given back when it goes, and the
// next one who waits is called. Identifiers are the store's own: an unknown one is never adopted.
#ifndef RK_PAGEHOST_PAGES_SESSION_STORE_H_
#define RK_PAGEHOST_PAGES_SESSION_STORE_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pagehost/pages/variable_store.h"
#include "platform/clock.h"
#include "platform/random.h"

namespace rk::pagehost {

// What all sessions keep together: a flood of visitors, each of whom makes a page store much.
inline constexpr std::size_t kMaxSessionsBytes = std::size_t{512} << 20;

struct Session {
  std::string id;
  std::int32_t number = 0;  // Session.SessionID
  VariableStore contents;
  std::size_t bytes = 0;         // of the contents
  std::size_t object_bytes = 0;  // of what objects among them held when the last page ended
  VariableStore objects;         // of <object> declarations
  std::chrono::minutes timeout{20};
  bool abandoned = false;
  int code_page = 0;  // 0: the site's
  std::int32_t lcid = 2052;
};

class SessionStore {
 public:
  using Turn = std::shared_ptr<Session>;
  using Ready = std::function<void(Turn)>;
  using Wanted = std::function<bool()>;

  SessionStore(const platform::Clock& clock, platform::Random& random, std::chrono::minutes timeout,
               std::size_t most_sessions, std::size_t most_waiting,
               std::size_t most_bytes = kMaxSessionsBytes)
      : clock_(clock),
        random_(random),
        timeout_(timeout),
        most_sessions_(most_sessions),
        most_waiting_(most_waiting),
        most_bytes_(most_bytes) {}

  // Calls `ready` with the session's turn, at once or on the thread that gives it back; with an
  // empty turn where the identifier is unknown or its session ends before. False: too many wait,
  // also without those that are no longer `wanted` (asked under the store's lock; they are called
  // all the same as long as there is room for them).
  bool admit(std::string_view id, Ready ready, Wanted wanted = {});
  // A new session with its turn. Past the limits (of number, and of what all keep together) the
  // one that was used least lately goes; sessions that a visitor came back to stay longest.
  Turn create();
  // Takes a session out; what still holds its turn may finish.
  void remove(const Turn& turn);
  // Takes out those whose time is over, or all, with their turns. One in use stays.
  std::vector<Turn> take_expired();
  std::vector<Turn> take_all();
  std::size_t size() const;
  // How many sessions went to make room since this was asked last.
  std::size_t take_dropped();

 private:
  using Moment = std::chrono::steady_clock::time_point;
  struct Waiter {
    Ready ready;
    Wanted wanted;
  };
  struct Entry {
    Session session;
    bool in_use = false;
    bool returned = false;  // a second request came
    bool gone = false;
    Moment last_used{};
    std::size_t counted_bytes = 0;  // of bytes_
    std::deque<Waiter> waiting;
    std::list<std::shared_ptr<Entry>>::iterator place;
  };
  using Entries = std::list<std::shared_ptr<Entry>>;

  Turn turn_of(std::shared_ptr<Entry> entry);
  void give_back(const std::shared_ptr<Entry>& entry);
  void take_out(const std::shared_ptr<Entry>& entry);
  Entries& list_of(const Entry& entry) { return entry.returned ? returned_ : fresh_; }
  bool drop_oldest();
  void count_bytes(Entry& entry);
  std::vector<Turn> take_if(const std::function<bool(const Entry&)>& wanted);

  const platform::Clock& clock_;
  platform::Random& random_;
  std::chrono::minutes timeout_;
  std::size_t most_sessions_;
  std::size_t most_waiting_;
  std::size_t most_bytes_;
  std::size_t bytes_ = 0;  // of the contents of all sessions, each as its last page left it
  mutable std::mutex mutex_;
  std::unordered_map<std::string, std::shared_ptr<Entry>> by_id_;
  Entries fresh_;  // the least lately used first
  Entries returned_;
  std::size_t dropped_ = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_SESSION_STORE_H_
