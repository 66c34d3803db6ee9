// What the files of a template folder hold: which operation reads a file, its markers and its tags.
//
// One table for whoever looks at templates from outside of the operations that fill them: the
// check of a site and the test of the template author's guide. Constant; any thread may read it.
#ifndef RK_SITE_TEMPLATE_FILES_H_
#define RK_SITE_TEMPLATE_FILES_H_

#include <span>
#include <string_view>

namespace rk::site {

// What stands between two markers.
struct TemplateBlock {
  std::string_view start;  // whole marker
  std::string_view end;
  std::span<const std::string_view> needed;  // tags without which an item shows nothing of its own
  std::span<const std::string_view> optional;  // further tags that are filled here
  std::span<const std::string_view> excluded;  // tags that keep the block from being put in
};

// A block that a page names: the style's name and "-->" stand behind both markers.
struct TemplateStyle {
  std::string_view start;
  std::string_view end;
};

struct TemplateFile {
  std::string_view name;
  std::string_view operation;
  // None: the file is one whole, and `blocks` lie in it. Otherwise in each style's block.
  std::span<const TemplateStyle> styles;
  std::span<const TemplateBlock> blocks;
  std::span<const std::string_view> needed;    // tags outside of the blocks
  std::span<const std::string_view> optional;  // further ones
};

std::span<const TemplateFile> template_files();

}  // namespace rk::site

#endif  // RK_SITE_TEMPLATE_FILES_H_
