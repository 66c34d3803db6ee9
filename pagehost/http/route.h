// Where a path of the site leads: to a page, to a file as it is, to its folder's address, nowhere.
// The same for the front and for running one page. Pure but for the look at the files.
#ifndef RK_PAGEHOST_HTTP_ROUTE_H_
#define RK_PAGEHOST_HTTP_ROUTE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/page_request.h"
#include "platform/files.h"

namespace rk::http {

struct Route {
  enum class Kind : std::uint8_t { Page, File, Folder, Nothing };
  Kind kind = Kind::Nothing;
  // Virtual path: that of the default document where a folder was asked for; in the letter case
  // of the request where it named the file. What it names need not be there.
  std::string path;
  // Of a page behind whose path more stands ("/show.asp/7.html"): all of it. Else empty.
  std::string path_info = {};
};

struct RouteRules {
  std::string site_root;                    // physical, without a "/" behind it
  std::vector<std::string> hidden_folders;  // "/log", in small letters
  bool (*is_page)(std::string_view path) = nullptr;
};

// `path` is that of a Target. What stands behind the path of a page that is there is its to read;
// names that nobody may read are refused there too. Folder: the path names one but for its last
// "/".
Route route(std::string_view path, const RouteRules& rules, const platform::Files& files);

// The redirect of a Folder to its own address, with the query string as it was sent.
pagehost::PageAnswer folder_redirect(std::string_view path, std::string_view query);

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_ROUTE_H_
