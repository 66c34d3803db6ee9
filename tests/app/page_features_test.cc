#include "app/page_features.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "pagehost/components/components.h"
#include "tests/support/page_site.h"

namespace rk::app {
namespace {

class PageFeaturesTest : public testing::Test {
 protected:
  PageFeaturesTest() { pagehost::add_components(site_.programs); }

  pagehost::PageSource source(std::string page) {
    site_.file("/p.asp", std::move(page));
    return pagehost::PageReader(site_.files, site_.code_pages, "/site").page("/p.asp", 65001);
  }
  std::vector<std::string> faults(std::string page) {
    std::vector<std::string> found;
    site_.host().with_page([&](pagehost::PageServices& services) {
      found = PageFeatures(site_.programs, services).faults(source(std::move(page)));
    });
    return found;
  }

  tests::PageSite site_;
};

using Lines = std::vector<std::string>;

TEST_F(PageFeaturesTest, AClassThatNobodyServesIsNamedWhereItIsMade) {
  EXPECT_EQ(faults("<p>\n<%\nSet a = Server.CreateObject(\"No.Such\")\n"
                   "Set b = CreateObject(\"scripting.dictionary\")\n%>"),
            Lines{"/p.asp:3: no class is served by the name \"No.Such\""});
}

TEST_F(PageFeaturesTest, AClassOfAnObjectDeclarationIsLookedAtToo) {
  EXPECT_EQ(faults("<object runat=\"Server\" id=\"box\" progid=\"No.Such\"></object>"),
            Lines{"/p.asp:1: no class is served by the name \"No.Such\" of the object box"});
}

TEST_F(PageFeaturesTest, AMemberThatThePagesOwnObjectsDoNotHaveIsNamed) {
  EXPECT_EQ(faults("<%= Request.Nothere(\"x\") %>\n<% Response.Writeln \"\" %><%Session.Abandon%>"),
            (Lines{"/p.asp:1: Request has no member Nothere",
                   "/p.asp:2: Response has no member Writeln"}));
}

TEST_F(PageFeaturesTest, AVariableOfOneClassHasTheMembersOfThatClass) {
  EXPECT_EQ(faults("<% Set d = CreateObject(\"Scripting.Dictionary\")\nd.Add 1, 2\n"
                   "d.Append 3\nSet d = Nothing %>"),
            Lines{"/p.asp:3: d has no member Append"});
}

TEST_F(PageFeaturesTest, AVariableThatMayBeSomethingElseIsPassedOver) {
  const std::string made = "Set d = CreateObject(\"Scripting.Dictionary\")\n";
  EXPECT_EQ(faults("<% " + made + "Set d = f()\nd.Append 3\nFunction f: End Function %>"), Lines{});
  EXPECT_EQ(faults("<% " + made + "For Each d In d\nd.Append 3\nNext %>"), Lines{});
  EXPECT_EQ(faults("<% " + made + "change d\nd.Append 3\nSub change(x): End Sub %>"), Lines{});
  EXPECT_EQ(faults("<% Sub show(d)\nd.Append 3\nEnd Sub\n" + made + " %>"), Lines{});
  EXPECT_EQ(faults("<% " + made + "Set d = CreateObject(\"ADODB.Recordset\")\nd.MoveNext %>"),
            Lines{});
  EXPECT_EQ(faults("<% Dim Session\nSession.Member %>"), Lines{});
}

TEST_F(PageFeaturesTest, CallsOfRenderersComeWithTheirStyles) {
  const std::vector<RendererCall> calls = PageFeatures::renderer_calls(
      source("<% s = Site.Show_HostList(\"Card\", 1)\nSite.show_maillist name\n%>"));
  std::string seen;
  for (const RendererCall& call : calls) {
    seen.append(call.place).append(" ").append(call.operation);
    seen.append(call.style ? "(" + *call.style + ")" : "").append(";");
  }
  EXPECT_NE(seen.find("/p.asp:1 Show_HostList(Card);"), std::string::npos) << seen;
  EXPECT_NE(seen.find("/p.asp:2 show_maillist;"), std::string::npos) << seen;
}

}  // namespace
}  // namespace rk::app
