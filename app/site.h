// A site folder with all that runs its pages, built in the order in which each needs the others.
//
// One thread builds and destroys it; in between its parts follow their own thread rules.
#ifndef RK_APP_SITE_H_
#define RK_APP_SITE_H_

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/host_owners.h"
#include "app/settings.h"
#include "pagehost/http/site_file.h"
#include "pagehost/pages/log.h"
#include "pagehost/pages/page_host.h"
#include "pagehost/pages/programs.h"
#include "platform/code_page.h"
#include "platform/database.h"
#include "platform/files.h"

namespace rk::app {

// The folder's absolute path with links resolved. Throws CommandFailure where it is no folder.
std::string site_folder(const std::string& given);

struct SiteOptions {
  std::string folder;  // of site_folder()
  Settings settings;
  std::string version;
  // Told of each SQL text that a page sent; may be empty.
  std::function<void(const platform::TracedStatement&)> trace;
  bool name_unowned_hosts = false;
};

class Site {
 public:
  // Chooses the process's time zone; before any other thread starts. Throws CommandFailure.
  Site(SiteOptions options, pagehost::Log& log);
  ~Site();
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;

  const std::string& folder() const;
  const Settings& settings() const;
  pagehost::PageHost& pages();
  const pagehost::Programs& programs() const;
  const platform::Files& files() const;
  const http::SiteFiles& site_files() const;
  const platform::CodePages& code_pages() const;
  // For work on the site's own behalf, outside of any page: without limits of time, untraced.
  std::shared_ptr<platform::Database> database();
  // Virtual paths that no visitor may read, in small letters: "/log", "/data", and the settings'
  // folders and logs where they lie in the site.
  std::vector<std::string> hidden_folders() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace rk::app

#endif  // RK_APP_SITE_H_
