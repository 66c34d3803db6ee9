#include "pagehost/components/xml_document.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "adapters/xml/documents.h"
#include "pagehost/components/stream_object.h"
#include "tests/support/memory_files.h"
#include "tests/support/object_calls.h"
#include "tests/support/toy_code_pages.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

class XmlDocumentTest : public ::testing::Test {
 protected:
  XmlDocumentTest() { xml::start_xml(); }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  XmlServices services() {
    FileSystem system{&files_, &pages_, platform::kGb2312};
    system.memory = memory_;
    return {&xml_, system, "/site", nullptr};
  }
  Value document(std::string_view text = "") {
    Value made = Value::object(make_ref<XmlDocumentObject>(services()));
    if (!text.empty()) {
      EXPECT_TRUE(get(made, "loadXML", {t(text)}).as_boolean());
    }
    return made;
  }
  static Value top(const Value& document) { return get(document, "documentElement"); }
  static bool is_nothing(const Value& value) {
    return value.is_object() && value.as_object() == nullptr;
  }
  xml::Documents xml_;
  tests::MemoryFiles files_;
  tests::ToyCodePages pages_;
  std::shared_ptr<HeldMemory> memory_ = std::make_shared<HeldMemory>();
};

TEST_F(XmlDocumentTest, AFileIsReadByTheEncodingThatItDeclares) {
  files_.put("/site/a.xml", "<?xml version='1.0' encoding='gb2312'?><a>\xD6\xD0\xCE\xC4</a>");
  const Value made = document();
  EXPECT_TRUE(get(made, "load", {t("/site/a.xml")}).as_boolean());
  EXPECT_EQ(text_of(get(top(made), "text")), "\xE4\xB8\xAD\xE6\x96\x87");
  EXPECT_EQ(text_of(get(made, "xml")),
            "<?xml version=\"1.0\"?>\r\n<a>\xE4\xB8\xAD\xE6\x96\x87</a>\r\n");
}

TEST_F(XmlDocumentTest, AFileIsSavedInTheEncodingThatItDeclares) {
  const Value made = document(
      "<?xml version=\"1.0\" encoding=\"gb2312\"?><a>\xE4\xB8\xAD\xC3\xA9\xF0\x9F\x98\x80</a>");
  get(made, "save", {t("/site/b.xml")});
  EXPECT_EQ(files_.read("/site/b.xml"),
            "<?xml version=\"1.0\" encoding=\"gb2312\"?>\r\n<a>\xD6\xD0&#233;&#128512;</a>\r\n");
}

TEST_F(XmlDocumentTest, AnUnknownEncodingIsAProblemOfTheDocument) {
  files_.put("/site/a.xml", "<?xml version='1.0' encoding='klingon'?><a/>");
  const Value made = document();
  EXPECT_FALSE(get(made, "load", {t("/site/a.xml")}).as_boolean());
  EXPECT_EQ(get(get(made, "parseError"), "errorCode").as_long(), -1072896657);
}

TEST_F(XmlDocumentTest, AMissingFileIsAProblemOfTheDocument) {
  const Value made = document("<a/>");
  EXPECT_FALSE(get(made, "load", {t("none.xml")}).as_boolean());
  EXPECT_EQ(get(get(made, "parseError"), "errorCode").as_long(), -2146697210);
  EXPECT_TRUE(is_nothing(top(made)));
}

TEST_F(XmlDocumentTest, AFaultTellsItsLineAndText) {
  const Value made = document();
  EXPECT_FALSE(get(made, "loadXML", {t("<a>\n <b>\n</a>")}).as_boolean());
  const Value problem = get(made, "parseError");
  EXPECT_EQ(get(problem, "errorCode").as_long(), -1072896659);
  EXPECT_EQ(get(problem, "line").as_long(), 3);
  EXPECT_EQ(text_of(get(problem, "srcText")), "</a>");
  EXPECT_TRUE(get(made, "loadXML", {t("<a/>")}).as_boolean());
  EXPECT_EQ(get(get(made, "parseError"), "errorCode").as_long(), 0);
}

TEST_F(XmlDocumentTest, NodesOutliveWhatIsLoadedInTheirPlace) {
  const Value made = document("<a><b>x</b></a>");
  const Value old = get(top(made), "firstChild");
  get(made, "loadXML", {t("<c/>")});
  EXPECT_EQ(text_of(get(old, "xml")), "<b>x</b>");
  EXPECT_EQ(text_of(get(get(old, "parentNode"), "nodeName")), "a");
}

TEST_F(XmlDocumentTest, ANodeIsOneObject) {
  const Value made = document("<a><b/></a>");
  const Value b = get(top(made), "firstChild");
  EXPECT_EQ(b.as_object(), get(top(made), "lastChild").as_object());
  EXPECT_EQ(b.as_object(), get(get(made, "selectNodes", {t("//b")}), "", {n(0)}).as_object());
}

TEST_F(XmlDocumentTest, ListsOfChildrenShowEveryChange) {
  const Value made = document("<a><b/></a>");
  const Value list = get(top(made), "childNodes");
  const Value found = get(made, "selectNodes", {t("/a/*")});
  get(top(made), "appendChild", {get(made, "createElement", {t("c")})});
  EXPECT_EQ(get(list, "length").as_long(), 2);
  EXPECT_EQ(get(found, "length").as_long(), 1);
  EXPECT_TRUE(is_nothing(get(list, "item", {n(5)})));
  EXPECT_EQ(text_of(get(get(list, "nextNode"), "nodeName")), "b");
  EXPECT_EQ(text_of(get(get(list, "nextNode"), "nodeName")), "c");
  EXPECT_TRUE(is_nothing(get(list, "nextNode")));
}

TEST_F(XmlDocumentTest, ANodeOfAnotherDocumentMovesWithItsObject) {
  const Value from = document("<a><b k='1'/></a>");
  const Value to = document("<list/>");
  const Value b = get(top(from), "firstChild");
  get(top(to), "appendChild", {b});
  EXPECT_EQ(text_of(get(from, "xml")), "<a/>\r\n");
  EXPECT_EQ(text_of(get(to, "xml")), "<list><b k=\"1\"/></list>\r\n");
  get(b, "setAttribute", {t("k"), n(2)});
  EXPECT_EQ(text_of(get(to, "xml")), "<list><b k=\"2\"/></list>\r\n");
}

TEST_F(XmlDocumentTest, ChildrenAreInsertedReplacedAndRemoved) {
  const Value made = document("<a><b/><c/></a>");
  const Value a = top(made);
  const Value d = get(made, "createElement", {t("d")});
  get(a, "insertBefore", {d, get(a, "firstChild")});
  const Value b = get(made, "selectSingleNode", {t("//b")});
  const Value old = get(a, "replaceChild", {get(made, "createTextNode", {t("x<y")}), b});
  EXPECT_EQ(old.as_object(), b.as_object());
  get(a, "removeChild", {get(a, "lastChild")});
  EXPECT_EQ(text_of(get(a, "xml")), "<a><d/>x&lt;y</a>");
  EXPECT_NE(error_number([&] { get(a, "removeChild", {b}); }), 0);
  EXPECT_NE(error_number([&] { get(d, "appendChild", {a}); }), 0);
  EXPECT_EQ(error_number([&] { get(a, "appendChild", {t("x")}); }), 13);
  get(a, "insertBefore", {b, Value::null()});
  EXPECT_EQ(text_of(get(a, "xml")), "<a><d/>x&lt;y<b/></a>");
}

TEST_F(XmlDocumentTest, AttributesAreNodesToo) {
  const Value made = document("<a k='1'/>");
  const Value a = top(made);
  const Value map = get(a, "attributes");
  const Value fresh = get(made, "createAttribute", {t("l")});
  let(fresh, "value", {t("2")});
  get(map, "setNamedItem", {fresh});
  EXPECT_EQ(get(map, "length").as_long(), 2);
  EXPECT_EQ(text_of(get(get(a, "getAttributeNode", {t("l")}), "nodeValue")), "2");
  get(map, "removeNamedItem", {t("k")});
  EXPECT_EQ(text_of(get(a, "xml")), "<a l=\"2\"/>");
  EXPECT_TRUE(get(a, "getAttribute", {t("k")}).is_null());
  EXPECT_TRUE(is_nothing(get(map, "getNamedItem", {t("k")})));
}

TEST_F(XmlDocumentTest, SelectionsAreXslPatternsUntilXPathIsSet) {
  const Value made = document("<a><b>1</b><b>2</b></a>");
  EXPECT_EQ(text_of(get(made, "getProperty", {t("SelectionLanguage")})), "XSLPattern");
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//b[0]")}), "text")), "1");
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//b[1]")}), "text")), "2");
  EXPECT_EQ(text_of(get(get(top(made), "selectSingleNode", {t("b[end()]")}), "text")), "2");
  get(made, "setProperty", {t("selectionlanguage"), t("xpath")});
  EXPECT_EQ(text_of(get(made, "getProperty", {t("SelectionLanguage")})), "XPath");
  EXPECT_TRUE(is_nothing(get(made, "selectSingleNode", {t("//b[0]")})));
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//b[1]")}), "text")), "1");
  EXPECT_TRUE(get(made, "loadXML", {t("<a><b>3</b></a>")}).as_boolean());
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//b[position()=1]")}), "text")), "3");
  EXPECT_EQ(error_number([&] { get(made, "setProperty", {t("SelectionLanguage"), t("SQL")}); }), 5);
}

TEST_F(XmlDocumentTest, PrefixesOfPatternsAreThoseOfTheDocument) {
  const Value made = document(
      "<r xmlns:dc='urn:dc' xmlns:content='urn:c'><i><dc:creator>Ann</dc:creator>"
      "<content:encoded>x</content:encoded></i><i dc:k='1'/></r>");
  const Value item = get(top(made), "firstChild");
  EXPECT_EQ(text_of(get(get(item, "selectSingleNode", {t("dc:creator")}), "text")), "Ann");
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//content:encoded")}), "text")), "x");
  EXPECT_EQ(get(get(made, "selectNodes", {t("//dc:*")}), "length").as_long(), 1);
  EXPECT_EQ(get(get(made, "selectNodes", {t("//i[@dc:k]")}), "length").as_long(), 1);
  EXPECT_TRUE(is_nothing(get(item, "selectSingleNode", {t("none:creator")})));
  get(made, "setProperty", {t("SelectionNamespaces"), t("xmlns:dc='urn:c'")});
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//dc:encoded")}), "text")), "x");
  EXPECT_TRUE(is_nothing(get(made, "selectSingleNode", {t("//dc:creator")})));
}

TEST_F(XmlDocumentTest, PrefixesOfXPathAreOnlyThoseThatAreSet) {
  const Value made = document("<r xmlns:dc='urn:dc'><dc:creator>Ann</dc:creator></r>");
  get(made, "setProperty", {t("SelectionLanguage"), t("XPath")});
  EXPECT_NE(error_number([&] { get(made, "selectSingleNode", {t("//dc:creator")}); }), 0);
  get(made, "setProperty", {t("SelectionNamespaces"), t("xmlns:q='urn:dc'")});
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//q:creator")}), "text")), "Ann");
}

TEST_F(XmlDocumentTest, WhatWasBuiltIsWrittenInItsCharacters) {
  const Value made = document();
  get(made, "appendChild",
      {get(made, "createProcessingInstruction",
           {t("xml"), t("version=\"1.0\" encoding=\"gb2312\"")})});
  get(made, "appendChild", {get(made, "createElement", {t("a")})});
  get(top(made), "setAttribute", {t("k"), t("\xE4\xB8\xAD")});
  let(top(made), "text", {t("x\r\n\xE6\x96\x87")});
  EXPECT_EQ(text_of(get(made, "xml")),
            "<?xml version=\"1.0\"?>\r\n<a k=\"\xE4\xB8\xAD\">x\r\n\xE6\x96\x87</a>\r\n");
  get(made, "save", {t("/site/b.xml")});
  EXPECT_EQ(files_.read("/site/b.xml"),
            "<?xml version=\"1.0\" encoding=\"gb2312\"?>\r\n"
            "<a k=\"\xD6\xD0\">x\r\n\xCE\xC4</a>\r\n");
}

TEST_F(XmlDocumentTest, ALaidOutFileKeepsItsLinesAndJoinsItsTextsByBlanks) {
  files_.put("/site/c.xml", "<c>\n  <i>\n    <n>x</n>\n    <v>3.5</v>\n  </i>\n</c>");
  const Value made = document();
  EXPECT_TRUE(get(made, "load", {t("/site/c.xml")}).as_boolean());
  EXPECT_EQ(text_of(get(top(made), "text")), "x 3.5");
  EXPECT_EQ(get(get(top(made), "childNodes"), "length").as_long(), 1);
  let(get(made, "selectSingleNode", {t("//v")}), "text", {t("4")});
  get(made, "save", {t("/site/c.xml")});
  EXPECT_EQ(files_.read("/site/c.xml"),
            "<c>\r\n\t<i>\r\n\t\t<n>x</n>\r\n\t\t<v>4</v>\r\n\t</i>\r\n</c>\r\n");
}

TEST_F(XmlDocumentTest, PrefixesOfSelectionsAreSet) {
  const Value made = document("<a xmlns='urn:a'><b>1</b></a>");
  EXPECT_TRUE(is_nothing(get(made, "selectSingleNode", {t("//b")})));
  get(made, "setProperty", {t("SelectionNamespaces"), t("xmlns:q='urn:a' xmlns:r=\"urn:r\"")});
  EXPECT_EQ(text_of(get(get(made, "selectSingleNode", {t("//q:b")}), "text")), "1");
}

TEST_F(XmlDocumentTest, TypedValuesAreBytes) {
  const Value made = document("<a/>");
  let(top(made), "dataType", {t("bin.base64")});
  let(top(made), "nodeTypedValue", {Value::array(Array::of_bytes(std::string("\0\xFFx", 3)))});
  EXPECT_EQ(text_of(get(top(made), "text")), "AP94");
  EXPECT_EQ(get(top(made), "nodeTypedValue").as_array().bytes(), std::string("\0\xFFx", 3));
  let(top(made), "text", {t("*")});
  EXPECT_EQ(error_number([&] { get(top(made), "nodeTypedValue"); }), 13);
}

TEST_F(XmlDocumentTest, LoadingTellsHowItEnded) {
  const Value made = document();
  let(made, "async", {Value::boolean(false)});
  EXPECT_FALSE(get(made, "async").as_boolean());
  EXPECT_EQ(get(made, "readyState").as_long(), 4);
  EXPECT_TRUE(get(made, "loadXML", {t("<a/>")}).as_boolean());
  EXPECT_EQ(get(get(made, "parseError"), "errorCode").as_long(), 0);
  EXPECT_EQ(text_of(get(get(made, "parseError"), "reason")), "");
  EXPECT_FALSE(get(made, "loadXML", {t("<a>")}).as_boolean());
  EXPECT_NE(get(get(made, "parseError"), "errorCode").as_long(), 0);
  EXPECT_TRUE(is_nothing(top(made)));
  EXPECT_EQ(text_of(get(made, "xml")), "");
  EXPECT_FALSE(get(made, "load", {t("http://a.example/a.xml")}).as_boolean()) << "no client";
}

TEST_F(XmlDocumentTest, NodesOfNamespacesAreMadeAndFound) {
  const Value made = document("<r xmlns='urn:d' xmlns:p='urn:p'><p:a k='1'/><a/></r>");
  const Value node = get(made, "createNode", {n(1), t("p:b"), t("urn:p")});
  get(top(made), "appendChild", {node});
  EXPECT_EQ(text_of(get(node, "namespaceURI")), "urn:p");
  EXPECT_EQ(text_of(get(node, "prefix")), "p");
  EXPECT_EQ(text_of(get(node, "baseName")), "b");
  EXPECT_EQ(text_of(get(get(made, "getElementsByTagName", {t("p:a")}), "length")), "1");
  EXPECT_EQ(text_of(get(get(made, "getElementsByTagName", {t("*")}), "length")), "4");
  EXPECT_TRUE(is_nothing(get(made, "selectSingleNode", {t("//none")})));
  get(made, "setProperty", {t("SelectionNamespaces"), t("xmlns:q='urn:p'")});
  EXPECT_EQ(text_of(get(get(made, "selectNodes", {t("//q:*")}), "length")), "2");
  EXPECT_EQ(text_of(get(top(made), "xml")),
            "<r xmlns=\"urn:d\" xmlns:p=\"urn:p\"><p:a k=\"1\"/><a/><p:b/></r>");
}

TEST_F(XmlDocumentTest, NothingOutsideOfADocumentIsRead) {
  files_.put("/site/secret.txt", "secret");
  const Value made = document();
  get(made, "loadXML",
      {t("<!DOCTYPE a [<!ENTITY e SYSTEM 'secret.txt'>"
         "<!ENTITY f SYSTEM 'file:///etc/passwd'>]><a>&e;&f;</a>")});
  EXPECT_EQ(text_of(get(made, "xml")).find("root:"), std::string::npos);
  EXPECT_EQ(text_of(get(made, "text")), "");
  EXPECT_TRUE(files_.reads().empty());
  std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxx'>";
  for (int i = 1; i < 12; ++i) {
    const std::string before = "&e" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY e" + std::to_string(i) + " '";
    for (int k = 0; k < 10; ++k) bomb += before;
    bomb += "'>";
  }
  EXPECT_FALSE(get(made, "loadXML", {t(bomb + "]><a>&e11;</a>")}).as_boolean());
  EXPECT_NE(get(get(made, "parseError"), "errorCode").as_long(), 0);
}

TEST_F(XmlDocumentTest, StyleSheetsAreNotApplied) {
  const Value made = document("<a/>");
  EXPECT_EQ(error_number([&] { get(made, "transformNode", {document("<b/>")}); }), 438);
}

TEST_F(XmlDocumentTest, StreamsAndBytesAreLoadedAndSavedInto) {
  const Value made = document();
  const std::string bytes = "\xEF\xBB\xBF<a>\xE4\xB8\xAD</a>";
  EXPECT_TRUE(get(made, "load", {Value::array(Array::of_bytes(bytes))}).as_boolean());
  const Value stream = Value::object(make_ref<StreamObject>(services().system, ""));
  get(made, "save", {stream});
  let(stream, "Position", {n(0)});
  const Value again = document();
  EXPECT_TRUE(get(again, "load", {stream}).as_boolean());
  EXPECT_EQ(text_of(get(again, "xml")), text_of(get(made, "xml")));
  EXPECT_EQ(error_number([&] { get(made, "load", {again}); }), 0);
}

TEST_F(XmlDocumentTest, MembersOfOtherKindsOfNodesAreUnknown) {
  const Value made = document("<a>x<!--c--></a>");
  const Value x = get(top(made), "firstChild");
  EXPECT_EQ(error_number([&] { get(x, "getAttribute", {t("k")}); }), 438);
  EXPECT_EQ(error_number([&] { get(top(made), "data"); }), 438);
  EXPECT_EQ(error_number([&] { get(made, "nosuch"); }), 438);
  EXPECT_EQ(get(x, "length").as_long(), 1);
}

TEST_F(XmlDocumentTest, WhatPagesHoldOfDocumentsIsBounded) {
  const std::string text = "<a>" + std::string(8 << 20, 'x') + "</a>";
  std::vector<Value> held;
  EXPECT_THROW(for (int i = 0; i < 100; ++i) held.push_back(document(text)), platform::PageEnd);
  EXPECT_LE(held.size(), 32u);
  held.clear();
  EXPECT_EQ(memory_->bytes(), 0u);
}

TEST_F(XmlDocumentTest, PartsOfTextsAreTakenPutAndCut) {
  const Value made = document("<a>x\xE4\xB8\xADyz<!--c--></a>");
  const Value x = get(top(made), "firstChild");
  get(x, "insertData", {n(1), t("-")});
  EXPECT_EQ(text_of(get(x, "data")), "x-\xE4\xB8\xADyz");
  get(x, "deleteData", {n(2), n(1)});
  EXPECT_EQ(text_of(get(x, "data")), "x-yz");
  get(x, "replaceData", {n(1), n(2), t("\xE6\x96\x87&")});
  EXPECT_EQ(text_of(get(x, "data")), "x\xE6\x96\x87&z");
  EXPECT_EQ(text_of(get(x, "substringData", {n(1), n(99)})), "\xE6\x96\x87&z");
  get(x, "deleteData", {n(3), n(99)});
  const Value behind = get(x, "splitText", {n(1)});
  EXPECT_EQ(text_of(get(x, "data")), "x");
  EXPECT_EQ(text_of(get(behind, "data")), "\xE6\x96\x87&");
  EXPECT_EQ(get(x, "nextSibling").as_object(), behind.as_object());
  EXPECT_EQ(text_of(get(top(made), "xml")), "<a>x\xE6\x96\x87&amp;<!--c--></a>");
}

TEST_F(XmlDocumentTest, PartsOutsideOfATextAreRefused) {
  const Value made = document("<a>xy<!--c--></a>");
  const Value x = get(top(made), "firstChild");
  EXPECT_EQ(error_number([&] { get(x, "insertData", {n(3), t("-")}); }), 5);
  EXPECT_EQ(error_number([&] { get(x, "deleteData", {n(-1), n(1)}); }), 5);
  EXPECT_EQ(error_number([&] { get(x, "replaceData", {n(0), n(-1), t("")}); }), 5);
  EXPECT_EQ(error_number([&] { get(x, "splitText", {n(3)}); }), 5);
  EXPECT_EQ(error_number([&] { get(top(made), "insertData", {n(0), t("-")}); }), 438);
  EXPECT_EQ(error_number([&] { get(get(top(made), "lastChild"), "splitText", {n(0)}); }), 438);
  EXPECT_EQ(text_of(get(top(made), "xml")), "<a>xy<!--c--></a>");
}

TEST_F(XmlDocumentTest, TextsSideBySideBecomeOne) {
  const Value made = document("<a>x</a>");
  get(top(made), "appendChild", {get(made, "createTextNode", {t("y")})});
  get(top(made), "normalize");
  EXPECT_EQ(get(get(top(made), "childNodes"), "length").as_long(), 1);
  EXPECT_EQ(text_of(get(top(made), "text")), "xy");
}

}  // namespace
}  // namespace rk::pagehost
