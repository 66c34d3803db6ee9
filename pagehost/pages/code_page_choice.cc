#include "pagehost/pages/code_page_choice.h"

#include <set>
#include <string_view>

#include "pagehost/pages/page_splitter.h"
#include "pagehost/pages/virtual_path.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

bool is_source_name(std::string_view name) {
  const std::string lower = lowered_ascii(name);
  return lower.ends_with(".asp") || lower.ends_with(".asa") || lower.ends_with(".inc");
}

class SiteReading {
 public:
  SiteReading(const platform::Files& files, const std::string& site_root)
      : files_(files), site_root_(site_root) {}

  bool folder_is_utf8(const std::string& folder, std::size_t depth) {
    if (depth > kMaxFolderDepth) return true;
    for (const std::string& name : files_.names(site_root_ + folder)) {
      if (name.empty() || name[0] == '.') continue;
      const std::string path = folder + "/" + name;
      const bool fine = files_.is_folder(site_root_ + path)
                            ? folder_is_utf8(path, depth + 1)
                            : !is_source_name(name) || file_is_utf8(path);
      if (!fine) return false;
    }
    return true;
  }

 private:
  bool file_is_utf8(const std::string& path) {
    const auto found = files_.find(site_root_ + path);
    if (!found || files_.is_folder(*found) || !seen_.insert(*found).second) return true;
    std::string bytes;
    try {
      bytes = files_.read(*found);
    } catch (const ScriptError&) {
      return true;  // whoever asks for it will be told
    }
    if (bytes.starts_with("\xFF\xFE") || code_page_directive(bytes) != 0) return true;
    if (!is_valid_utf8(bytes)) return false;
    for (const PagePart& part : split_page(bytes)) {
      const bool is_virtual = part.kind == PagePart::Kind::IncludeVirtual;
      if (!is_virtual && part.kind != PagePart::Kind::IncludeFile) continue;
      const auto target = resolved_path(is_virtual ? "" : folder_of(path), part.text);
      if (target && !file_is_utf8(*target)) return false;
    }
    return true;
  }

  const platform::Files& files_;
  const std::string& site_root_;
  std::set<std::string> seen_;
};

}  // namespace

bool site_is_utf8(const platform::Files& files, const std::string& site_root) {
  return SiteReading(files, site_root).folder_is_utf8("", 0);
}

}  // namespace rk::pagehost
