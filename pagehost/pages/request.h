// RequestView: the request as a page reads it: query string, form and cookies decoded by the
// page's code page, server variables. Typed for the library; RequestObject gives it to scripts.
// Of the page's thread.
#ifndef RK_PAGEHOST_PAGES_REQUEST_H_
#define RK_PAGEHOST_PAGES_REQUEST_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/name_values.h"
#include "pagehost/pages/page_request.h"
#include "pagehost/pages/response.h"
#include "platform/code_page.h"
#include "platform/page.h"
#include "value/script_error.h"

namespace rk::pagehost {

// The cookie by which a session is known; pages do not see it among their cookies.
inline constexpr std::string_view kSessionCookie = "RKSESSIONID";

// The Host header without its port.
std::string_view host_name(std::string_view host_header);

class RequestView final : public platform::Request {
 public:
  // The request must live until forget_request().
  RequestView(const PageRequest& request, const platform::CodePages& code_pages,
              std::shared_ptr<const PageResponse> response, std::string site_root,
              std::string server_software)
      : request_(&request),
        code_pages_(code_pages),
        response_(std::move(response)),
        decoded_by_(response_->code_page()),
        site_root_(std::move(site_root)),
        server_software_(std::move(server_software)) {}

  Value query(std::string_view name) override;
  Value form(std::string_view name) override;
  Value server_variable(std::string_view name) override;
  Value item(std::string_view name) override;

  const NameValues& query_values();
  const NameValues& form_values();
  // Those that came and those that the page set since, as one: a page that signs a visitor in
  // reads him back. Valid until the next call.
  const std::vector<CookieText>& cookies();
  // A cookie's value; Empty where there is none.
  Value cookie(std::string_view name);
  // The text of a value as it was sent: decoded, but a query string where it has keys.
  std::string cookie_text(std::string_view sent_value) const;
  // The keys of a cookie that has some (a=1&b=2), else no entries.
  NameValues cookie_keys(std::string_view sent_value) const;
  std::string decoded(std::string_view sent) const;

  // Names in the order in which pages list them.
  std::vector<std::string> server_variable_names() const;
  std::string raw_query() const;
  std::string raw_form() const;

  // A body is read as a form or as bytes, as its first use decides; the other way then raises
  // `otherwise`, or the error of reading bytes. One without bytes may be read both ways.
  void use_body_as_form(const KnownError& otherwise);
  // The bytes of the body that were not read yet, `most` at most.
  std::string read_body(std::size_t most);
  std::size_t total_bytes() const { return request_->body.size(); }

  const PageRequest& sent() const { return *request_; }
  // At the page's end: an object that script kept reads an empty request from then on.
  void forget_request();

 private:
  std::optional<std::string> variable(std::string_view upper_case_name) const;
  std::string header_list(bool raw) const;
  std::string address() const;
  std::optional<std::string> sent_header(std::string_view variable) const;
  int code_page() const { return response_->code_page(); }
  void forget_other_code_page();

  const PageRequest* request_;
  const platform::CodePages& code_pages_;
  // Decoding goes by the response's code page, whichever it is at the moment.
  std::shared_ptr<const PageResponse> response_;
  int decoded_by_;
  std::string site_root_;
  std::string server_software_;
  std::optional<NameValues> query_;
  std::optional<NameValues> form_;
  std::optional<std::vector<CookieText>> cookies_;
  std::size_t cookie_changes_ = 0;  // of the response, that cookies_ knows
  enum class BodyUse : std::uint8_t { None, Form, Bytes };
  BodyUse body_use_ = BodyUse::None;
  std::size_t body_read_ = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_REQUEST_H_
