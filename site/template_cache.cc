#include "site/template_cache.h"

#include <string>

#include "site/storefront.h"
#include "site/trapped.h"
#include "value/comparison.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::site {

namespace {

std::string cache_name(const Value& filename) {
  std::string name = "Rk_Tp_";
  append_text(name, filename);
  return name;
}

std::string file_text(const PageContext& page, const Value& filename) {
  platform::Server& server = page.server();
  return server.files().read_text(server.map_path(to_text(filename).view()));
}

class ApplicationLock {
 public:
  explicit ApplicationLock(platform::Application& application) : application_(application) {
    application_.lock();
  }
  ~ApplicationLock() { application_.unlock(); }
  ApplicationLock(const ApplicationLock&) = delete;
  ApplicationLock& operator=(const ApplicationLock&) = delete;

 private:
  platform::Application& application_;
};

void store(const PageContext& page, const Value& filename, std::string_view text) {
  platform::Application& application = page.application();
  const ApplicationLock lock(application);
  application.set_value(cache_name(filename), Value::text(text));
}

}  // namespace

Value loadfile(const PageContext& page, const Value& filename) {
  std::string text;
  const auto failure = trapped([&] { text = file_text(page, filename); });
  // An empty file opens, and only reading it fails: it is stored as the empty text that it is.
  if (failure && failure->number() != errors::kInputPastEnd.number) return Value::text("Not File!");
  trapped([&] { store(page, filename, text); });
  return {};
}

void loadfile_fromcache(const PageContext& page, const Value& filename) {
  if (equals(page.application().value(cache_name(filename)), "")) loadfile(page, filename);
}

void update_cache(const PageContext& page, const Value& filename) {
  const std::string text = file_text(page, filename);
  store(page, filename, text);
}

Text template_text(const PageContext& page, std::string_view file) {
  const std::string path = GetTempPath(page).append(file);
  const std::string name = "Rk_TP_" + path;
  Value text = page.application().value(name);
  if (equals(text, "")) {
    loadfile(page, Value::text(path));
    text = page.application().value(name);
  }
  return text.is_text() ? text.as_text() : joined_text(text);
}

}  // namespace rk::site
