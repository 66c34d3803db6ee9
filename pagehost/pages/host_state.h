// HostState: what all pages of one PageHost share. Several threads use it; each part says how.
#ifndef RK_PAGEHOST_PAGES_HOST_STATE_H_
#define RK_PAGEHOST_PAGES_HOST_STATE_H_

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "pagehost/pages/application_life.h"
#include "pagehost/pages/page_cache.h"
#include "pagehost/pages/page_files.h"
#include "pagehost/pages/page_host.h"
#include "pagehost/pages/page_reader.h"
#include "value/text.h"

namespace rk::pagehost {

struct HostState {
  HostState(PageHostOptions host_options, PageHostParts host_parts)
      : options(std::move(host_options)),
        parts(std::move(host_parts)),
        reader(*parts.files, *parts.code_pages, options.site_root),
        cache(*parts.files, reader, *parts.log),
        lives(std::make_shared<ApplicationLife>(options, parts), options.longest_drain) {}

  const PageHostOptions options;
  const PageHostParts parts;
  // For what pages do.
  PageFiles page_files{parts.page_files != nullptr ? *parts.page_files : *parts.files};
  int code_page = platform::kUtf8;  // settled by start()
  const PageReader reader;
  PageCache cache;
  ApplicationLives lives;
  std::shared_ptr<std::atomic<bool>> stopping = std::make_shared<std::atomic<bool>>(false);

  // Whether this name was not asked for before; so that the log names each class once.
  bool is_new_unknown_program(std::string_view program_identifier) {
    const std::lock_guard held(unknown_programs_mutex);
    return unknown_programs.size() < kMaxUnknownPrograms &&
           unknown_programs.insert(lowered_ascii(program_identifier)).second;
  }
  static constexpr std::size_t kMaxUnknownPrograms = 1000;  // a page may make up names for ever
  std::mutex unknown_programs_mutex;
  std::set<std::string> unknown_programs;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_HOST_STATE_H_
