#include "pagehost/pages/page_host.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pagehost/pages/application_life.h"
#include "pagehost/pages/code_page_choice.h"
#include "pagehost/pages/host_state.h"
#include "pagehost/pages/page_failure_text.h"
#include "pagehost/pages/page_run.h"
#include "pagehost/pages/url_text.h"
#include "pagehost/pages/virtual_path.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kStartUpScript = "/global.asa";

// The session identifier that a request brings, or empty.
std::string session_id_of(const PageRequest& request) {
  for (const auto& [name, value] : request.headers) {
    if (!equal_ignoring_case(name, "cookie")) continue;
    const std::string mark = std::string(kSessionCookie) + "=";
    for (std::size_t at = 0; (at = value.find(mark, at)) != std::string::npos; ++at) {
      if (at != 0 && value[at - 1] != ' ' && value[at - 1] != ';') continue;
      const std::size_t from = at + mark.size();
      return value.substr(from, value.find(';', from) - from);
    }
  }
  return {};
}

PageAnswer plain_answer(int status, std::string reason, std::string_view words) {
  PageAnswer answer;
  answer.status = status;
  answer.body = plain_page(status, reason, words);
  answer.reason = std::move(reason);
  answer.headers = {{"Content-Type", "text/html; charset=utf-8"}, {"Cache-Control", "private"}};
  return answer;
}

PageAnswer not_found_answer() {
  return plain_answer(404, "Not Found", "There is nothing at this address.");
}

// In the bytes that came where they are known: they may be of any code page.
std::string missed_address(const PageRequest& request) {
  if (request.missed_address.starts_with('/')) return request.missed_address;
  const std::string address = header_safe_address(request.asked_path());
  return request.query.empty() ? address : address + "?" + request.query;
}

// A turn whose session lives as long as the turn does.
SessionTurn turn_of_life(SessionStore::Turn turn, ApplicationLives::Life life) {
  if (!turn || !life) return {};
  const void* const name = life.get();
  Session* const session = turn.get();
  return {
      std::shared_ptr<Session>(session,
                               [turn = std::move(turn), life = std::move(life)](Session*) mutable {
                                 turn.reset();  // before its life
                               }),
      name};
}

// Waits on this thread for what SessionStore::admit calls.
class Waiting {
 public:
  void ready(SessionTurn turn) {
    const std::lock_guard held(mutex_);
    turn_ = std::move(turn);
    called_ = true;
    changed_.notify_one();
  }
  SessionTurn turn() {
    std::unique_lock held(mutex_);
    changed_.wait(held, [&] { return called_; });
    return std::move(turn_);
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  SessionTurn turn_;
  bool called_ = false;
};

}  // namespace

class PageHost::Parts {
 public:
  Parts(PageHostOptions options, PageHostParts host_parts)
      : state_(std::move(options), std::move(host_parts)) {}

  HostState& state() { return state_; }

  // A life of the application by global.asa as it is now; its OnStart has not run.
  ApplicationLives::Life new_life() {
    auto life = std::make_shared<ApplicationLife>(state_.options, state_.parts);
    PageSource source = state_.reader.start_up_script(kStartUpScript, state_.code_page);
    life->files = source.files;
    if (!source.files.front().stamp) return life;  // the site has none
    auto script = std::make_shared<const CompiledPage>(
        compiled_page(std::string(kStartUpScript), std::move(source)));
    if (script->failure) {
      life->failure = script->failure;
      state_.parts.log->error(script->failure->report);
    } else {
      life->start_up = std::move(script);
    }
    return life;
  }

  // An event outside of any request.
  void run_event(const ApplicationLives::Life& life, std::string_view procedure,
                 SessionStore::Turn turn) {
    if (!life->start_up) return;
    PageRequest nobody;
    nobody.path = kStartUpScript;
    PageRun run(state_, life, nobody, std::move(turn), nullptr);
    run.run_event(procedure);
  }

  void start() {
    std::optional<ApplicationLives::Change> change = state_.lives.begin_change();
    if (!change) return;
    const ApplicationLives::Life life = new_life();
    run_event(life, "Application_OnStart", nullptr);
    change->follow(life);
    state_.lives.take_look(state_.parts.clock->steady());  // it has just been read
  }

  void end(const ApplicationLives::Life& life) {
    life->application.end_lock();  // of a page that was not waited for any longer
    end_sessions(life, life->sessions.take_all());
    run_event(life, "Application_OnEnd", nullptr);
  }

  // Where global.asa changed, this request ends the application and begins it anew.
  void renew(SessionTurn& turn) {
    if (!started || !state_.lives.take_look(state_.parts.clock->steady())) return;
    if (unchanged(*state_.parts.files, state_.lives.now()->files)) return;
    turn = SessionTurn();  // so that its session ends with the others
    if (auto change = state_.lives.begin_change()) {
      state_.parts.log->note(std::string(kStartUpScript) + " changed: the application starts anew");
      end(change->old());
      const ApplicationLives::Life life = new_life();
      run_event(life, "Application_OnStart", nullptr);
      change->follow(life);
    }
    end_earlier_sessions();
  }

  // The stay of a page that begins, in the life whose session it then has, or none.
  ApplicationLives::Stay enter(SessionTurn& turn) {
    renew(turn);
    if (state_.lives.is_changing()) turn = SessionTurn();
    ApplicationLives::Stay stay = state_.lives.enter();
    if (!turn.is_of(stay.life().get())) turn = SessionTurn();
    return stay;
  }

  void with_page(const std::function<void(PageServices&)>& work) {
    PageRequest nobody;
    nobody.path = "/";
    PageRun run(state_, state_.lives.now(), nobody, nullptr, nullptr);
    work(run);
  }

  void end_sessions(const ApplicationLives::Life& life, std::vector<SessionStore::Turn> turns) {
    for (SessionStore::Turn& turn : turns) run_event(life, "Session_OnEnd", std::move(turn));
  }

  // Those that a page had when its application ended.
  void end_earlier_sessions() {
    for (const ApplicationLives::Life& life : state_.lives.earlier()) {
      end_sessions(life, life->sessions.take_all());
    }
    state_.lives.forget_earlier_without_sessions();
  }

  std::atomic<bool> started = false;

 private:
  HostState state_;
};

PageHost::PageHost(PageHostOptions options, PageHostParts parts)
    : parts_(std::make_unique<Parts>(std::move(options), std::move(parts))) {}

PageHost::~PageHost() {
  stop();
}

void PageHost::start() {
  HostState& state = parts_->state();
  state.code_page = state.options.page_code_page;
  if (state.code_page == kAutoCodePage) {
    state.code_page = site_is_utf8(*state.parts.files, state.options.site_root)
                          ? platform::kUtf8
                          : state.options.ansi_code_page;
  }
  state.cache.set_code_page(state.code_page);
  parts_->start();
  parts_->started = true;
}

void PageHost::leave() {
  parts_->started = false;
}

void PageHost::stop() {
  if (!parts_->started.exchange(false)) return;
  *parts_->state().stopping = false;  // the events below may run
  parts_->end_earlier_sessions();
  parts_->end(parts_->state().lives.now());
}

void PageHost::end_running_pages() {
  *parts_->state().stopping = true;
  parts_->state().lives.now()->application.wake();
}

Value PageHost::application_value(std::string_view name) const {
  return parts_->state().lives.now()->application.value(name);
}

int PageHost::code_page() const {
  return parts_->state().code_page;
}

bool PageHost::is_page(std::string_view path) {
  constexpr std::string_view kEnding = ".asp";
  return path.size() > kEnding.size() &&
         equal_ignoring_case(path.substr(path.size() - kEnding.size()), kEnding);
}

bool PageHost::admit(const PageRequest& request, std::function<void(SessionTurn)> ready,
                     std::function<bool()> wanted) {
  HostState& state = parts_->state();
  const std::string id = session_id_of(request);
  const auto path = id.empty() ? std::nullopt : resolved_path("", request.path);
  const auto page = path ? state.cache.kept_page(*path) : nullptr;
  if (id.empty() || (page && !page->session_enabled)) {
    ready(SessionTurn());
    return true;
  }
  const ApplicationLives::Life life = state.lives.now();
  const std::weak_ptr<ApplicationLife> weak = life;  // or who waits would keep what it waits in
  return life->sessions.admit(
      id,
      [ready = std::move(ready), weak](SessionStore::Turn turn) {
        ready(turn_of_life(std::move(turn), weak.lock()));
      },
      std::move(wanted));
}

PageAnswer PageHost::run(const PageRequest& request, SessionTurn turn, AnswerSink* sink) {
  HostState& state = parts_->state();
  const auto path = resolved_path("", request.path);
  const auto page = path && is_page(*path) ? state.cache.page(*path) : nullptr;
  if (!page) return answer_not_found(request, std::move(turn), sink);
  const ApplicationLives::Stay stay = parts_->enter(turn);
  // Known by now also where the page was not read yet when it asked for its turn.
  if (!page->session_enabled) turn = SessionTurn();
  PageRun run(state, stay.life(), request, std::static_pointer_cast<Session>(std::move(turn.held_)),
              sink);
  return run.answer(page);
}

PageAnswer PageHost::run(const PageRequest& request) {
  const auto waiting = std::make_shared<Waiting>();
  const bool admitted =
      admit(request, [waiting](SessionTurn turn) { waiting->ready(std::move(turn)); });
  if (!admitted) {
    return plain_answer(503, "Service Unavailable", "Too many requests of one visitor at a time.");
  }
  return run(request, waiting->turn(), nullptr);
}

PageAnswer PageHost::answer_not_found(const PageRequest& request, SessionTurn turn,
                                      AnswerSink* sink) {
  HostState& state = parts_->state();
  const auto path = resolved_path("", state.options.not_found);
  const auto page = path && !path->empty() ? state.cache.page(*path) : nullptr;
  if (!page) return not_found_answer();
  PageRequest other = request;
  other.path = *path;
  other.path_info.clear();
  other.query = std::string("404;") + (request.secure ? "https://" : "http://") +
                std::string(request.header("host")) + missed_address(request);
  const ApplicationLives::Stay stay = parts_->enter(turn);
  PageRun run(state, stay.life(), other, std::static_pointer_cast<Session>(std::move(turn.held_)),
              sink);
  return run.answer(page);
}

void PageHost::with_page(const std::function<void(PageServices&)>& work) {
  parts_->with_page(work);
}

void PageHost::sweep_sessions() {
  HostState& state = parts_->state();
  parts_->end_earlier_sessions();
  const ApplicationLives::Stay stay = state.lives.enter();
  SessionStore& sessions = stay.life()->sessions;
  parts_->end_sessions(stay.life(), sessions.take_expired());
  if (const std::size_t dropped = sessions.take_dropped(); dropped > 0) {
    state.parts.log->note(std::to_string(dropped) +
                          " sessions were dropped to make room: more "
                          "than " +
                          std::to_string(state.options.max_sessions) + " visitors");
  }
}

}  // namespace rk::pagehost
