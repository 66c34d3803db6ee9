// What is wrong with the files of a template folder: markers and tags that a renderer needs and a
// file lacks, or has where they do harm. Pure functions on texts.
#ifndef RK_APP_TEMPLATE_CHECK_H_
#define RK_APP_TEMPLATE_CHECK_H_

#include <functional>
#include <string>
#include <string_view>

#include "site/template_files.h"

namespace rk::app {

// A fault, with the line of the text that it stands at.
using TellTemplateFault = std::function<void(std::size_t line, const std::string& message)>;

void check_template(std::string_view text, const site::TemplateFile& file,
                    const TellTemplateFault& tell);

// The marker that begins the block of a style, where the file has blocks of styles and the text
// lacks it; else empty.
std::string missing_style(std::string_view text, const site::TemplateFile& file,
                          std::string_view style);

}  // namespace rk::app

#endif  // RK_APP_TEMPLATE_CHECK_H_
