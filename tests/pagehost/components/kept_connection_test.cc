// A connection and a document in the application, as pages of several threads read them.
#include <gtest/gtest.h>

#include <algorithm>

#include "adapters/xml/documents.h"
#include "pagehost/components/components.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

TEST(KeptConnection, EachPageGetsOneOfItsOwnOpenedWithTheSameText) {
  tests::PageSite site;
  add_components(site.programs);
  site.database->answer("Select 1 As n", {{"n"}, {{tests::number(7)}}});
  site.file("/global.asa",
            "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
            "Set cn = Server.CreateObject(\"ADODB.Connection\")\ncn.Open \"Data Source=a.db\"\n"
            "Set Application(\"cn\") = cn\nEnd Sub\n</script>");
  site.file("/a.asp",
            "<% Set cn = Application(\"cn\")\nResponse.Write cn.Execute(\"Select 1 As n\")(0) & "
            "(cn Is Application(\"CN\")) %>");
  EXPECT_EQ(site.body("/a.asp"), "7True");
  EXPECT_EQ(site.body("/a.asp"), "7True");
  const auto& log = site.database->log();
  EXPECT_EQ(std::count(log.begin(), log.end(), "open Data Source=a.db"), 3);
}

TEST(KeptDocument, EachPageGetsACopyOfItsOwn) {
  tests::PageSite site;
  xml::Documents documents;
  xml::start_xml();
  ComponentParts parts;
  parts.xml = &documents;
  add_components(site.programs, parts);
  site.file("/global.asa",
            "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
            "Set d = Server.CreateObject(\"MSXML2.FreeThreadedDOMDocument\")\n"
            "d.loadXML \"<a><b/></a>\"\nSet Application(\"d\") = d\nEnd Sub\n</script>");
  site.file("/a.asp",
            "<% Set d = Application(\"d\")\nd.documentElement.appendChild d.createElement(\"c\")\n"
            "Response.Write Application(\"d\").documentElement.xml %>");
  EXPECT_EQ(site.body("/a.asp"), "<a><b/><c/></a>");
  EXPECT_EQ(site.body("/a.asp"), "<a><b/><c/></a>");
}

TEST(KeptConnection, OtherObjectsAreStillRefused) {
  tests::PageSite site;
  add_components(site.programs);
  EXPECT_EQ(site.written("On Error Resume Next\n"
                         "Set Application(\"d\") = Server.CreateObject(\"Scripting.Dictionary\")\n"
                         "Response.Write Hex(Err.Number)"),
            "80004005");
}

}  // namespace
}  // namespace rk::pagehost
