#include "site/page_context.h"

#include "value/script_error.h"

namespace rk::site {

namespace {

template <class Part>
Part& bound(const std::shared_ptr<Part>& part) {
  if (part == nullptr) raise(errors::kObjectRequired);
  return *part;
}

}  // namespace

void PageContext::start(platform::ScriptingContext& context) {
  response_ = context.response();
  server_ = context.server();
  request_ = context.request();
  application_ = context.application();
  session_ = context.session();
}

void PageContext::end() noexcept {
  response_.reset();
  server_.reset();
  request_.reset();
  application_.reset();
  // QUIRK: the session stays bound until the object itself goes.
}

platform::Response& PageContext::response() const {
  return bound(response_);
}
platform::Server& PageContext::server() const {
  return bound(server_);
}
platform::Request& PageContext::request() const {
  return bound(request_);
}
platform::Application& PageContext::application() const {
  return bound(application_);
}
platform::Session& PageContext::session() const {
  return bound(session_);
}

}  // namespace rk::site
