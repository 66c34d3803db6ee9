// The Application object of scripts, over one page's ApplicationView.
#ifndef RK_PAGEHOST_PAGES_APPLICATION_OBJECT_H_
#define RK_PAGEHOST_PAGES_APPLICATION_OBJECT_H_

#include <memory>
#include <span>
#include <string_view>

#include "pagehost/pages/application_store.h"
#include "pagehost/pages/stored_variables.h"
#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class ApplicationObject final : public TabledObject<ApplicationObject> {
 public:
  ApplicationObject(std::shared_ptr<ApplicationView> application, Ref<Object> static_objects);
  std::string_view type_name() const override { return "IApplicationObject"; }
  static std::span<const Member<ApplicationObject>> members();
  std::unique_ptr<Enumeration> enumerate() override;

 private:
  Value item(const Call& call);
  Value lock(const Call& call);
  Value unlock(const Call& call);
  Value contents(const Call& call);
  Value static_objects(const Call& call);

  std::shared_ptr<ApplicationView> application_;
  std::shared_ptr<StoredVariables> variables_;
  Ref<Object> static_objects_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_APPLICATION_OBJECT_H_
