#include "adapters/sqlite/session.h"

#include <algorithm>
#include <utility>

#include "adapters/sqlite/failure.h"
#include "adapters/sqlite/rowset.h"
#include "value/script_error.h"

namespace rk::sqlite {
namespace {

// Buffers of closed record sets kept for the next ones: a list and what it looks up for each row.
constexpr std::size_t kKeptBuffers = 4;
// A buffer that grew larger than this is not kept.
constexpr std::size_t kKeptBufferBytes = std::size_t{1} << 20;

constexpr KnownError kNoTransaction{-2147168242, "No transaction is active."};

}  // namespace

Session::Session(std::shared_ptr<const PageState> page, std::shared_ptr<DatabaseFile> file)
    : page_(std::move(page)), file_(std::move(file)) {
  buffers_.reserve(kKeptBuffers);
}

Session::~Session() = default;

void Session::attach() {
  if (handle_ == nullptr) {
    handle_ = file_->borrow();
    handle_->watch(&page_->hooks.limits);
  }
  ++attached_;
}

void Session::detach() noexcept {
  if (--attached_ > 0) return;
  while (transactions_ > 0) roll_back_transaction();
  read_depth_ = 0;
  handle_->end_view();
  file_->give_back(std::move(handle_));
}

void Session::enter_view() {
  if (transactions_ == 0 && !handle_->in_view()) handle_->begin_view();
}

void Session::end_read() noexcept {
  if (read_depth_ == 0 || --read_depth_ > 0) return;
  pause_sets();
  handle_->end_view();
}

void Session::leave_queue() noexcept {
  if (std::exchange(queued_, false)) file_->writers().leave();
}

void Session::begin_writing() {
  const auto asked = std::chrono::steady_clock::now();
  settle_sets();
  // A view must end first: a transaction that has read cannot become a writer once another one
  // has written. A scope around it goes on with a new view.
  handle_->end_view();
  if (!file_->writers().enter(hooks().limits.expired)) {
    if (hooks().limits.end) hooks().limits.end();
    raise_timeout();
  }
  queued_ = true;
  start_write(asked);
}

// Where another process held the file while this writer was in the queue, it waited for it there.
void Session::start_write(WriterQueue::TimePoint asked) {
  WriterQueue& queue = file_->writers();
  std::optional<WriterQueue::TimePoint> waited = queue.held_since();
  if (waited) waited = std::max(*waited, asked);
  try {
    handle_->begin_write(waited);
    queue.note_held(std::nullopt);
  } catch (...) {
    queue.note_held(handle_->waited_in_vain_since());
    handle_->roll_back();
    leave_queue();
    throw;
  }
}

void Session::end_writing(bool keep) {
  try {
    if (keep) handle_->commit_write();
  } catch (...) {
    handle_->roll_back();
    leave_queue();
    throw;
  }
  handle_->roll_back();
  leave_queue();
}

void Session::begin_transaction() {
  if (transactions_ == 0) {
    begin_writing();
  } else {
    handle_->begin_part();
  }
  ++transactions_;
}

void Session::check_transaction() {
  notice_lost_transaction();
  if (transactions_ == 0) raise(kNoTransaction);
}

void Session::commit_transaction() {
  check_transaction();
  settle_sets();
  if (--transactions_ == 0) {
    end_writing(true);
  } else {
    handle_->end_part(true);
  }
}

void Session::roll_back_transaction() noexcept {
  notice_lost_transaction();
  if (transactions_ == 0) return;
  pause_sets();
  if (--transactions_ == 0) {
    handle_->roll_back();
    leave_queue();
  } else {
    handle_->end_part(false);
  }
}

void Session::notice_lost_transaction() noexcept {
  if (transactions_ == 0 || handle_->in_transaction()) return;
  transactions_ = 0;
  leave_queue();
}

void Session::add(Rowset& set) {
  set.next_ = sets_;
  set.previous_ = nullptr;
  if (sets_ != nullptr) sets_->previous_ = &set;
  sets_ = &set;
}

void Session::remove(Rowset& set) noexcept {
  (set.previous_ != nullptr ? set.previous_->next_ : sets_) = set.next_;
  if (set.next_ != nullptr) set.next_->previous_ = set.previous_;
}

void Session::close_sets_of(const void* owner) noexcept {
  for (Rowset* set = sets_; set != nullptr;) {
    Rowset* next = set->next_;
    if (set->owner() == owner) set->shut();
    set = next;
  }
}

void Session::settle_sets() {
  for (Rowset* set = sets_; set != nullptr; set = set->next_) set->settle();
}

void Session::pause_sets() noexcept {
  for (Rowset* set = sets_; set != nullptr; set = set->next_) set->pause();
}

RowBuffer Session::take_buffer() {
  if (buffers_.empty()) return {};
  RowBuffer buffer = std::move(buffers_.back());
  buffers_.pop_back();
  return buffer;
}

void Session::give_buffer(RowBuffer buffer) noexcept {
  if (buffers_.size() < kKeptBuffers && buffer.bytes() <= kKeptBufferBytes) {
    buffers_.push_back(std::move(buffer));
  }
}

Change::Change(Session& session, bool several)
    : session_(session), inside_(session.in_transaction()), part_(inside_ && several) {
  if (!inside_) {
    session_.begin_writing();
    return;
  }
  session_.settle_sets();
  if (part_) session_.handle().begin_part();
}

Change::~Change() {
  if (done_) return;
  if (!inside_) {
    session_.handle().roll_back();
    session_.leave_queue();
    return;
  }
  if (part_) session_.handle().end_part(false);
  session_.notice_lost_transaction();
}

void Change::keep() {
  done_ = true;
  if (!inside_) {
    session_.end_writing(true);
  } else if (part_) {
    session_.handle().end_part(true);
  }
}

}  // namespace rk::sqlite
