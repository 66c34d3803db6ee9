#include "app/template_check.h"

#include <algorithm>
#include <span>

#include "value/text.h"

namespace rk::app {

namespace {

using site::TemplateBlock;
using site::TemplateFile;
using site::TemplateStyle;

constexpr auto kNowhere = std::string_view::npos;
constexpr std::string_view kMarkerEnd = "-->";

// The faults of one text; places are offsets in it.
class TemplateCheck {
 public:
  TemplateCheck(std::string_view text, const TemplateFile& file, const TellTemplateFault& tell)
      : text_(text), file_(file), tell_(tell) {}

  void check() {
    if (file_.styles.empty()) {
      check_blocks(0, text_.size());
    } else {
      for (const TemplateStyle& style : file_.styles) check_styles(style);
    }
    check_needed(file_.needed, 0, text_.size(), 0, "the file");
    check_spelling();
  }

 private:
  void tell(std::size_t offset, const std::string& message) {
    const auto end = text_.begin() + static_cast<std::ptrdiff_t>(offset);
    tell_(1 + static_cast<std::size_t>(std::count(text_.begin(), end, '\n')), message);
  }
  std::string without(std::string_view marker) const {
    return "the marker " + std::string(marker) + " is missing; " + std::string(file_.operation) +
           " needs it";
  }

  void check_styles(const TemplateStyle& style) {
    std::size_t at = text_.find(style.start);
    if (at == kNowhere) tell(0, without(std::string(style.start) + std::string(kMarkerEnd)));
    for (; at != kNowhere; at = text_.find(style.start, at + 1)) check_style(style, at);
  }
  void check_style(const TemplateStyle& style, std::size_t at) {
    const std::size_t name = at + style.start.size();
    const std::size_t name_end = text_.find(kMarkerEnd, name);
    if (name_end == kNowhere) return tell(at, "the marker is not closed by -->");
    const std::string end_marker =
        std::string(style.end).append(text_.substr(name, name_end - name)).append(kMarkerEnd);
    const std::size_t from = name_end + kMarkerEnd.size();
    const std::size_t end = text_.find(end_marker, from);
    if (end == kNowhere) return tell(at, without(end_marker));
    check_blocks(from, end);
  }

  void check_blocks(std::size_t from, std::size_t end) {
    for (const TemplateBlock& block : file_.blocks) check_block(block, from, end);
  }
  void check_block(const TemplateBlock& block, std::size_t from, std::size_t end) {
    const std::string_view part = text_.substr(0, end);
    const std::size_t start = part.find(block.start, from);
    if (start == kNowhere) return tell(from, without(block.start));
    const std::size_t inside = start + block.start.size();
    const std::size_t stop = part.find(block.end, inside);
    if (stop == kNowhere) return tell(start, without(block.end));
    check_needed(block.needed, inside, stop, start, "the block of " + std::string(block.start));
    for (const std::string_view tag : block.excluded) {
      const std::size_t at = text_.substr(0, stop).find(tag, inside);
      if (at == kNowhere) continue;
      tell(at, "the tag " + std::string(tag) + " keeps the block of " + std::string(block.start) +
                   " from being put in");
    }
  }
  void check_needed(std::span<const std::string_view> tags, std::size_t from, std::size_t end,
                    std::size_t place, const std::string& where) {
    for (const std::string_view tag : tags) {
      if (text_.substr(from, end - from).find(tag) != kNowhere) continue;
      tell(place, where + " lacks the tag " + std::string(tag));
    }
  }

  // Tags in another letter case are left as they stand, which nobody means.
  void check_spelling() {
    for (std::size_t at = text_.find('{'); at != kNowhere; at = text_.find('{', at + 1)) {
      const std::size_t end = text_.find_first_of("{}", at + 1);
      if (end == kNowhere || text_[end] == '{') continue;
      const std::string_view written = text_.substr(at, end + 1 - at);
      if (const std::string_view meant = meant_tag(written); !meant.empty()) {
        tell(at, "the tag is written " + std::string(meant) + ", not " + std::string(written));
      }
    }
  }
  // Empty where the tag is known as it stands, or is nothing like a known one.
  std::string_view meant_tag(std::string_view written) const {
    std::string_view meant;
    const auto look = [&](std::span<const std::string_view> tags) {
      for (const std::string_view tag : tags) {
        if (tag == written) return true;
        if (equal_ignoring_case(tag, written)) meant = tag;
      }
      return false;
    };
    if (look(file_.needed) || look(file_.optional)) return {};
    for (const TemplateBlock& block : file_.blocks) {
      if (look(block.needed) || look(block.optional) || look(block.excluded)) return {};
    }
    return meant;
  }

  std::string_view text_;
  const TemplateFile& file_;
  const TellTemplateFault& tell_;
};

}  // namespace

void check_template(std::string_view text, const TemplateFile& file,
                    const TellTemplateFault& tell) {
  TemplateCheck(text, file, tell).check();
}

std::string missing_style(std::string_view text, const TemplateFile& file, std::string_view style) {
  for (const TemplateStyle& each : file.styles) {
    std::string marker(each.start);
    marker.append(style).append(kMarkerEnd);
    if (text.find(marker) == kNowhere) return marker;
  }
  return {};
}

}  // namespace rk::app
