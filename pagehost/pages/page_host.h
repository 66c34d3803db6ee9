// PageHost: runs the .asp pages of one site folder, without a network. For the HTTP front and for
// running one page from the command line.
//
// start() first, stop() last, both by one thread; between them any number of threads may call the
// rest. run() uses the calling thread, whose stack should be vbscript::kPageThreadStackBytes.
#ifndef RK_PAGEHOST_PAGES_PAGE_HOST_H_
#define RK_PAGEHOST_PAGES_PAGE_HOST_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "pagehost/pages/log.h"
#include "pagehost/pages/page_request.h"
#include "pagehost/pages/programs.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/database.h"
#include "platform/files.h"
#include "platform/random.h"
#include "platform/regexp.h"
#include "value/value.h"

namespace rk::pagehost {

inline constexpr int kAutoCodePage = 0;
// Sessions at once: at some 2 KiB an unused one, a flood of visitors without cookies costs 128 MiB.
inline constexpr std::size_t kMaxSessions = 65536;
// Requests that wait for their session's turn, a session: a browser opens six connections.
inline constexpr std::size_t kMaxWaitingTurns = 32;

enum class ShowErrors : std::uint8_t { Local, All, None };

struct PageHostOptions {
  std::string site_root;  // physical path, without a "/" behind it
  std::chrono::seconds page_time{180};
  int page_code_page = kAutoCodePage;
  int ansi_code_page = platform::kGb2312;
  ShowErrors show_errors = ShowErrors::Local;
  std::string session_samesite = "Lax";
  std::chrono::minutes session_timeout{20};
  std::size_t max_sessions = kMaxSessions;
  // When the start-up script changed: how long pages in progress are waited for. One of them may
  // itself wait for a page that waits for the change.
  std::chrono::milliseconds longest_drain{5000};
  std::string not_found;  // virtual path of the page run in place of a 404; empty: none
  std::string server_software = "Rkclient";
};

// Referred to, not owned; all outlive the host.
struct PageHostParts {
  platform::Files* files = nullptr;
  platform::Files* page_files = nullptr;  // what pages handle files by; null: the same
  const platform::CodePages* code_pages = nullptr;
  const platform::Clock* clock = nullptr;
  platform::Random* random = nullptr;
  const platform::Regexps* regexps = nullptr;  // may be null
  const Programs* programs = nullptr;
  Log* log = nullptr;
  // One a page that asks for it. The database ends a statement when watch->over().
  std::function<std::shared_ptr<platform::Database>(std::shared_ptr<const PageWatch> watch)>
      make_database;
};

// The right to run as a session's one page; given back when it goes. Empty where the request
// belongs to no session that is known.
class SessionTurn {
 public:
  SessionTurn() = default;
  // `life` names the life of the application that the session is of.
  SessionTurn(std::shared_ptr<void> held, const void* life) : held_(std::move(held)), life_(life) {}
  bool is_of(const void* life) const { return life_ == life; }

 private:
  friend class PageHost;
  std::shared_ptr<void> held_;  // keeps that life
  const void* life_ = nullptr;
};

class PageHost {
 public:
  PageHost(PageHostOptions options, PageHostParts parts);
  ~PageHost();  // stops
  PageHost(const PageHost&) = delete;
  PageHost& operator=(const PageHost&) = delete;

  // Settles the code page and runs Application_OnStart. An error there is logged, and pages run.
  void start();
  // Stops without the events of the start-up script, for whoever only looked.
  void leave();
  // Ends the sessions (Session_OnEnd) and the application (Application_OnEnd). No page may run.
  void stop();
  // Every running page ends as by "Script timed out", with an answer, and so does a later one.
  void end_running_pages();

  // The code page of pages, requests and responses; known after start().
  int code_page() const;

  // A value of the application, for the site's owner; Empty where never stored.
  Value application_value(std::string_view name) const;

  // Whether a path is a page's by its name (".asp" in any letter case).
  static bool is_page(std::string_view path);

  // Asks for the turn of the request's session. `ready` is called with it: at once on this thread
  // where the session is free or there is none, otherwise on the thread of the page that ran
  // before, so it should only hand on to a pool. False: too many wait for that session, and
  // `ready` is never called. Where `wanted` says no, a request that waits makes room for others.
  bool admit(const PageRequest& request, std::function<void(SessionTurn)> ready,
             std::function<bool()> wanted = {});

  // Runs a page. Never throws what the page did: errors are answers and lines of the log. A page
  // that is not there: 404, or the not_found page. Where global.asa or an include of it changed,
  // the application ends and begins anew before the page; where it does not compile, every page
  // answers with its error.
  PageAnswer run(const PageRequest& request, SessionTurn turn, AnswerSink* sink = nullptr);
  // The same, waiting for the session's turn on this thread.
  PageAnswer run(const PageRequest& request);
  // The 404 of a path that is no page: the not_found page with "404;" and the address asked for,
  // or a plain text.
  PageAnswer answer_not_found(const PageRequest& request, SessionTurn turn,
                              AnswerSink* sink = nullptr);

  // Lets work have the services of a page that nobody asked for, for looking at what pages are
  // offered.
  void with_page(const std::function<void(PageServices&)>& work);

  // Ends the sessions whose time is over; to be called every minute or so.
  void sweep_sessions();

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_HOST_H_
