// Renders one region of a storefront without any page host: region SITE [AGENT].
//
// SITE is a site folder with its Template/ and data/shop.db. The library asks for a page's five
// objects; here they are a request without a visitor, whose answer is the program's output.
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "adapters/codepage/code_pages.h"
#include "adapters/posix/clock.h"
#include "adapters/posix/files.h"
#include "adapters/sqlite/engine.h"
#include "catalogue/host_list.h"
#include "platform/page.h"
#include "site/page_context.h"
#include "value/script_error.h"
#include "value/text.h"

namespace {

using namespace rk;

class Output final : public platform::Response {
 public:
  void write(std::string_view utf8) override { std::cout << utf8; }
  [[noreturn]] void end() override { throw platform::PageEnd{}; }
  [[noreturn]] void redirect(std::string_view) override { throw platform::PageEnd{}; }
};

class NoVisitor final : public platform::Request {
 public:
  Value query(std::string_view) override { return {}; }
  Value form(std::string_view) override { return {}; }
  // The host decides which storefront it is, and so which template.
  Value server_variable(std::string_view name) override {
    return Value::text(equal_ignoring_case(name, "http_host") ? "localhost" : "");
  }
  Value item(std::string_view) override { return {}; }
};

// What an application or a session keeps; names have no letter case.
template <class Interface>
class Kept : public Interface {
 public:
  Value value(std::string_view name) override { return values_[lowered_ascii(name)]; }
  void set_value(std::string_view name, Value value) override {
    values_[lowered_ascii(name)] = std::move(value);
  }

 private:
  std::map<std::string, Value> values_;
};

class OnlyApplication final : public Kept<platform::Application> {
 public:
  void lock() override {}  // there is one page
  void unlock() override {}
};

class Site final : public platform::Server {
 public:
  explicit Site(std::string folder)
      : folder_(std::move(folder)),
        files_({folder_}, code_pages_),
        engine_({.site_folder = folder_, .data_folders = {}}, files_, clock_),
        database_(engine_.page()) {}

  std::unique_ptr<platform::Connection> create_connection() override {
    return database_->connection();
  }
  platform::Files& files() override { return files_; }
  std::string map_path(std::string_view path) override { return folder_ + std::string(path); }
  std::string url_encode(std::string_view utf8) override { return std::string(utf8); }

 private:
  std::string folder_;
  codepage::IcuCodePages code_pages_;
  posix::PosixClock clock_;
  posix::PosixFiles files_;
  sqlite::Engine engine_;
  std::unique_ptr<platform::Database> database_;
};

class Page final : public platform::ScriptingContext {
 public:
  explicit Page(std::shared_ptr<Site> site) : site_(std::move(site)) {
    application_->set_value("Rk_ConnStr", Value::text("Data Source=data/shop.db"));
  }
  std::string_view type_name() const override { return "Page"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override { raise(errors::kNoSuchMember); }

  std::shared_ptr<platform::Response> response() override { return response_; }
  std::shared_ptr<platform::Server> server() override { return site_; }
  std::shared_ptr<platform::Request> request() override { return request_; }
  std::shared_ptr<platform::Application> application() override { return application_; }
  std::shared_ptr<platform::Session> session() override { return session_; }

 private:
  std::shared_ptr<Site> site_;
  std::shared_ptr<Output> response_ = std::make_shared<Output>();
  std::shared_ptr<NoVisitor> request_ = std::make_shared<NoVisitor>();
  std::shared_ptr<OnlyApplication> application_ = std::make_shared<OnlyApplication>();
  std::shared_ptr<Kept<platform::Session>> session_ = std::make_shared<Kept<platform::Session>>();
};

void show_plans(const std::string& folder, const std::string& agent) {
  const Ref<Page> page = make_ref<Page>(std::make_shared<Site>(folder));
  site::PageContext context;
  context.start(*page);

  catalogue::HostListParameters parameters;
  parameters.Style = Value::text("Table");
  parameters.ListNum = Value::text("0");
  parameters.NewLineNum = Value::text("0");
  parameters.OrderType = Value::text("Id");
  parameters.PageSize = Value::text("20");
  parameters.Agent_User = Value::text(agent);
  std::cout << catalogue::Show_HostList(context, parameters).view() << "\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: region SITE [AGENT]\n";
    return 2;
  }
  try {
    show_plans(argv[1], argc > 2 ? argv[2] : "");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "region: " << error.what() << "\n";
    return 1;
  }
}
