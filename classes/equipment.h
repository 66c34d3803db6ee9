// What the library's objects need beside the page: handed down by app/, never looked up.
#ifndef RK_CLASSES_EQUIPMENT_H_
#define RK_CLASSES_EQUIPMENT_H_

#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/http.h"
#include "platform/profile_strings.h"
#include "platform/random.h"
#include "platform/sockets.h"
#include "services/lookups.h"
#include "widgets/slideshow.h"

namespace rk::classes {

// What the deployment says, the same for every page.
struct Deployment {
  int ansi_code_page = platform::kGb2312;
  std::string release;  // what the control server is told of this program
  services::Endpoints endpoints;
  widgets::PlayerAddresses player;
};

// Where the daily log files lie: the folder's physical path, and files that reach nothing else.
struct LogFolder {
  std::shared_ptr<platform::Files> files;
  std::string path;
};

// The referenced objects outlive every object made with them; several threads may use them.
struct Equipment {
  const platform::Clock& clock;
  platform::Random& random;
  const platform::CodePages& code_pages;
  platform::ProfileStrings& profile_strings;
  const Deployment& deployment;
  // The log folder as it is when asked.
  const std::function<LogFolder()>& log_folder;
  // Of the page that the object is made for: their waits end with it. Of that page's thread.
  std::shared_ptr<platform::Http> http;
  std::shared_ptr<platform::Sockets> sockets;
};

}  // namespace rk::classes

#endif  // RK_CLASSES_EQUIPMENT_H_
