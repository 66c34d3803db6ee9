// The Session object of scripts and the typed one of the library, over the session whose turn the
// page holds. A visitor without a session gets one when a page first looks at it.
#ifndef RK_PAGEHOST_PAGES_SESSION_OBJECT_H_
#define RK_PAGEHOST_PAGES_SESSION_OBJECT_H_

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/session_store.h"
#include "pagehost/pages/stored_variables.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/page.h"

namespace rk::pagehost {

// What one visitor may have a session keep; texts count by their bytes.
inline constexpr std::size_t kMaxSessionBytes = std::size_t{8} << 20;

// What the objects that a session keeps hold at this moment; they grow without the session's doing.
std::size_t bytes_of_objects(const Session& session);

// Who knows the page's session.
class SessionHolder {
 public:
  virtual ~SessionHolder() = default;
  virtual Session& session() = 0;  // made where there is none yet
  virtual int response_code_page() const = 0;
  virtual void change_code_page(int code_page) = 0;  // of this page, from here on
};

class SessionView final : public platform::Session, public StoredVariables {
 public:
  explicit SessionView(SessionHolder& holder) : holder_(&holder) {}
  Value value(std::string_view name) override { return stored(name); }
  void set_value(std::string_view name, Value value) override { store(name, std::move(value)); }
  Value stored(std::string_view name) override;
  void store(std::string_view name, Value value) override;
  void remove(std::string_view name) override;
  void clear() override;
  std::vector<std::string> names() override;

  pagehost::Session& session();
  SessionHolder& holder();
  void page_is_over() { holder_ = nullptr; }

 private:
  SessionHolder* holder_;
};

class SessionObject final : public TabledObject<SessionObject> {
 public:
  SessionObject(std::shared_ptr<SessionView> view, Ref<Object> static_objects)
      : view_(std::move(view)), static_objects_(std::move(static_objects)) {}
  std::string_view type_name() const override { return "ISessionObject"; }
  static std::span<const Member<SessionObject>> members();
  std::unique_ptr<Enumeration> enumerate() override;

 private:
  Value item(const Call& call);
  Value session_id(const Call& call);
  Value timeout(const Call& call);
  Value abandon(const Call& call);
  Value contents(const Call& call);
  Value static_objects(const Call& call);
  Value code_page(const Call& call);
  Value lcid(const Call& call);

  std::shared_ptr<SessionView> view_;
  Ref<Object> static_objects_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_SESSION_OBJECT_H_
