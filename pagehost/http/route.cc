#include "pagehost/http/route.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "pagehost/http/answer_head.h"
#include "pagehost/http/static_answer.h"
#include "pagehost/http/target.h"

namespace rk::http {
namespace {

constexpr std::string_view kDefaultDocuments[] = {"index.asp", "default.asp", "index.html"};

Route to(std::string path, const RouteRules& rules) {
  return {rules.is_page(path) ? Route::Kind::Page : Route::Kind::File, std::move(path), {}};
}

Route default_document(std::string_view folder, const RouteRules& rules,
                       const platform::Files& files) {
  for (const std::string_view name : kDefaultDocuments) {
    std::string path = std::string(folder).append(name);
    const std::string physical = rules.site_root + path;
    if (files.find(physical) && !files.is_folder(physical)) return to(std::move(path), rules);
  }
  return {};
}

// The page that a part of the path names, where more stands behind it; what is behind a folder of
// such a name is the folder's.
std::optional<Route> page_with_more(std::string_view path, const RouteRules& rules,
                                    const platform::Files& files) {
  for (std::size_t at = path.find('/', 1); at != std::string_view::npos;
       at = path.find('/', at + 1)) {
    const std::string_view part = path.substr(0, at);
    if (!rules.is_page(part)) continue;
    const std::string physical = rules.site_root + std::string(part);
    if (files.is_folder(physical)) continue;
    if (!files.find(physical)) return std::nullopt;
    return Route{Route::Kind::Page, std::string(part), std::string(path)};
  }
  return std::nullopt;
}

}  // namespace

Route route(std::string_view path, const RouteRules& rules, const platform::Files& files) {
  if (is_hidden(path, rules.hidden_folders)) return {};
  if (auto page = page_with_more(path, rules, files)) return std::move(*page);
  if (path.ends_with('/')) return default_document(path, rules, files);
  if (rules.is_page(path)) return to(std::string(path), rules);
  const std::string physical = rules.site_root + std::string(path);
  if (files.is_folder(physical)) return {Route::Kind::Folder, std::string(path), {}};
  return to(std::string(path), rules);
}

pagehost::PageAnswer folder_redirect(std::string_view path, std::string_view query) {
  pagehost::PageAnswer answer = plain_answer(301);
  std::string address = encoded_path(path) + "/";
  if (!query.empty()) address.append("?").append(query);
  answer.headers.emplace_back("Location", std::move(address));
  return answer;
}

}  // namespace rk::http
