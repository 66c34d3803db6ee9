// The Response object of scripts: the members by which pages know it, over PageResponse.
#ifndef RK_PAGEHOST_PAGES_RESPONSE_OBJECT_H_
#define RK_PAGEHOST_PAGES_RESPONSE_OBJECT_H_

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "pagehost/pages/log.h"
#include "pagehost/pages/request.h"
#include "pagehost/pages/response.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/clock.h"

namespace rk::pagehost {

class ResponseObject final : public TabledObject<ResponseObject> {
 public:
  // The request is the one whose cookies the response's cookies go on from.
  ResponseObject(std::shared_ptr<PageResponse> response, std::shared_ptr<RequestView> request,
                 const platform::Clock& clock)
      : response_(std::move(response)), request_(std::move(request)), clock_(clock) {}
  std::string_view type_name() const override { return "IResponse"; }
  static std::span<const Member<ResponseObject>> members();

 private:
  Value write(const Call& call);
  Value binary_write(const Call& call);
  Value end(const Call& call);
  Value flush(const Call& call);
  Value clear(const Call& call);
  Value redirect(const Call& call);
  Value buffer(const Call& call);
  Value status(const Call& call);
  Value content_type(const Call& call);
  Value charset(const Call& call);
  Value code_page(const Call& call);
  Value lcid(const Call& call);
  Value cache_control(const Call& call);
  Value expires(const Call& call);
  Value expires_absolute(const Call& call);
  Value add_header(const Call& call);
  Value append_to_log(const Call& call);
  Value cookies(const Call& call);
  Value is_client_connected(const Call& call);
  Value pics(const Call& call);

  std::shared_ptr<PageResponse> response_;
  std::shared_ptr<RequestView> request_;
  const platform::Clock& clock_;
  std::int32_t expires_minutes_ = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_RESPONSE_OBJECT_H_
