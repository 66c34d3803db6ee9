// The names by which pages create objects, and what becomes of names that nobody serves.
#include "pagehost/components/components.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "adapters/pcre2/regexps.h"
#include "adapters/xml/documents.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

class NoServer final : public platform::HttpClient {
 public:
  std::variant<platform::HttpAnswer, platform::HttpFailure> send(
      const platform::HttpRequest&) override {
    return platform::HttpFailure::NotConnected;
  }
};

class ComponentsTest : public ::testing::Test {
 protected:
  ComponentsTest() {
    xml::start_xml();
    ComponentParts parts;
    parts.xml = &xml_;
    parts.http = [](PageServices&) { return std::make_shared<NoServer>(); };
    add_components(site_.programs, parts);
    site_.regexps = &regexps_;
  }
  std::string type_of(const std::string& name) {
    return site_.written("Response.Write TypeName(Server.CreateObject(\"" + name + "\"))");
  }

  xml::Documents xml_;
  pcre2::Regexps regexps_;
  tests::PageSite site_;
};

TEST_F(ComponentsTest, EachNameIsServedWithAndWithoutAVersion) {
  const std::pair<std::string, std::string> names[] = {
      {"ADODB.Connection", "Connection"},
      {"ADODB.Recordset", "Recordset"},
      {"ADODB.Command", "Command"},
      {"ADODB.Stream", "Stream"},
      {"Scripting.FileSystemObject", "FileSystemObject"},
      {"Scripting.Dictionary", "Dictionary"},
      {"MSXML2.DOMDocument", "DOMDocument"},
      {"MSXML2.FreeThreadedDOMDocument", "DOMDocument"},
      {"MSXML.DOMDocument", "DOMDocument"},
      {"Microsoft.XMLDOM", "DOMDocument"},
      {"Microsoft.FreeThreadedXMLDOM", "DOMDocument"},
      {"MSXML2.ServerXMLHTTP", "IServerXMLHTTPRequest2"},
      {"MSXML2.XMLHTTP", "IServerXMLHTTPRequest2"},
      {"Microsoft.XMLHTTP", "IServerXMLHTTPRequest2"},
      {"WinHttp.WinHttpRequest", "IWinHttpRequest"}};
  for (const auto& [name, type] : names) {
    for (const char* version : {"", ".1", ".3.0", ".6.0", ".5.1", ".2.8"}) {
      EXPECT_EQ(type_of(name + version), type) << name << version;
    }
    EXPECT_EQ(type_of(lowered_ascii(name)), type);
  }
  EXPECT_EQ(type_of("VBScript.RegExp"), "IRegExp2");
  EXPECT_EQ(type_of("VBScript.RegExp.5.5"), "IRegExp2");
}

TEST_F(ComponentsTest, DocumentsSelectByPatternsBeforeTheirFourthVersion) {
  const std::pair<std::string, std::string> names[] = {
      {"MSXML2.DOMDocument", "XSLPattern"},
      {"MSXML2.DOMDocument.3.0", "XSLPattern"},
      {"Microsoft.XMLDOM", "XSLPattern"},
      {"MSXML2.DOMDocument.4.0", "XPath"},
      {"Msxml2.FreeThreadedDOMDocument.6.0", "XPath"}};
  for (const auto& [name, language] : names) {
    EXPECT_EQ(site_.written("Response.Write Server.CreateObject(\"" + name +
                            "\").getProperty(\"SelectionLanguage\")"),
              language)
        << name;
  }
}

TEST_F(ComponentsTest, AnAbsentNameIsTrappedAndLoggedOnce) {
  for (const char* name :
       {"JMail.Message", "JMail.SMTPMail", "CDONTS.NewMail", "CDO.Message", "Persits.Upload",
        "Persits.Jpeg", "LyfUpload.UploadFile", "SoftArtisans.FileUp", "WScript.Shell",
        "Shell.Application", "ADOX.Catalog", "JRO.JetEngine", "ADODB.", "ADODB", "", ".1.0",
        "ADODB.Connection.x"}) {
    EXPECT_EQ(site_.written("On Error Resume Next\n"
                            "Set o = Nothing\n"
                            "Set o = Server.CreateObject(\"" +
                            std::string(name) +
                            "\")\nResponse.Write Err.Number & (o Is Nothing)\nErr.Clear\n"
                            "Set o = CreateObject(\"" +
                            std::string(name) + "\")\nResponse.Write Err.Number"),
              "-2147221005True429")
        << name;
  }
  const std::size_t lines = site_.log.lines().size();
  EXPECT_EQ(site_.written("On Error Resume Next\n"
                          "For i = 1 To 20000\nSet o = Server.CreateObject(\"JMail.Message\")\n"
                          "If Err.Number = -2147221005 Then n = n + 1\nErr.Clear\nNext\n"
                          "Response.Write n"),
            "20000");
  EXPECT_EQ(site_.log.lines().size(), lines);
}

TEST_F(ComponentsTest, AServerThatIsNotThereIsAnErrorThatPagesTrap) {
  EXPECT_EQ(site_.written("On Error Resume Next\n"
                          "Set http = Server.CreateObject(\"MSXML2.ServerXMLHTTP.3.0\")\n"
                          "http.setTimeouts 1000, 1000, 1000, 1000\n"
                          "http.open \"GET\", \"http://a.example/\", False\nhttp.send\n"
                          "Response.Write Err.Number"),
            "-2147012867");
}

}  // namespace
}  // namespace rk::pagehost
