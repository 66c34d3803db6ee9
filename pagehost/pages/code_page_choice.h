// The rule of the setting `auto`: UTF-8 where every page and include of the site is valid UTF-8,
// else the ANSI code page. Reads the site once, at the start.
#ifndef RK_PAGEHOST_PAGES_CODE_PAGE_CHOICE_H_
#define RK_PAGEHOST_PAGES_CODE_PAGE_CHOICE_H_

#include <cstddef>
#include <string>

#include "platform/files.h"

namespace rk::pagehost {

// Folders inside one another that are looked through; a link in a circle ends here.
inline constexpr std::size_t kMaxFolderDepth = 32;

// Whether all files by the names of pages and includes (.asp, .asa, .inc), and those of other names
// that they include, are valid UTF-8. A file with its own CodePage directive counts not.
bool site_is_utf8(const platform::Files& files, const std::string& site_root);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_CODE_PAGE_CHOICE_H_
