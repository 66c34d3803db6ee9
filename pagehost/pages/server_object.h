// The Server object of scripts, and the typed one of the library, over the page that runs.
#ifndef RK_PAGEHOST_PAGES_SERVER_OBJECT_H_
#define RK_PAGEHOST_PAGES_SERVER_OBJECT_H_

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "pagehost/pages/tabled_object.h"
#include "platform/page.h"

namespace rk::pagehost {

class PageRun;

class ServerView final : public platform::Server {
 public:
  explicit ServerView(PageRun& page) : page_(&page) {}
  std::unique_ptr<platform::Connection> create_connection() override;
  platform::Files& files() override;
  std::string map_path(std::string_view virtual_path) override;
  std::string url_encode(std::string_view utf8) override;

  PageRun& page() const;  // raises 91 when the page is over
  void page_is_over() { page_ = nullptr; }

 private:
  PageRun* page_;
};

class ServerObject final : public TabledObject<ServerObject> {
 public:
  explicit ServerObject(std::shared_ptr<ServerView> view) : view_(std::move(view)) {}
  std::string_view type_name() const override { return "IServer"; }
  static std::span<const Member<ServerObject>> members();

 private:
  Value create_object(const Call& call);
  Value map_path(const Call& call);
  Value html_encode(const Call& call);
  Value url_encode(const Call& call);
  Value url_path_encode(const Call& call);
  Value execute(const Call& call);
  Value transfer(const Call& call);
  Value script_timeout(const Call& call);
  Value last_error(const Call& call);

  std::shared_ptr<ServerView> view_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_SERVER_OBJECT_H_
