#include "adapters/xml/documents.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "value/script_error.h"

namespace rk::xml {
namespace {

using platform::XmlDocument;
using platform::XmlFault;
using platform::XmlKind;
using platform::XmlNode;

class XmlTest : public ::testing::Test {
 protected:
  XmlTest() { start_xml(); }
  std::unique_ptr<XmlDocument> parsed(std::string_view text, bool keep = false) {
    auto result = Documents().parse(text, keep);
    if (auto* fault = std::get_if<XmlFault>(&result)) {
      ADD_FAILURE() << fault->reason;
      return Documents().empty_document();
    }
    return std::move(std::get<std::unique_ptr<XmlDocument>>(result));
  }
  XmlFault fault(std::string_view text) {
    auto result = Documents().parse(text, false);
    auto* found = std::get_if<XmlFault>(&result);
    return found == nullptr ? XmlFault{XmlFault::Kind::Malformed, "a document", -1, -1} : *found;
  }
  static XmlNode* top(XmlDocument& document) {
    for (XmlNode* each : document.children(document.root())) {
      if (document.kind(each) == XmlKind::Element) return each;
    }
    return nullptr;
  }
  static std::int32_t error_of(const std::function<void()>& step) {
    try {
      step();
    } catch (const ScriptError& error) {
      return error.number();
    }
    return 0;
  }
};

TEST_F(XmlTest, WhiteSpaceBetweenElementsIsNoNodeUnlessKept) {
  constexpr std::string_view kText = "<a>\n <b> x </b>\n</a>";
  const auto document = parsed(kText);
  EXPECT_EQ(document->children(top(*document)).size(), 1u);
  EXPECT_EQ(document->xml(top(*document)), "<a>\r\n\t<b> x </b>\r\n</a>");
  const auto kept = parsed(kText, true);
  EXPECT_EQ(kept->xml(top(*kept)), kText);
}

TEST_F(XmlTest, LinesAndBlanksComeBackWhereTheyStood) {
  const auto document = parsed("<a>\n<b><c/> <d/></b>\n\n<!--x--><e/>\n</a>");
  XmlNode* a = top(*document);
  EXPECT_EQ(document->xml(a), "<a>\r\n\t<b><c/> <d/></b>\r\n\t<!--x--><e/>\r\n</a>");
  XmlNode* b = document->children(a).front();
  EXPECT_EQ(document->xml(b), "<b><c/> <d/></b>");
  document->insert(a, document->create(XmlKind::Element, "f", "", ""), nullptr);
  document->insert(a, b, nullptr);
  EXPECT_EQ(document->xml(a), "<a>\r\n\t<!--x--><e/><f/><b><c/> <d/></b>\r\n</a>");
  document->set_text(a, "t");
  EXPECT_EQ(document->xml(a), "<a>t</a>");
}

TEST_F(XmlTest, ALaidOutDocumentIsWrittenTheSameAgain) {
  const auto once = parsed("<a>\n <b>\n  <c>x</c> </b>\n <d>\n </d></a>");
  const std::string text = once->xml(top(*once));
  EXPECT_EQ(text, "<a>\r\n\t<b>\r\n\t\t<c>x</c> </b>\r\n\t<d/></a>");
  const auto again = parsed(text);
  EXPECT_EQ(again->xml(top(*again)), text);
}

TEST_F(XmlTest, LinesFarDownDoNotGrowWithTheirDepth) {
  std::string text;
  std::string end;
  for (int i = 0; i < 200; ++i) {
    text += "<a>\n";
    end += "\n</a>";
  }
  const auto document = parsed(text + "<b/>" + end);
  const std::string written = document->xml(top(*document));
  EXPECT_NE(written.find("\r\n" + std::string(16, '\t') + "<b/>"), std::string::npos);
  EXPECT_EQ(written.find(std::string(17, '\t')), std::string::npos);
}

TEST_F(XmlTest, TextsAreJoinedByABlankWhereWhiteSpaceStood) {
  const auto document =
      parsed("<a>\n<b>x</b>\n\n<b>y</b><c>\n<d>z</d>\n</c>\n<b/>\n<b>1</b>\n</a>");
  EXPECT_EQ(document->text(top(*document)), "x y z 1 ");
  EXPECT_EQ(document->text(document->root()), "x y z 1 ");
}

TEST_F(XmlTest, CharactersStandAsTheyAreInADocumentThatWasBuilt) {
  const auto document = Documents().empty_document();
  XmlNode* a = document->create(XmlKind::Element, "p:\xE4\xB8\xAD", "urn:\xE4\xB8\xAD", "");
  document->insert(document->root(), a, nullptr);
  document->set_attribute(a, "k", "\xE4\xB8\xAD<&>\"'\t\r\n");
  document->insert(a, document->create(XmlKind::Text, "", "", "x\r\ny<&>\"'"), nullptr);
  document->insert(a, document->create(XmlKind::CData, "", "", "<]]>&#13;"), nullptr);
  document->insert(a, document->create(XmlKind::Comment, "", "", "&#13;"), nullptr);
  document->insert(a, document->create(XmlKind::Instruction, "i", "", "a b"), nullptr);
  document->insert(a, document->create(XmlKind::EntityReference, "e", "", ""), nullptr);
  const std::string name = "p:\xE4\xB8\xAD";
  EXPECT_EQ(
      document->xml(a),
      "<" + name +
          " xmlns:p=\"urn:\xE4\xB8\xAD\" k=\"\xE4\xB8\xAD&lt;&amp;&gt;&quot;'&#9;&#13;&#10;\">"
          "x\r\ny&lt;&amp;&gt;\"'<![CDATA[<]]]]><![CDATA[>&#13;]]><!--&#13;--><?i a b?>&e;</" +
          name + ">");
  EXPECT_EQ(document->xml(document->attributes(a).front()),
            " k=\"\xE4\xB8\xAD&lt;&amp;&gt;&quot;'&#9;&#13;&#10;\"");
}

TEST_F(XmlTest, TheDeclarationIsANode) {
  const auto document = parsed("<?xml version=\"1.0\" encoding=\"gb2312\"?><!--c--><a/>");
  const auto children = document->children(document->root());
  ASSERT_EQ(children.size(), 3u);
  EXPECT_EQ(document->kind(children[0]), XmlKind::Instruction);
  EXPECT_EQ(document->value(children[0]), "version=\"1.0\" encoding=\"gb2312\"");
  EXPECT_EQ(document->kind(children[1]), XmlKind::Comment);
}

TEST_F(XmlTest, AnInstructionWhoseNameBeginsLikeTheDeclarationIsItsOwn) {
  const auto document = parsed("<?xml-stylesheet href='a.xsl'?><a/>");
  const auto children = document->children(document->root());
  ASSERT_EQ(children.size(), 2u);
  EXPECT_EQ(document->name(children[0]), "xml-stylesheet");
}

TEST_F(XmlTest, AFaultTellsItsPlace) {
  const XmlFault mismatch = fault("<a>\n<b></a>");
  EXPECT_EQ(mismatch.kind, XmlFault::Kind::TagMismatch);
  EXPECT_EQ(mismatch.line, 2);
  EXPECT_EQ(fault("").kind, XmlFault::Kind::NoRoot);
  EXPECT_EQ(fault("<a>\xFF</a>").line, 1);
}

TEST_F(XmlTest, NoFileIsReadForAnEntity) {
  const std::string path = ::testing::TempDir() + "rk_xml_secret.txt";
  std::ofstream(path) << "secret";
  const std::string text = "<!DOCTYPE a [<!ENTITY x SYSTEM \"" + path + "\">]><a>&x;</a>";
  auto result = Documents().parse(text, false);
  if (auto* document = std::get_if<std::unique_ptr<XmlDocument>>(&result)) {
    EXPECT_EQ((*document)->text((*document)->root()).find("secret"), std::string::npos);
  }
  std::filesystem::remove(path);
}

TEST_F(XmlTest, EntitiesOfTheDocumentStandForTheirText) {
  const auto document = parsed("<!DOCTYPE a [<!ENTITY x \"one &#38;amp; two\">]><a>&x;</a>");
  EXPECT_EQ(document->text(top(*document)), "one & two");
}

TEST_F(XmlTest, EntitiesThatGrowWithoutEndAreRefusedAtOnce) {
  std::string text = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
  for (int i = 1; i < 12; ++i) {
    text += "<!ENTITY e" + std::to_string(i) + " \"";
    for (int j = 0; j < 10; ++j) text += "&e" + std::to_string(i - 1) + ";";
    text += "\">";
  }
  const auto start = std::chrono::steady_clock::now();
  EXPECT_NE(fault(text + "]><a>&e11;</a>").line, -1);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(XmlTest, OneLongEntityNamedOftenIsRefused) {
  std::string text = "<!DOCTYPE a [<!ENTITY e \"" + std::string(100'000, 'x') + "\">]><a>";
  for (int i = 0; i < 100'000; ++i) text += "&e;";
  EXPECT_NE(fault(text + "</a>").line, -1);
}

TEST_F(XmlTest, DeepAndLargeDocumentsAreRefused) {
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<a>";
  EXPECT_NE(fault(deep).line, -1);
  std::string wide = "<a>";
  for (int i = 0; i < 1'000'000; ++i) wide += "<b/>";
  EXPECT_EQ(fault(wide + "</a>").kind, XmlFault::Kind::TooLarge);
  EXPECT_EQ(fault("<a>" + std::string(kMaxTextBytes, 'x') + "</a>").kind, XmlFault::Kind::TooLarge);
}

TEST_F(XmlTest, ATreeIsBuiltByHand) {
  const auto document = Documents().empty_document();
  XmlNode* list = document->create(XmlKind::Element, "list", "", "");
  document->insert(document->root(), list, nullptr);
  XmlNode* second = document->create(XmlKind::Element, "item", "", "");
  document->insert(list, second, nullptr);
  document->set_attribute(second, "id", "a<\"b\"");
  document->set_text(second, "x & y");
  XmlNode* first = document->create(XmlKind::Comment, "", "", "c");
  document->insert(list, first, second);
  EXPECT_EQ(document->xml(list),
            "<list><!--c--><item id=\"a&lt;&quot;b&quot;\">x &amp; y</item></list>");
  document->remove(second);
  EXPECT_EQ(document->xml(list), "<list><!--c--></list>");
  EXPECT_EQ(document->text(second), "x & y");
}

TEST_F(XmlTest, TextsSideBySideStayApart) {
  const auto document = parsed("<a>one</a>");
  XmlNode* more = document->create(XmlKind::Text, "", "", "two");
  document->insert(top(*document), more, nullptr);
  EXPECT_EQ(document->children(top(*document)).size(), 2u);
  EXPECT_EQ(document->value(more), "two");
  EXPECT_EQ(document->text(top(*document)), "onetwo");
}

TEST_F(XmlTest, WhatATextReplacedStaysWhole) {
  const auto document = parsed("<a><b>old</b></a>");
  XmlNode* old = document->children(top(*document)).at(0);
  document->set_text(top(*document), "new");
  EXPECT_EQ(document->xml(top(*document)), "<a>new</a>");
  EXPECT_EQ(document->xml(old), "<b>old</b>");
  EXPECT_EQ(document->parent(old), nullptr);
}

TEST_F(XmlTest, NodesStandOnlyWhereTheyMay) {
  const auto document = parsed("<a><b/></a>");
  XmlNode* a = top(*document);
  XmlNode* b = document->children(a).at(0);
  EXPECT_NE(error_of([&] { document->insert(b, a, nullptr); }), 0);
  EXPECT_NE(error_of([&] { document->insert(a, a, nullptr); }), 0);
  XmlNode* other = document->create(XmlKind::Element, "c", "", "");
  EXPECT_NE(error_of([&] { document->insert(document->root(), other, nullptr); }), 0);
  EXPECT_EQ(error_of([&] { document->create(XmlKind::Element, "a b", "", ""); }), -1072896760);
  XmlNode* inner = a;
  EXPECT_NE(error_of([&] {
              for (int i = 0; i < 100'000; ++i) {
                XmlNode* next = document->create(XmlKind::Element, "d", "", "");
                document->insert(inner, next, nullptr);
                inner = next;
              }
            }),
            0);
}

TEST_F(XmlTest, AFragmentGivesItsChildren) {
  const auto document = parsed("<a><z/></a>");
  XmlNode* fragment = document->create(XmlKind::Fragment, "", "", "");
  for (const std::string_view name : {"x", "y"}) {
    document->insert(fragment, document->create(XmlKind::Element, name, "", ""), nullptr);
  }
  document->insert(top(*document), fragment, document->children(top(*document)).at(0));
  EXPECT_EQ(document->xml(top(*document)), "<a><x/><y/><z/></a>");
  EXPECT_TRUE(document->children(fragment).empty());
}

TEST_F(XmlTest, NodesOfAnotherDocumentAreCopied) {
  const auto from = parsed("<a xmlns:p='urn:p'><p:b k='1'>t</p:b></a>");
  const auto to = parsed("<list/>");
  XmlNode* made = to->copy(*from, from->children(top(*from)).at(0), true);
  to->insert(top(*to), made, nullptr);
  EXPECT_EQ(to->xml(top(*to)), "<list><p:b xmlns:p=\"urn:p\" k=\"1\">t</p:b></list>");
  EXPECT_EQ(to->namespace_name(made), "urn:p");
  EXPECT_EQ(to->xml(to->copy(*from, from->children(top(*from)).at(0), false)),
            "<p:b xmlns:p=\"urn:p\" k=\"1\"/>");
}

TEST_F(XmlTest, NamespacesAreDeclaredOnce) {
  const auto document = Documents().empty_document();
  XmlNode* feed = document->create(XmlKind::Element, "feed", "urn:f", "");
  document->insert(document->root(), feed, nullptr);
  document->insert(feed, document->create(XmlKind::Element, "entry", "urn:f", ""), nullptr);
  document->set_attribute(feed, "xmlns:d", "urn:d");
  document->insert(feed, document->create(XmlKind::Element, "d:x", "urn:d", ""), nullptr);
  XmlNode* named = document->create(XmlKind::Attribute, "d:k", "urn:d", "v");
  document->attach_attribute(feed, named);
  EXPECT_EQ(document->xml(feed),
            "<feed xmlns=\"urn:f\" xmlns:d=\"urn:d\" d:k=\"v\"><entry/><d:x/></feed>");
  EXPECT_EQ(document->declared_namespace(feed, "xmlns:d"), "urn:d");
  EXPECT_EQ(document->declared_namespace(feed, "xmlns"), "urn:f");
}

TEST_F(XmlTest, AnAttributeTakesThePlaceOfItsName) {
  const auto document = parsed("<a k='1' l='2'/>");
  XmlNode* old = document->attribute(top(*document), "k");
  document->attach_attribute(top(*document), document->create(XmlKind::Attribute, "k", "", "3"));
  EXPECT_EQ(document->xml(top(*document)), "<a l=\"2\" k=\"3\"/>");
  EXPECT_EQ(document->value(old), "1");
  document->remove(document->attribute(top(*document), "l"));
  EXPECT_EQ(document->attribute(top(*document), "l"), nullptr);
}

TEST_F(XmlTest, NodesAreSelectedInDocumentOrder) {
  const auto document = parsed("<a><i n='1'/><i n='2'/><j xmlns='urn:j'/></a>");
  EXPECT_EQ(document->select(document->root(), "//i", {}).size(), 2u);
  EXPECT_EQ(document->select(top(*document), "i[@n='2']", {}).size(), 1u);
  EXPECT_EQ(document->select(top(*document), "i/@n", {}).size(), 2u);
  EXPECT_EQ(document->select(top(*document), "q:j", {{"q", "urn:j"}}).size(), 1u);
  EXPECT_TRUE(document->select(top(*document), "namespace::*", {}).empty());
  EXPECT_NE(error_of([&] { document->select(top(*document), "i[", {}); }), 0);
  EXPECT_NE(error_of([&] { document->select(top(*document), "count(i)", {}); }), 0);
  EXPECT_NE(error_of([&] { document->select(top(*document), "q:j", {}); }), 0);
}

TEST_F(XmlTest, AnExpressionThatTakesTooLongEnds) {
  std::string text = "<a>";
  for (int i = 0; i < 3000; ++i) text += "<b/>";
  const auto document = parsed(text + "</a>");
  EXPECT_NE(error_of([&] {
              document->select(document->root(), "//b[count(//b[count(//b) > 1]) > 1]", {});
            }),
            0);
  EXPECT_NE(error_of([&] { document->select(document->root(), std::string(5000, '/'), {}); }), 0);
  const std::string brackets(500, '(');
  EXPECT_NE(error_of([&] { document->select(document->root(), brackets, {}); }), 0);
}

TEST_F(XmlTest, WhatADocumentTakesIsCounted) {
  const auto document = parsed("<a/>");
  const std::size_t before = document->bytes();
  document->create(XmlKind::Text, "", "", std::string(1000, 'x'));
  EXPECT_GE(document->bytes(), before + 1000);
}

}  // namespace
}  // namespace rk::xml
