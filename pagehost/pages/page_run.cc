#include "pagehost/pages/page_run.h"

#include <chrono>
#include <exception>
#include <new>
#include <utility>

#include "pagehost/pages/locked_object.h"
#include "pagehost/pages/page_failure_text.h"
#include "pagehost/pages/page_names.h"
#include "pagehost/pages/scripting_context.h"
#include "pagehost/pages/transaction_object.h"
#include "pagehost/pages/virtual_path.h"
#include "value/text.h"
#include "vbscript/limits.h"
#include "vbscript/regexp_object.h"
#include "vbscript/runtime_error.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kHostSource = "Page host";
// The language's own class, by the name that pages create it by.
constexpr std::string_view kRegExpClass = "VBScript.RegExp";
constexpr std::int32_t kHostError = errors::kSqlFailure;  // 80004005

std::uintptr_t stack_floor() {
  thread_local const std::uintptr_t floor = vbscript::stack_floor_of_this_thread();
  return floor;
}

PageFailure failure_of(const vbscript::RuntimeError& error) {
  return {error.number(), error.text(), error.path(), error.line(), ""};
}

std::string_view words_of(platform::PageEnd::Reason reason) {
  return reason == platform::PageEnd::Reason::OutOfMemory ? errors::kOutOfMemory.text
                                                          : "Script timed out";
}

constexpr std::string_view kAbortEvent = "OnTransactionAbort";
// For the abort of a page whose time is over: enough to note what happened.
constexpr std::chrono::seconds kAbortTime{5};

void call_if_defined(vbscript::Interpreter& script, std::string_view procedure) {
  if (script.defines(procedure)) script.call(procedure, {});
}

}  // namespace

PageRun::PageRun(HostState& host, ApplicationLives::Life life, const PageRequest& request,
                 SessionStore::Turn turn, AnswerSink* sink)
    : host_(host),
      life_(std::move(life)),
      sent_(request),
      turn_(std::move(turn)),
      time_(std::make_shared<PageTime>(*host.parts.clock, host.options.page_time, host.stopping)),
      response_(std::make_shared<PageResponse>(sink, *host.parts.code_pages, *host.parts.clock,
                                               host.code_page)),
      request_(std::make_shared<RequestView>(request, *host.parts.code_pages, response_,
                                             host.options.site_root, host.options.server_software)),
      server_(std::make_shared<ServerView>(*this)),
      application_(std::make_shared<ApplicationView>(life_->application, time_, this)),
      session_view_(std::make_shared<SessionView>(*this)) {
  services_.clock = host.parts.clock;
  services_.code_pages = host.parts.code_pages;
  services_.ansi_code_page = host.options.ansi_code_page;
  services_.regexps = host.parts.regexps;
  services_.stack_floor = stack_floor();
  time_->set_place([this] { return place(); });
  if (sink != nullptr) sink->wait_while([time = time_] { time->check(); });
}

PageRun::~PageRun() {
  to_end_.clear();
  page_objects_.clear();
  time_->page_is_over();
  server_->page_is_over();
  session_view_->page_is_over();
  application_->page_is_over();
  request_->forget_request();
}

PageAnswer PageRun::answer(const std::shared_ptr<const CompiledPage>& page) {
  guarded([&] {
    if (life_->failure) return fail(*life_->failure, vbscript::kCompilationSource);
    begin(*page);
    run(page);
  });
  guarded([&] { end_objects(); });
  if (turn_) weigh_session();
  if (turn_ && turn_->abandoned) {
    life_->sessions.remove(turn_);
    guarded([&] { run_procedure("Session_OnEnd"); });
  }
  return response_->take();
}

// Objects of a session grow behind its back; one that holds too much ends with the page.
void PageRun::weigh_session() {
  turn_->object_bytes = bytes_of_objects(*turn_);
  if (turn_->object_bytes <= kMaxSessionBytes) return;
  host_.parts.log->error(log_mark() + sent_.path + ": the session's objects hold " +
                         std::to_string(turn_->object_bytes >> 20) + " MiB, more than " +
                         std::to_string(kMaxSessionBytes >> 20) + ": the session ends");
  turn_->abandoned = true;
}

void PageRun::run_event(std::string_view procedure) {
  guarded([&] { run_procedure(procedure); });
  guarded([&] { end_objects(); });
}

void PageRun::begin(const CompiledPage& page) {
  session_enabled_ = page.session_enabled;
  int code_page = page.code_page;
  if (code_page == 0 && turn_ && session_enabled_) code_page = turn_->code_page;
  if (code_page != 0) response_->set_code_page(code_page);
  if (page.lcid != 0) response_->set_lcid(page.lcid);
  const bool has_start = life_->start_up && life_->start_up->program->defines("Session_OnStart");
  if (session_enabled_ && !turn_ && has_start) start_session();
}

// Everything that ends a page early ends here: this is the page run's one place that catches.
void PageRun::guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const platform::PageEnd& end) {
    if (end.reason == platform::PageEnd::Reason::Ended) return;
    fail_at_place(kHostError, std::string(words_of(end.reason)));
  } catch (const vbscript::RuntimeError& error) {
    // Of pages inside one another the innermost one is the one to name.
    const bool inner = inner_failure_ && inner_failure_->number == error.number();
    fail(inner ? std::move(*inner_failure_) : failure_of(error),
         error.source().empty() ? vbscript::kRuntimeSource : std::string_view(error.source()));
  } catch (const ScriptError& error) {
    fail_at_place(error.number(), error.description());
  } catch (const std::bad_alloc&) {
    fail_at_place(kHostError, std::string(errors::kOutOfMemory.text));
  } catch (const std::exception& error) {
    fail_at_place(kHostError, error.what());
  }
}

void PageRun::run(const std::shared_ptr<const CompiledPage>& page) {
  if (page->failure) return fail(*page->failure, vbscript::kCompilationSource);
  in_script(*page, [&](vbscript::Interpreter& script) {
    if (page->in_transaction) {
      run_in_transaction(script);
    } else {
      script.run();
    }
    script.finish();
  });
}

// A page that dies of an error or of its time ends its transaction by an abort; what it died of
// stays its answer.
void PageRun::run_in_transaction(vbscript::Interpreter& script) {
  try {
    script.run();
  } catch (const vbscript::RuntimeError&) {  // passed on
    guarded([&] { call_if_defined(script, kAbortEvent); });
    throw;
  } catch (const platform::PageEnd& end) {  // passed on
    if (end.reason == platform::PageEnd::Reason::TimedOut) {
      failed_place_ = place();
      time_->set_limit(time_->limit() + kAbortTime);
      guarded([&] { call_if_defined(script, kAbortEvent); });
    }
    throw;
  }
  call_if_defined(script, *aborted_ ? kAbortEvent : "OnTransactionCommit");
}

void PageRun::run_procedure(std::string_view procedure) {
  if (!life_->start_up || !life_->start_up->program->defines(procedure)) return;
  in_script(*life_->start_up, [&](vbscript::Interpreter& script) {
    script.run();
    script.call(procedure, {});
    script.finish();
  });
}

void PageRun::in_script(const CompiledPage& page,
                        const std::function<void(vbscript::Interpreter&)>& work) {
  // The script asks for its names while it is made.
  running_.push_back({&page, nullptr});
  try {
    vbscript::Interpreter script(page.program, *this);
    running_.back().script = &script;
    try {
      work(script);
    } catch (const vbscript::RuntimeError& error) {  // passed on: the page around may trap it
      if (running_.size() > 1) {
        inner_failure_ = failure_of(error);
        last_failure_ = inner_failure_;
      }
      throw;
    } catch (...) {  // passed on; the script still knows where it stood
      if (failed_place_.empty()) failed_place_ = place();
      throw;
    }
  } catch (...) {  // passed on
    running_.pop_back();
    throw;
  }
  running_.pop_back();
}

std::string PageRun::place() const {
  if (running_.empty() || running_.back().script == nullptr) return {};
  const Running& now = running_.back();
  const vbscript::SourcePlace place = now.script->place();
  const auto& files = now.page->program->files();
  const auto file = static_cast<std::size_t>(place.file);
  if (file >= files.size()) return now.page->path;
  return files[file] + ":" + std::to_string(place.line);
}

std::shared_ptr<const CompiledPage> PageRun::page_at(std::string_view path) {
  const std::string_view folder = running_.empty() ? "" : folder_of(running_.back().page->path);
  const auto target = resolved_path(folder, path);
  auto page = target ? host_.cache.page(*target) : nullptr;
  if (!page) throw ScriptError(kHostError, "The page was not found: '" + std::string(path) + "'");
  if (page->failure) throw ScriptError(page->failure->number, page->failure->report);
  return page;
}

void PageRun::execute(std::string_view path) {
  if (running_.size() >= kMaxExecuteDepth) raise(errors::kOutOfStack);
  run(page_at(path));
}

void PageRun::transfer(std::string_view path) {
  execute(path);
  throw platform::PageEnd{};
}

Session& PageRun::session() {
  if (!session_enabled_) {
    throw ScriptError(kHostError, "The page has no session: EnableSessionState is False");
  }
  if (!turn_) start_session();
  return *turn_;
}

void PageRun::start_session() {
  turn_ = life_->sessions.create();
  const std::string& same_site = host_.options.session_samesite;
  std::string cookie = std::string(kSessionCookie) + "=" + turn_->id + "; path=/; HttpOnly";
  if (!same_site.empty()) cookie += "; SameSite=" + same_site;
  if (sent_.secure || equal_ignoring_case(same_site, "none")) cookie += "; Secure";
  response_->set_session_cookie(std::move(cookie));
  run_procedure("Session_OnStart");
}

std::shared_ptr<platform::Database> PageRun::database() {
  if (!database_) database_ = host_.parts.make_database(time_);
  return database_;
}

std::string PageRun::map_path(std::string_view virtual_path) {
  const std::string_view folder = running_.empty() ? "" : folder_of(running_.front().page->path);
  const auto resolved = resolved_path(folder, virtual_path);
  if (!resolved) {
    throw ScriptError(kHostError,
                      "The path leads out of the site: '" + std::string(virtual_path) + "'");
  }
  const bool as_folder = !virtual_path.empty() && virtual_path.back() == '/' && !resolved->empty();
  return host_.options.site_root + *resolved + (as_folder ? "/" : "");
}

Ref<platform::ScriptingContext> PageRun::context() {
  if (!context_) {
    context_ = make_ref<ContextObject>(
        PageParts{response_, request_, server_, application_, session_view_}, *host_.parts.clock);
  }
  return context_;
}

std::optional<Value> PageRun::lookup(std::string_view name) {
  const Ref<platform::ScriptingContext> page = context();
  const MemberId id = page->member(name);
  if (id > kDefaultMember) return page->invoke(id, CallKind::Get, {});
  if (equal_ignoring_case(name, "ObjectContext")) {
    return Value::object(make_ref<TransactionObject>(aborted_));
  }
  for (const Scope scope : {Scope::Page, Scope::Session, Scope::Application}) {
    Value object = declared_object(name, scope);
    if (!object.is_empty()) return object;
  }
  if (running_.empty()) return std::nullopt;
  auto found = name_of_page(*running_.back().page, name);
  // One that global.asa asks for is every page's.
  if (!found && life_->start_up && life_->start_up->has_type_library) {
    found = type_library_constant(name);
  }
  return found;
}

Value PageRun::create(std::string_view program_identifier) {
  const Ref<Object> object = made(program_identifier, errors::kInvalidClassString);
  const MemberId on_start = object->member("OnStartPage");
  if (on_start != kNoMember) {
    Value context_value = Value::object(context());
    Value* arguments[] = {&context_value};
    object->invoke(on_start, CallKind::Method, arguments);
  }
  if (object->member("OnEndPage") != kNoMember) to_end_.push_back(object);
  return Value::object(object);
}

Value PageRun::create_object(std::string_view program_identifier) {
  return Value::object(made(program_identifier, errors::kCannotCreateObject));
}

Ref<Object> PageRun::made(std::string_view program_identifier, const KnownError& otherwise) {
  if (equal_ignoring_case(without_version(program_identifier), kRegExpClass)) {
    return Ref<Object>(vbscript::regexp_object(services_).as_object());
  }
  const ObjectFactory* factory = host_.parts.programs->find(program_identifier);
  if (factory == nullptr) {
    if (host_.is_new_unknown_program(program_identifier)) {
      // A declared object is made before the first statement.
      const bool begun = running_.empty() || running_.back().script != nullptr;
      const std::string where = begun ? place() : running_.back().page->path;
      host_.parts.log->note(log_mark() + where + ": no class is served by the name '" +
                            std::string(program_identifier) + "'");
    }
    raise(otherwise);
  }
  return (*factory)(*this);
}

const ObjectDeclaration* PageRun::declaration(std::string_view id, Scope scope) const {
  const auto in = [&](const CompiledPage* page) -> const ObjectDeclaration* {
    if (page == nullptr) return nullptr;
    for (const ObjectDeclaration& each : page->objects) {
      if (each.scope == scope && equal_ignoring_case(each.id, id)) return &each;
    }
    return nullptr;
  };
  const ObjectDeclaration* found = running_.empty() ? nullptr : in(running_.back().page);
  return found != nullptr ? found : in(life_->start_up.get());
}

std::vector<std::string> PageRun::declared_names(Scope scope) const {
  std::vector<std::string> names;
  if (!life_->start_up) return names;
  for (const ObjectDeclaration& each : life_->start_up->objects) {
    if (each.scope == scope) names.push_back(each.id);
  }
  return names;
}

Value PageRun::declared_object(std::string_view id, Scope scope) {
  const ObjectDeclaration* found = declaration(id, scope);
  if (found == nullptr) return {};
  const std::string key = lowered_ascii(id);
  if (scope == Scope::Page) {
    Value& object = page_objects_[key];
    if (object.is_empty()) object = create(found->program_identifier);
    return object;
  }
  if (scope == Scope::Session) {
    VariableStore& kept = session().objects;
    if (kept.find(key) == nullptr) kept.set(key, create(found->program_identifier));
    return *kept.find(key);
  }
  const std::lock_guard held(life_->objects_mutex);
  Ref<Object>& object = life_->objects[key];
  if (!object) {
    object = make_ref<LockedObject>(made(found->program_identifier, errors::kInvalidClassString));
  }
  return Value::object(object);
}

void PageRun::end_objects() {
  for (const Ref<Object>& object : std::exchange(to_end_, {})) {
    guarded([&] { object->invoke(object->member("OnEndPage"), CallKind::Method, {}); });
  }
}

void PageRun::fail_at_place(std::int32_t number, std::string text) {
  PageFailure failure{number, std::move(text), failed_place_, 0, ""};
  const std::size_t colon = failure.path.rfind(':');
  if (colon != std::string::npos) {
    failure.line = std::atoi(failure.path.c_str() + colon + 1);
    failure.path.resize(colon);
  }
  if (failure.path.empty()) failure.path = sent_.path;
  fail(std::move(failure), kHostSource);
}

// What lines of the log begin with, so that those of one request are found together.
std::string PageRun::log_mark() const {
  return sent_.id.empty() ? std::string() : "[" + sent_.id + "] ";
}

// A visitor who complains can tell which request it was.
std::string PageRun::words_for_strangers() const {
  std::string words = "The page could not be shown.";
  if (!sent_.id.empty()) words += " Its number in the log is " + sent_.id + ".";
  return words;
}

void PageRun::fail(PageFailure failure, std::string_view source) {
  if (failure.report.empty()) {
    failure.report = failure.path;
    if (failure.line > 0) failure.report += ":" + std::to_string(failure.line);
    failure.report += ": error " + error_number_text(failure.number) + ": " + failure.text;
  }
  host_.parts.log->error(log_mark() + failure.report);
  const bool shown = may_see_errors(sent_, host_.options.show_errors);
  response_->replace(500, "Internal Server Error",
                     shown ? failure_page(failure, source)
                           : plain_page(500, "Internal Server Error", words_for_strangers()));
}

}  // namespace rk::pagehost
