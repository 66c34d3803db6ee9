#include "pagehost/pages/server_object.h"

#include <optional>
#include <utility>

#include "pagehost/pages/page_failure_text.h"
#include "pagehost/pages/page_run.h"
#include "pagehost/pages/url_text.h"
#include "value/script_error.h"
#include "vbscript/runtime_error.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kPhysicalPath{errors::kSqlFailure,
                                   "Server.MapPath takes a path of the site, not one of a drive"};
constexpr KnownError kNoPathLetter{errors::kSqlFailure,
                                   "Server.MapPath: the path holds a letter that no path may have"};
constexpr KnownError kNoPagePath{
    errors::kSqlFailure,
    "Server.Execute and Server.Transfer take a path of the site, without a query string"};

// What the encoding operations take: no Null, as for any text that is asked for by its type.
Text text_to_encode(const Call& call) {
  const Value value = plain_value(call.at(0));
  if (value.is_null()) raise(errors::kTypeMismatch);
  return joined_text(value);
}

// "c:\x" is a path of a drive.
bool names_drive(std::string_view path) {
  return path.size() > 1 && path[1] == ':';
}

void must_name_a_page(std::string_view path) {
  if (names_drive(path) || path.find('?') != std::string_view::npos) raise(kNoPagePath);
}

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
  Value number(const Call&) { return Value::long_integer(host_number(failure_.number)); }
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
  const std::string path = call.text(0);
  if (names_drive(path)) raise(kPhysicalPath);
  if (path.find_first_of("*?<>|\"") != std::string::npos) raise(kNoPathLetter);
  return Value::text(view_->map_path(path));
}

Value ServerObject::html_encode(const Call& call) {
  return Value::text(html_encoded(text_to_encode(call).view()));
}

Value ServerObject::url_encode(const Call& call) {
  return Value::text(view_->url_encode(text_to_encode(call).view()));
}

// Like URLEncode, but the marks of an address stay: everything up to "?" is a path.
Value ServerObject::url_path_encode(const Call& call) {
  PageRun& page = view_->page();
  const Text text = text_to_encode(call);
  const bool as_is = page.page_code_page() == platform::kUtf8 || is_ascii(text.view());
  return Value::text(header_safe_address(
      as_is ? text.string() : page.code_pages().from_utf8(text.view(), page.page_code_page())));
}

Value ServerObject::execute(const Call& call) {
  const std::string path = call.text(0);
  must_name_a_page(path);
  view_->page().execute(path);
  return {};
}

Value ServerObject::transfer(const Call& call) {
  const std::string path = call.text(0);
  must_name_a_page(path);
  view_->page().transfer(path);
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
