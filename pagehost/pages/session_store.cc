#include "pagehost/pages/session_store.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace rk::pagehost {
namespace {

constexpr std::size_t kIdBytes = 16;  // 128 random bits

std::string secret_id(platform::Random& random) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::array<std::uint8_t, kIdBytes> bytes{};
  random.secret_bytes(bytes);
  std::string id;
  for (const std::uint8_t byte : bytes) {
    id += kHex[byte >> 4];
    id += kHex[byte & 15];
  }
  return id;
}

// What pages see says nothing of the identifier.
std::int32_t secret_number(platform::Random& random) {
  std::array<std::uint8_t, 4> bytes{};
  random.secret_bytes(bytes);
  std::uint32_t number = 0;
  for (const std::uint8_t byte : bytes) number = number << 8 | byte;
  return static_cast<std::int32_t>(number & 0x3FFFFFFF);
}

}  // namespace

bool SessionStore::admit(std::string_view id, Ready ready, Wanted wanted) {
  Turn turn;
  std::deque<Waiter> unwanted;  // let go without the lock
  {
    const std::lock_guard held(mutex_);
    const auto found = by_id_.find(std::string(id));
    if (found != by_id_.end()) {
      const std::shared_ptr<Entry>& entry = found->second;
      if (entry->in_use) {
        if (entry->waiting.size() >= most_waiting_) {
          const auto gone =
              std::stable_partition(entry->waiting.begin(), entry->waiting.end(),
                                    [](const Waiter& one) { return !one.wanted || one.wanted(); });
          std::move(gone, entry->waiting.end(), std::back_inserter(unwanted));
          entry->waiting.erase(gone, entry->waiting.end());
        }
        if (entry->waiting.size() >= most_waiting_) return false;
        entry->waiting.push_back({std::move(ready), std::move(wanted)});
        return true;
      }
      if (clock_.steady() - entry->last_used < entry->session.timeout) turn = turn_of(entry);
    }
  }
  ready(std::move(turn));
  return true;
}

SessionStore::Turn SessionStore::create() {
  auto entry = std::make_shared<Entry>();
  entry->session.id = secret_id(random_);
  entry->session.number = secret_number(random_);
  entry->session.timeout = timeout_;
  const std::lock_guard held(mutex_);
  if (by_id_.size() >= most_sessions_) drop_oldest();
  by_id_.emplace(entry->session.id, entry);
  entry->place = fresh_.insert(fresh_.end(), entry);
  entry->last_used = clock_.steady();
  entry->in_use = true;
  return Turn(&entry->session, [this, entry](Session*) { give_back(entry); });
}

// The caller holds the mutex.
SessionStore::Turn SessionStore::turn_of(std::shared_ptr<Entry> entry) {
  entry->in_use = true;
  Entries& from = list_of(*entry);
  entry->returned = true;
  returned_.splice(returned_.end(), from, entry->place);
  Session* session = &entry->session;
  return Turn(session, [this, entry = std::move(entry)](Session*) { give_back(entry); });
}

void SessionStore::give_back(const std::shared_ptr<Entry>& entry) {
  std::deque<Waiter> to_call;
  Turn turn;
  {
    const std::lock_guard held(mutex_);
    entry->in_use = false;
    entry->last_used = clock_.steady();
    count_bytes(*entry);
    if (entry->gone) {
      to_call.swap(entry->waiting);
    } else if (!entry->waiting.empty()) {
      to_call.push_back(std::move(entry->waiting.front()));
      entry->waiting.pop_front();
      turn = turn_of(entry);
    }
  }
  for (Waiter& waiter : to_call) waiter.ready(std::move(turn));
}

void SessionStore::remove(const Turn& turn) {
  const std::lock_guard held(mutex_);
  const auto found = by_id_.find(turn->id);
  if (found != by_id_.end()) take_out(std::shared_ptr<Entry>(found->second));
}

void SessionStore::take_out(const std::shared_ptr<Entry>& entry) {
  entry->gone = true;
  bytes_ -= std::exchange(entry->counted_bytes, 0);
  list_of(*entry).erase(entry->place);
  by_id_.erase(entry->session.id);
}

// False where all are in use.
bool SessionStore::drop_oldest() {
  for (Entries* entries : {&fresh_, &returned_}) {
    for (const auto& entry : *entries) {
      if (entry->in_use) continue;
      take_out(std::shared_ptr<Entry>(entry));
      ++dropped_;
      return true;
    }
  }
  return false;
}

void SessionStore::count_bytes(Entry& entry) {
  if (entry.gone) return;
  const std::size_t now = entry.session.bytes + entry.session.object_bytes;
  bytes_ += now - entry.counted_bytes;
  entry.counted_bytes = now;
  // The entry's own session is not in use here; the one of a visitor who keeps little would not
  // help, but it is the oldest that goes, whatever it keeps.
  while (bytes_ > most_bytes_ && drop_oldest()) {
  }
}

std::size_t SessionStore::take_dropped() {
  const std::lock_guard held(mutex_);
  return std::exchange(dropped_, 0);
}

std::vector<SessionStore::Turn> SessionStore::take_expired() {
  const Moment now = clock_.steady();
  return take_if(
      [now](const Entry& entry) { return now - entry.last_used >= entry.session.timeout; });
}

std::vector<SessionStore::Turn> SessionStore::take_all() {
  return take_if([](const Entry&) { return true; });
}

std::vector<SessionStore::Turn> SessionStore::take_if(
    const std::function<bool(const Entry&)>& wanted) {
  std::vector<Turn> out;
  const std::lock_guard held(mutex_);
  std::vector<std::shared_ptr<Entry>> taken;
  for (const auto& [id, entry] : by_id_) {
    if (!entry->in_use && wanted(*entry)) taken.push_back(entry);
  }
  for (const auto& entry : taken) {
    take_out(entry);
    entry->in_use = true;
    out.push_back(Turn(&entry->session, [this, entry](Session*) { give_back(entry); }));
  }
  return out;
}

std::size_t SessionStore::size() const {
  const std::lock_guard held(mutex_);
  return by_id_.size();
}

}  // namespace rk::pagehost
