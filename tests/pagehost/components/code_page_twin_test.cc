// One site twice: its sources in UTF-8 under code page 65001, and the same characters in GB2312
// under 936. What is sent is in each site's code page, and what comes back must be the same
// characters.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "adapters/codepage/code_pages.h"
#include "adapters/xml/documents.h"
#include "pagehost/components/components.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kWord = "\xE4\xB8\xAD\xE6\x96\x87\xE9\x95\x95";  // three characters

class OneSite {
 public:
  OneSite(int code_page, const std::map<std::string, std::string>& files) : code_page_(code_page) {
    xml::start_xml();
    ComponentParts parts;
    parts.xml = &xml_;
    add_components(site_.programs, parts);
    site_.real_code_pages = &pages_;
    site_.options.page_code_page = code_page;
    for (const auto& [path, text] : files) site_.file(path, sent(text));
  }
  std::string sent(std::string_view utf8) const {
    return code_page_ == platform::kUtf8 ? std::string(utf8) : pages_.from_utf8(utf8, code_page_);
  }
  std::string percent(std::string_view utf8) const {
    std::string out;
    for (const char c : sent(utf8)) {
      if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) {
        out += c;  // the second byte of a character may be a letter
        continue;
      }
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      out += '%';
      out += kDigits[static_cast<unsigned char>(c) >> 4];
      out += kDigits[static_cast<unsigned char>(c) & 15];
    }
    return out;
  }
  // The body of the answer, as UTF-8.
  std::string characters(const PageRequest& request) {
    const std::string body = site_.host().run(request).body;
    return code_page_ == platform::kUtf8 ? body : pages_.to_utf8(body, code_page_);
  }
  tests::PageSite& site() { return site_; }

 private:
  int code_page_;
  codepage::IcuCodePages pages_;
  xml::Documents xml_;
  tests::PageSite site_;
};

class CodePageTwins : public ::testing::Test {
 protected:
  static std::map<std::string, std::string> files(std::string_view page) {
    return {
        {"/a.asp", std::string(page)},
        {"/part.inc", "<p><%= \"" + std::string(kWord) + "\" %>" + std::string(kWord) + "</p>"}};
  }
  // The same page in both; `query` and `form` are made for each.
  static std::string same(std::string_view page, bool with_form = false,
                          std::string_view expected = {}) {
    std::string answers[2];
    for (const int code_page : {platform::kUtf8, platform::kGb2312}) {
      OneSite site(code_page, files(page));
      PageRequest request = tests::PageSite::request("/a.asp?q=" + site.percent(kWord));
      request.headers.emplace_back("Cookie", "c=" + site.percent(kWord));
      if (with_form) {
        request.method = "POST";
        request.headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
        request.body = "f=" + site.percent(kWord) + "&raw=" + site.sent(kWord);
      }
      answers[code_page == platform::kUtf8 ? 0 : 1] = site.characters(request);
    }
    EXPECT_EQ(answers[0], answers[1]);
    EXPECT_EQ(answers[0], expected);
    return answers[0];
  }
};

TEST_F(CodePageTwins, SourcesAndIncludesAreTheSameCharacters) {
  const std::string word(kWord);
  same("<!--#include file=\"part.inc\"-->" + word + "<%= Len(\"" + word + "\") & Mid(\"" + word +
           "\", 2, 1) %>",
       false, "<p>" + word + word + "</p>" + word + "3\xE6\x96\x87");
}

TEST_F(CodePageTwins, WhatIsSentIsReadAsTheSameCharacters) {
  const std::string word(kWord);
  same(
      "<%= Request.QueryString(\"q\") & Request.Form(\"f\") & Request.Form(\"raw\") & "
      "Request.Cookies(\"c\") & Len(Request(\"q\")) & (Request(\"q\") = \"" +
          word + "\") %>",
      true, word + word + word + word + "3True");
}

TEST_F(CodePageTwins, WhatGoesOutInPercentBytesComesBackTheSame) {
  for (const int code_page : {platform::kUtf8, platform::kGb2312}) {
    OneSite site(code_page, files("<% Response.Cookies(\"n\") = \"" + std::string(kWord) +
                                  "\" %><%= Server.URLEncode(\"" + std::string(kWord) + "\") %>"));
    const PageAnswer answer = site.site().run("/a.asp");
    EXPECT_EQ(answer.body, site.percent(kWord));
    EXPECT_EQ(tests::header_of(answer, "Set-Cookie"), "n=" + site.percent(kWord) + "; path=/|");
  }
}

TEST_F(CodePageTwins, FilesAndStreamsHoldTheSameCharacters) {
  const std::string word(kWord);
  same(
      "<% Set fso = Server.CreateObject(\"Scripting.FileSystemObject\")\n"
      "p = Server.MapPath(\"t.txt\")\n"
      "Set f = fso.CreateTextFile(p)\nf.WriteLine \"" +
          word +
          "\"\nf.Close\n"
          "Response.Write fso.OpenTextFile(p).ReadLine & fso.GetFile(p).Size\n"
          "Set s = Server.CreateObject(\"ADODB.Stream\")\ns.Type = 2\ns.Charset = "
          "\"gb2312\"\ns.Open\n"
          "s.LoadFromFile p\nResponse.Write s.ReadText(3)\ns.Close\n"
          "s.Charset = \"utf-8\"\ns.Open\ns.WriteText \"" +
          word +
          "\"\ns.SaveToFile p, 2\ns.Close\n"
          "s.Open\ns.LoadFromFile p\nResponse.Write s.ReadText & s.Size %>",
      false, word + "8" + word + word + "12");
}

TEST_F(CodePageTwins, DocumentsHoldTheSameCharacters) {
  const std::string word(kWord);
  same(
      "<% Set d = Server.CreateObject(\"Microsoft.XMLDOM\")\n"
      "d.loadXML \"<?xml version='1.0' encoding='gb2312'?><a>" +
          word +
          "</a>\"\n"
          "d.save Server.MapPath(\"d.xml\")\n"
          "Set e = Server.CreateObject(\"Microsoft.XMLDOM\")\ne.load Server.MapPath(\"d.xml\")\n"
          "Response.Write e.documentElement.text %>",
      false, word);
}

TEST_F(CodePageTwins, WhatIsSavedIntoAResponseIsOfItsCharset) {
  const std::string word(kWord);
  same("<% Set d = Server.CreateObject(\"MSXML2.DOMDocument\")\nd.loadXML \"<a>" + word +
           "</a>\"\nd.save Response\n"
           "Set rs = Server.CreateObject(\"ADODB.Recordset\")\nrs.Fields.Append \"" +
           word + "\", 202, 9\nrs.Open\nrs.AddNew\nrs(0) = \"" + word +
           "\"\nrs.Update\nrs.Save Server.MapPath(\"r.xml\"), 1\n"
           "Set back = Server.CreateObject(\"ADODB.Recordset\")\n"
           "back.Open Server.MapPath(\"r.xml\")\nResponse.Write back(\"" +
           word + "\") %>",
       false, "<a>" + word + "</a>\r\n" + word);
}

TEST_F(CodePageTwins, AscAndChrGoByTheServersCodePage) {
  same("<%= Hex(Asc(\"\xE4\xB8\xAD\")) & Chr(&HD6D0) & AscW(\"\xE4\xB8\xAD\") %>", false,
       "D6D0\xE4\xB8\xAD"
       "20013");
}

TEST_F(CodePageTwins, APageOfTheOtherCodePageRunsInEither) {
  for (const int code_page : {platform::kUtf8, platform::kGb2312}) {
    OneSite site(code_page, {});
    codepage::IcuCodePages pages;
    site.site().file("/gb.asp", "<%@ CodePage=936 %><%= Request(\"q\") & \"" +
                                    pages.from_utf8(kWord, 936) + "\" %>");
    site.site().file("/utf.asp",
                     "<%@ CodePage=65001 %><%= Request(\"q\") & \"" + std::string(kWord) + "\" %>");
    EXPECT_EQ(pages.to_utf8(site.site().body("/gb.asp?q=%D6%D0"), 936),
              "\xE4\xB8\xAD" + std::string(kWord));
    EXPECT_EQ(site.site().body("/utf.asp?q=%E4%B8%AD"), "\xE4\xB8\xAD" + std::string(kWord));
  }
}

TEST_F(CodePageTwins, ASessionsCodePageStaysWithIt) {
  codepage::IcuCodePages pages;
  OneSite site(platform::kUtf8, {{"/a.asp", "<% Session.CodePage = 936 %>x"},
                                 {"/b.asp", "<%= Request(\"q\") & Session.CodePage %>"}});
  const PageAnswer first = site.site().run("/a.asp");
  const std::string cookie = tests::header_of(first, "Set-Cookie");
  PageRequest request = tests::PageSite::request("/b.asp?q=%D6%D0");
  request.headers.emplace_back("Cookie", cookie.substr(0, cookie.find(';')));
  EXPECT_EQ(site.site().host().run(request).body,
            "\xD6\xD0"
            "936");
}

}  // namespace
}  // namespace rk::pagehost
