// The Request object of scripts and its collections, over RequestView.
#ifndef RK_PAGEHOST_PAGES_REQUEST_OBJECT_H_
#define RK_PAGEHOST_PAGES_REQUEST_OBJECT_H_

#include <memory>
#include <span>
#include <string_view>

#include "pagehost/pages/request.h"
#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class RequestObject final : public TabledObject<RequestObject> {
 public:
  explicit RequestObject(std::shared_ptr<RequestView> request) : request_(std::move(request)) {}
  std::string_view type_name() const override { return "IRequest"; }
  static std::span<const Member<RequestObject>> members();

 private:
  Value item(const Call& call);
  Value query_string(const Call& call);
  Value form(const Call& call);
  Value cookies(const Call& call);
  Value server_variables(const Call& call);
  Value client_certificate(const Call& call);
  Value total_bytes(const Call& call);
  Value binary_read(const Call& call);

  std::shared_ptr<RequestView> request_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_REQUEST_OBJECT_H_
