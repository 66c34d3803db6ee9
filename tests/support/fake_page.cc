#include "tests/support/fake_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "value/text.h"

namespace rk::tests {

namespace {

constexpr std::string_view kActiveTemplate =
    "Select [templatePath] From [Rk_Template] Where [UseThis]=1";
constexpr std::string_view kMasterDomain = "Select Top 1 SiteDomain From SysTem";

Value stored(const std::map<std::string, Value>& values, std::string_view name) {
  const auto found = values.find(lowered_ascii(name));
  return found == values.end() ? Value() : found->second;
}

}  // namespace

Value FakeRequest::item(std::string_view name) {
  for (const auto* values : {&queries, &forms, &server_variables}) {
    Value value = found(*values, name);
    if (!value.is_empty()) return value;
  }
  return {};
}

Value FakeRequest::found(const std::map<std::string, std::string>& values, std::string_view name) {
  const auto found = values.find(lowered_ascii(name));
  return found == values.end() ? Value() : Value::text(found->second);
}

Value FakeApplication::value(std::string_view name) {
  return stored(values, name);
}

void FakeApplication::set_value(std::string_view name, Value value) {
  events.push_back("set " + std::string(name));
  value.share();
  values[lowered_ascii(name)] = std::move(value);
}

Value FakeSession::value(std::string_view name) {
  return stored(values, name);
}

void FakeSession::set_value(std::string_view name, Value value) {
  values[lowered_ascii(name)] = std::move(value);
}

std::string FakeServer::map_path(std::string_view virtual_path) {
  if (virtual_path.find("..") != std::string_view::npos) raise(errors::kInvalidCall);
  return std::string("/site").append(virtual_path);
}

std::string FakeServer::url_encode(std::string_view utf8) {
  return std::string(utf8);
}

std::shared_ptr<platform::Response> FakeScriptingContext::response() {
  taken.emplace_back("Response");
  return fake_response;
}
std::shared_ptr<platform::Server> FakeScriptingContext::server() {
  taken.emplace_back("Server");
  return fake_server;
}
std::shared_ptr<platform::Request> FakeScriptingContext::request() {
  taken.emplace_back("Request");
  return fake_request;
}
std::shared_ptr<platform::Application> FakeScriptingContext::application() {
  taken.emplace_back("Application");
  return fake_application;
}
std::shared_ptr<platform::Session> FakeScriptingContext::session() {
  taken.emplace_back("Session");
  return fake_session;
}

FakePage::FakePage() {
  application.values["rk_connstr"] = Value::text("Data Source=shop.db");
  request.server_variables["http_host"] = "shop.example";
  request.server_variables["script_name"] = "/index.asp";
  db.answer(std::string(kActiveTemplate), {{"templatePath"}, {{text("blue")}}});
  db.answer(std::string(kMasterDomain), {{"SiteDomain"}, {{text("")}}});
  context.start(*scripting);
}

FakePage::~FakePage() {
  EXPECT_EQ(db.outside_view(), writes);
}

void FakePage::put_template(std::string_view file, std::string text) {
  files.put("/site/Template/blue/" + std::string(file), std::move(text));
}

std::vector<std::string> FakePage::statements() const {
  std::vector<std::string> all = db.statements();
  all.erase(all.begin(), all.begin() + std::min<std::ptrdiff_t>(2, std::ssize(all)));
  return all;
}

std::vector<std::string> FakePage::log() const {
  std::vector<std::string> all = db.log();
  const auto first_close = std::find(all.begin(), all.end(), "close");
  if (first_close == all.end()) return {};
  auto open = first_close;
  while (open != all.begin() && !open->starts_with("open ")) --open;
  all.erase(open, first_close + 1);
  return all;
}

}  // namespace rk::tests
