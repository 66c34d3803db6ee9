#include "pagehost/pages/server_object.h"

#include <optional>
#include <utility>

#include "pagehost/pages/page_run.h"
#include "pagehost/pages/url_text.h"
#include "value/script_error.h"
#include "vbscript/runtime_error.h"

namespace rk::pagehost {
namespace {

// Server.GetLastError: of the page that Server.Execute ran last; without an error its texts are
// empty and its numbers 0.
class LastErrorObject final : public TabledObject<LastErrorObject> {
 public:
  explicit LastErrorObject(const std::optional<PageFailure>& failure) {
    if (failure) failure_ = *failure;
  }
  std::string_view type_name() const override { return "IASPError"; }
  static std::span<const Member<LastErrorObject>> members() {
    static constexpr Member<LastErrorObject> kMembers[] = {
        {"", nullptr},
        {"ASPCode", &LastErrorObject::nothing},
        {"Number", &LastErrorObject::number},
        {"Source", &LastErrorObject::nothing},
        {"Category", &LastErrorObject::category},
        {"File", &LastErrorObject::file},
        {"Line", &LastErrorObject::line},
        {"Column", &LastErrorObject::column},
        {"Description", &LastErrorObject::description},
        {"ASPDescription", &LastErrorObject::nothing},
    };
    return kMembers;
  }

 private:
  Value nothing(const Call&) { return Value::text(""); }
  Value number(const Call&) { return Value::long_integer(failure_.number); }
  Value category(const Call&) {
    return Value::text(failure_.number == 0 ? std::string_view() : vbscript::kRuntimeSource);
  }
  Value file(const Call&) { return Value::text(failure_.path); }
  Value line(const Call&) { return Value::long_integer(failure_.line); }
  Value column(const Call&) { return Value::long_integer(0); }
  Value description(const Call&) { return Value::text(failure_.text); }

  PageFailure failure_;
};

}  // namespace

PageRun& ServerView::page() const {
  if (page_ == nullptr) raise(errors::kObjectNotSet);
  return *page_;
}

std::unique_ptr<platform::Connection> ServerView::create_connection() {
  return page().database()->connection();
}

platform::Files& ServerView::files() {
  return page().files();
}

std::string ServerView::map_path(std::string_view virtual_path) {
  return page().map_path(virtual_path);
}

std::string ServerView::url_encode(std::string_view utf8) {
  return url_encoded(utf8, page().page_code_page(), page().code_pages());
}

std::span<const Member<ServerObject>> ServerObject::members() {
  using S = ServerObject;
  static constexpr Member<S> kMembers[] = {
      {"", nullptr},
      {"CreateObject", &S::create_object, 1, 1},
      {"MapPath", &S::map_path, 1, 1},
      {"HTMLEncode", &S::html_encode, 1, 1},
      {"URLEncode", &S::url_encode, 1, 1},
      {"URLPathEncode", &S::url_path_encode, 1, 1},
      {"Execute", &S::execute, 1, 1},
      {"Transfer", &S::transfer, 1, 1},
      {"ScriptTimeout", &S::script_timeout, 0, 0, Access::Both},
      {"GetLastError", &S::last_error},
  };
  return kMembers;
}

Value ServerObject::create_object(const Call& call) {
  return view_->page().create(call.text(0));
}

Value ServerObject::map_path(const Call& call) {
  return Value::text(view_->map_path(call.text(0)));
}

Value ServerObject::html_encode(const Call& call) {
  return Value::text(html_encoded(joined_text(call.at(0)).view()));
}

Value ServerObject::url_encode(const Call& call) {
  return Value::text(view_->url_encode(joined_text(call.at(0)).view()));
}

// Like URLEncode, but the marks of an address stay: everything up to "?" is a path.
Value ServerObject::url_path_encode(const Call& call) {
  return Value::text(header_safe_address(joined_text(call.at(0)).view()));
}

Value ServerObject::execute(const Call& call) {
  view_->page().execute(call.text(0));
  return {};
}

Value ServerObject::transfer(const Call& call) {
  view_->page().transfer(call.text(0));
}

// In seconds from the page's beginning.
Value ServerObject::script_timeout(const Call& call) {
  PageTime& time = view_->page().time();
  if (!call.assigns()) {
    return Value::long_integer(static_cast<std::int32_t>(time.limit().count()));
  }
  const std::int32_t seconds = to_long(call.assigned());
  if (seconds < 1) raise(errors::kInvalidCall);
  time.set_limit(std::chrono::seconds(seconds));
  return {};
}

Value ServerObject::last_error(const Call&) {
  return Value::object(make_ref<LastErrorObject>(view_->page().last_failure()));
}

}  // namespace rk::pagehost
