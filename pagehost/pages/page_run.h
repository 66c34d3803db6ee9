// PageRun: one request's page, from its first statement to its last object: the host of its
// script, what its objects are offered, and the answer in the making. On one thread.
#ifndef RK_PAGEHOST_PAGES_PAGE_RUN_H_
#define RK_PAGEHOST_PAGES_PAGE_RUN_H_

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/host_state.h"
#include "pagehost/pages/page_time.h"
#include "pagehost/pages/programs.h"
#include "pagehost/pages/request.h"
#include "pagehost/pages/response.h"
#include "pagehost/pages/server_object.h"
#include "pagehost/pages/session_object.h"
#include "vbscript/host.h"
#include "vbscript/interpreter.h"

namespace rk::pagehost {

// Pages that run inside one another by Server.Execute.
inline constexpr std::size_t kMaxExecuteDepth = 16;

class PageRun final : public vbscript::Host, public PageServices, public SessionHolder {
 public:
  // All outlive the run. The turn may be empty.
  PageRun(HostState& host, ApplicationLives::Life life, const PageRequest& request,
          SessionStore::Turn turn, AnswerSink* sink);
  ~PageRun() override;

  // Runs a page to its end. What it does wrong is in the answer and in the log; nothing is thrown.
  PageAnswer answer(const std::shared_ptr<const CompiledPage>& page);
  // Runs an event of the start-up script, where it has it.
  void run_event(std::string_view procedure);

  // For Server. Raises -2147221005 where no class has this name.
  Value create(std::string_view program_identifier);
  void execute(std::string_view path);
  [[noreturn]] void transfer(std::string_view path);
  PageTime& time() { return *time_; }
  // Of the page that Server.Execute ran last, where it failed.
  const std::optional<PageFailure>& last_failure() const { return last_failure_; }

  // Objects of <object> declarations, by scope; Empty where none has this name.
  using Scope = ObjectDeclaration::Scope;
  Value declared_object(std::string_view id, Scope scope);
  std::vector<std::string> declared_names(Scope scope) const;

  std::optional<Value> lookup(std::string_view name) override;
  void write(std::string_view utf8) override { response_->write(utf8); }
  void write(const Value& value) override { response_->write(value); }
  Value create_object(std::string_view program_identifier) override;
  void check_time() override { time_->check(); }
  const vbscript::Services& services() const override { return services_; }

  std::shared_ptr<platform::Database> database() override;
  std::shared_ptr<const PageWatch> watch() override { return time_; }
  std::shared_ptr<HeldMemory> memory() override { return memory_; }
  platform::Files& files() override { return host_.page_files; }
  const platform::CodePages& code_pages() override { return *host_.parts.code_pages; }
  const platform::Clock& clock() override { return *host_.parts.clock; }
  platform::Random& random() override { return *host_.parts.random; }
  int ansi_code_page() const override { return host_.options.ansi_code_page; }
  int page_code_page() const override { return response_->code_page(); }
  std::string map_path(std::string_view virtual_path) override;
  const std::string& site_root() const override { return host_.options.site_root; }
  Ref<platform::ScriptingContext> context() override;

  Session& session() override;
  int response_code_page() const override { return response_->code_page(); }
  void change_code_page(int code_page) override { response_->set_code_page(code_page); }

 private:
  struct Running {
    const CompiledPage* page;
    const vbscript::Interpreter* script;
  };

  void begin(const CompiledPage& page);
  void guarded(const std::function<void()>& work);
  void run(const std::shared_ptr<const CompiledPage>& page);
  void run_in_transaction(vbscript::Interpreter& script);
  void run_procedure(std::string_view procedure);
  void in_script(const CompiledPage& page, const std::function<void(vbscript::Interpreter&)>& work);
  std::shared_ptr<const CompiledPage> page_at(std::string_view path);
  void start_session();
  void weigh_session();
  void end_objects();
  Ref<Object> made(std::string_view program_identifier, const KnownError& otherwise);
  const ObjectDeclaration* declaration(std::string_view id, Scope scope) const;
  std::string place() const;
  std::string log_mark() const;
  std::string words_for_strangers() const;
  void fail(PageFailure failure, std::string_view source);
  void fail_at_place(std::int32_t number, std::string text);

  HostState& host_;
  const ApplicationLives::Life life_;  // before all that refers to it
  const PageRequest& sent_;
  SessionStore::Turn turn_;
  bool session_enabled_ = true;
  std::shared_ptr<PageTime> time_;
  std::shared_ptr<HeldMemory> memory_ = std::make_shared<HeldMemory>();
  std::shared_ptr<PageResponse> response_;
  std::shared_ptr<RequestView> request_;
  std::shared_ptr<ServerView> server_;
  std::shared_ptr<ApplicationView> application_;
  std::shared_ptr<SessionView> session_view_;
  std::shared_ptr<platform::Database> database_;
  Ref<platform::ScriptingContext> context_;
  vbscript::Services services_;
  std::vector<Running> running_;
  std::string failed_place_;  // where the page was when it was ended
  std::optional<PageFailure> last_failure_;
  std::shared_ptr<bool> aborted_ = std::make_shared<bool>(false);  // by ObjectContext
  std::optional<PageFailure> inner_failure_;   // of the page that Server.Execute ran last
  std::map<std::string, Value> page_objects_;  // by lower-case id
  std::vector<Ref<Object>> to_end_;            // objects with OnEndPage
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_RUN_H_
