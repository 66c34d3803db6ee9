#include "app/template_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace rk::app {
namespace {

const site::TemplateFile& file_of(std::string_view operation) {
  const auto files = site::template_files();
  return *std::find_if(files.begin(), files.end(),
                       [&](const site::TemplateFile& file) { return file.operation == operation; });
}

// The faults, one a line: "LINE: message".
std::string faults(std::string_view operation, std::string_view text) {
  std::string found;
  check_template(text, file_of(operation), [&](std::size_t line, const std::string& message) {
    found.append(std::to_string(line)).append(": ").append(message).append("\n");
  });
  return found;
}

constexpr std::string_view kMail =
    "<!--MailList Style-->\n<div style=\"{ListLineHeight}\">\n<!--MailList For Index-->\n"
    "{MailList_MailName}\n<!--End MailList For Index-->\n</div>\n<!--End MailList Style-->\n";

std::string mail_with(std::string_view from, std::string_view to) {
  std::string text(kMail);
  return text.replace(text.find(from), from.size(), to);
}

TEST(TemplateCheck, AFileWithAllThatItsRendererNeedsHasNoFault) {
  EXPECT_EQ(faults("Show_MailList", kMail), "");
  EXPECT_EQ(faults("Show_HostInfo", "<p>{HostName} {other}</p>"), "");
}

TEST(TemplateCheck, AMissingStyleIsAFaultOfTheFirstLine) {
  EXPECT_EQ(faults("Show_MailList", "<p>"),
            "1: the marker <!--MailList Style--> is missing; Show_MailList needs it\n");
}

TEST(TemplateCheck, AMarkerWithoutItsEndIsNamedWhereItBegins) {
  EXPECT_EQ(faults("Show_MailList", mail_with("<!--End MailList Style-->", "")),
            "1: the marker <!--End MailList Style--> is missing; Show_MailList needs it\n");
  EXPECT_EQ(faults("Show_MailList", mail_with("<!--End MailList For Index-->", "")),
            "3: the marker <!--End MailList For Index--> is missing; Show_MailList needs it\n");
  EXPECT_EQ(faults("Show_MailList", "\n<!--MailList StyleWide"),
            "2: the marker is not closed by -->\n");
}

TEST(TemplateCheck, EachStyleIsLookedAtForItself) {
  EXPECT_EQ(faults("Show_MailList",
                   std::string(kMail) + "<!--MailList StyleWide-->\n<!--End MailList StyleWide-->"),
            "8: the marker <!--MailList For Index--> is missing; Show_MailList needs it\n");
}

TEST(TemplateCheck, AnItemWithoutItsNameAndATagInTheWrongPlaceAreFaults) {
  EXPECT_EQ(faults("Show_MailList", mail_with("{MailList_MailName}", "\n{ListLineHeight}")),
            "3: the block of <!--MailList For Index--> lacks the tag {MailList_MailName}\n"
            "5: the tag {ListLineHeight} keeps the block of <!--MailList For Index--> from being "
            "put in\n");
}

TEST(TemplateCheck, ATagInOtherLettersIsToldHowItIsWritten) {
  EXPECT_EQ(faults("Show_MailList", mail_with("\n</div>", "{listlineheight}{unknown}{\n</div>")),
            "5: the tag is written {ListLineHeight}, not {listlineheight}\n");
  EXPECT_EQ(faults("Show_HostInfo", "{HostName}\n{ID}"), "2: the tag is written {id}, not {ID}\n");
}

TEST(TemplateCheck, AStyleThatAPageAsksForIsMissedByItsMarker) {
  const site::TemplateFile& file = file_of("Show_MailList");
  EXPECT_EQ(missing_style(kMail, file, ""), "");
  EXPECT_EQ(missing_style(kMail, file, "Wide"), "<!--MailList StyleWide-->");
  EXPECT_EQ(missing_style("", file_of("Show_HostInfo"), "Wide"), "") << "it has no styles";
}

// The template author's guide, and what it says nothing of.
TEST(TemplateCheck, TheGuideNamesEveryFileOperationAndTag) {
  std::ifstream in(RK_SOURCE_DIR "/docs/templates.md");
  const std::string guide{std::istreambuf_iterator<char>(in), {}};
  const auto expect_named = [&](std::string_view words) {
    EXPECT_NE(guide.find(words), std::string::npos) << words;
  };
  for (const site::TemplateFile& file : site::template_files()) {
    expect_named(file.name);
    expect_named(file.operation);
    std::vector<std::string_view> tags(file.needed.begin(), file.needed.end());
    tags.insert(tags.end(), file.optional.begin(), file.optional.end());
    for (const site::TemplateBlock& block : file.blocks) {
      tags.insert(tags.end(), block.needed.begin(), block.needed.end());
      tags.insert(tags.end(), block.optional.begin(), block.optional.end());
    }
    for (const std::string_view tag : tags) expect_named(tag);
  }
}

}  // namespace
}  // namespace rk::app
