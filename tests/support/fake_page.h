// A page for tests: request values, an application store, a recording database, files in memory
// and what was written to the response. page.context is bound as OnStartPage binds it.
#ifndef RK_TESTS_SUPPORT_FAKE_PAGE_H_
#define RK_TESTS_SUPPORT_FAKE_PAGE_H_

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/page.h"
#include "site/page_context.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_database.h"

namespace rk::tests {

class FakeResponse : public platform::Response {
 public:
  void write(std::string_view utf8) override { body += utf8; }
  [[noreturn]] void end() override { throw platform::PageEnd{}; }
  [[noreturn]] void redirect(std::string_view address) override {
    location = address;
    throw platform::PageEnd{};
  }

  std::string body;
  std::string location;
};

// Names in lower case, as none of the lookups minds letter case.
class FakeRequest : public platform::Request {
 public:
  Value query(std::string_view name) override { return found(queries, name); }
  Value form(std::string_view name) override { return found(forms, name); }
  Value server_variable(std::string_view name) override { return found(server_variables, name); }
  Value item(std::string_view name) override;

  std::map<std::string, std::string> queries;
  std::map<std::string, std::string> forms;
  std::map<std::string, std::string> server_variables;

 private:
  static Value found(const std::map<std::string, std::string>& values, std::string_view name);
};

class FakeApplication : public platform::Application {
 public:
  Value value(std::string_view name) override;
  void set_value(std::string_view name, Value value) override;
  void lock() override { events.emplace_back("lock"); }
  void unlock() override { events.emplace_back("unlock"); }

  std::map<std::string, Value> values;  // by lower-case names
  std::vector<std::string> events;      // "lock", "set NAME", "unlock"
};

class FakeSession : public platform::Session {
 public:
  Value value(std::string_view name) override;
  void set_value(std::string_view name, Value value) override;

  std::map<std::string, Value> values;
};

// Maps /x to /site/x.
class FakeServer : public platform::Server {
 public:
  std::unique_ptr<platform::Connection> create_connection() override { return db.connection(); }
  platform::Files& files() override { return site_files; }
  std::string map_path(std::string_view virtual_path) override;
  std::string url_encode(std::string_view utf8) override;

  RecordingDatabase db;
  MemoryFiles site_files;
};

class FakeScriptingContext : public platform::ScriptingContext {
 public:
  std::string_view type_name() const override { return "IScriptingContext"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override { raise(errors::kNoSuchMember); }

  std::shared_ptr<platform::Response> response() override;
  std::shared_ptr<platform::Server> server() override;
  std::shared_ptr<platform::Request> request() override;
  std::shared_ptr<platform::Application> application() override;
  std::shared_ptr<platform::Session> session() override;

  std::shared_ptr<FakeResponse> fake_response = std::make_shared<FakeResponse>();
  std::shared_ptr<FakeServer> fake_server = std::make_shared<FakeServer>();
  std::shared_ptr<FakeRequest> fake_request = std::make_shared<FakeRequest>();
  std::shared_ptr<FakeApplication> fake_application = std::make_shared<FakeApplication>();
  std::shared_ptr<FakeSession> fake_session = std::make_shared<FakeSession>();
  std::vector<std::string> taken;  // which of the five were asked for, in order
};

// A site with one template folder: the database answers that the master site uses "blue", that
// SysTem names no domain, and Rk_ConnStr is "Data Source=shop.db".
// At its end every statement must have been sent in a view: what a call reads is of one state of
// the database.
class FakePage {
 public:
  FakePage();
  ~FakePage();
  FakePage(const FakePage&) = delete;
  FakePage& operator=(const FakePage&) = delete;

  void put_template(std::string_view file, std::string text);
  // The statements after the two with which every renderer finds its template folder.
  std::vector<std::string> statements() const;
  // The same of the whole log, in which those have a connection of their own, the first that is
  // closed.
  std::vector<std::string> log() const;

  Ref<FakeScriptingContext> scripting = make_ref<FakeScriptingContext>();
  FakeResponse& response = *scripting->fake_response;
  FakeRequest& request = *scripting->fake_request;
  FakeApplication& application = *scripting->fake_application;
  FakeSession& session = *scripting->fake_session;
  FakeServer& server = *scripting->fake_server;
  RecordingDatabase& db = server.db;
  MemoryFiles& files = server.site_files;
  site::PageContext context;
  // The statements by which the call writes: they are sent outside of views, before it reads.
  std::vector<std::string> writes;
};

// The number of the error that a step raises, 0 where it raises none.
template <class Step>
std::int32_t error_of(Step&& step) {
  try {
    step();
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_FAKE_PAGE_H_
