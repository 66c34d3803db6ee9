#include "pagehost/components/xml_pattern.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "adapters/xml/documents.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using platform::XmlDocument;
using platform::XmlKind;
using platform::XmlNode;
using Nodes = std::vector<XmlNode*>;

std::string xpath(std::string_view pattern) {
  return xpath_of_pattern(pattern, {{"set", "urn:set"}});
}

std::string refusal(std::string_view pattern) {
  try {
    return "taken as " + xpath(pattern);
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), errors::kSqlFailure);
    return std::string(error.description());
  }
}

std::unique_ptr<XmlDocument> parsed(const std::string& text) {
  xml::start_xml();
  auto result = xml::Documents().parse(text, false);
  return std::move(std::get<std::unique_ptr<XmlDocument>>(result));
}

TEST(XmlPattern, PlacesCountFromZero) {
  EXPECT_EQ(xpath("//item[0]"), "//item[1]");
  EXPECT_EQ(xpath("rss/channel/item[ 2 ]/title"), "rss/channel/item[3]/title");
  EXPECT_EQ(xpath("(a/b)[0]"), "(a/b)[1]");
  EXPECT_EQ(xpath("a[index()=1]"), "a[(position()-1) = 1]");
  EXPECT_EQ(xpath("a[ index() $le$ 3 ]"), "a[(position()-1) <= 3]");
  EXPECT_EQ(xpath("a[end()]"), "a[(position()=last())]");
}

TEST(XmlPattern, WordsOfOperatorsAreSigns) {
  EXPECT_EQ(xpath("a[@k $eq$ 'x' $and$ b $ne$ 'y']"), "a[@k = 'x' and b != 'y']");
  EXPECT_EQ(xpath("a[@k $GT$ 1 $or$ @k $lt$ 5]"), "a[@k > 1 or @k < 5]");
  EXPECT_EQ(xpath("a[@k $ge$ 1 || @k $le$ 5 && b]"), "a[@k >= 1 or @k <= 5 and b]");
  EXPECT_EQ(xpath("a[@k='x' and not(b) or c]"), "a[@k = 'x' and not(b) or c]");
  EXPECT_EQ(xpath("a[$not$ @k=1]"), "a[not(@k = 1)]");
  EXPECT_EQ(xpath("a[$any$ b='1']"), "a[b = '1']");
  EXPECT_EQ(xpath("a|b $union$ c"), "a|b|c");
}

TEST(XmlPattern, StepsAreThoseOfPaths) {
  EXPECT_EQ(xpath("/"), "/");
  EXPECT_EQ(xpath("."), ".");
  EXPECT_EQ(xpath(".//a/@*"), ".//a/@*");
  EXPECT_EQ(xpath("../and/or/not"), "../and/or/not");
  EXPECT_EQ(xpath("*/textNode()"), "*/text()");
  EXPECT_EQ(xpath("a/text()"), "a/text()");
  EXPECT_EQ(xpath("ancestor(a)/@id"), "ancestor::a[1]/@id");
  EXPECT_EQ(xpath("a/attribute('k') | pi('p') | comment()"),
            "a/@k|processing-instruction('p')|comment()");
  EXPECT_EQ(xpath("\xE6\x96\xB0\xE9\x97\xBB[0]"), "\xE6\x96\xB0\xE9\x97\xBB[1]");
  EXPECT_EQ(xpath("a[nodeName()='a' and value()='1']"), "a[name() = 'a' and string() = '1']");
}

TEST(XmlPattern, PrefixesThatAreNotSetAreTheDocuments) {
  EXPECT_EQ(xpath("set:a/@set:k"), "set:a/@set:k");
  EXPECT_EQ(xpath("dc:date/@x:y"), "*[name()='dc:date']/@*[name()='x:y']");
  EXPECT_EQ(xpath("dc:*[0]"), "*[starts-with(name(),'dc:')][1]");
}

TEST(XmlPattern, WhatIsNotKnownIsRefusedWithItsReason) {
  EXPECT_NE(refusal("a[contains(b,'x')]").find("contains() is not known"), std::string::npos);
  EXPECT_NE(refusal("a[position()=1]").find("position() is not known"), std::string::npos);
  EXPECT_NE(refusal("a!b").find("'!'"), std::string::npos);
  EXPECT_NE(refusal("child::a").find("axes"), std::string::npos);
  EXPECT_NE(refusal("a[-1]").find("count from 0"), std::string::npos);
  EXPECT_NE(refusal("a[1234567890]").find("count from 0"), std::string::npos);
  EXPECT_NE(refusal("a[b $gt$ 'x']").find("order"), std::string::npos);
  EXPECT_NE(refusal("'a'").find("names no nodes"), std::string::npos);
  EXPECT_NE(refusal("a[b='x]").find("not closed"), std::string::npos);
  EXPECT_NE(refusal("a[b").find("']' is missing"), std::string::npos);
  EXPECT_NE(refusal("").find("too early"), std::string::npos);
  EXPECT_NE(refusal("a b").find("byte 3"), std::string::npos);
}

TEST(XmlPattern, LongAndDeepPatternsAreRefused) {
  EXPECT_NE(refusal(std::string(kMaxPatternBytes + 1, 'a')).find("too long"), std::string::npos);
  for (const std::string_view opening : {"a[", "(", "not(", "$not$"}) {
    std::string deep;
    while (deep.size() + opening.size() < kMaxPatternBytes) deep += opening;
    EXPECT_NE(refusal(deep).find("too deep"), std::string::npos) << opening;
  }
}

RC_GTEST_PROP(XmlPattern, AnyTextIsTranslatedOrRefused, ()) {
  const auto words = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
      "a", "b", "/", "//", ".", "..", "*", "@", "[", "]", "(", ")", "0", "-1", "'x'", "\"", "'",
      "$and$", "$not$", "or", "=", "!=", "!", "<", "|", "||", "end()", "index()", "not(", "text()",
      "p:", ":", "\xE4\xB8\xAD", "\xFF", " ", "value()", "ancestor(a)", "set:*"));
  std::string pattern;
  for (const std::string& word : words) pattern += word;
  const auto document = parsed("<a><b/></a>");
  try {
    const std::string made = xpath(pattern);
    document->select(document->root(), made, {{"set", "urn:set"}});
  } catch (const ScriptError& error) {
    RC_ASSERT(error.number() == errors::kSqlFailure);
  }
}

// One condition of a step, and what it says of a node at a place among those that came so far.
struct Condition {
  enum Kind { Place, Index, End, HasChild, Attribute, NotAttribute, Both, Either } kind;
  int number;
  std::string written() const {
    const std::string n = std::to_string(number);
    switch (kind) {
      case Place:
        return n;
      case Index:
        return "index() $ge$ " + n;
      case End:
        return "end()";
      case HasChild:
        return "b";
      case Attribute:
        return "@k $eq$ " + n;
      case NotAttribute:
        return "$not$ @k = '" + n + "'";
      case Both:
        return "b $and$ @k = " + n;
      case Either:
        return "end() $or$ @k=" + n;
    }
    return "";
  }
  bool holds(const XmlDocument& document, const XmlNode* node, std::size_t at,
             std::size_t count) const {
    const XmlNode* k = document.attribute(node, "k");
    const bool same = k != nullptr && document.value(k) == std::to_string(number);
    bool b = false;
    for (const XmlNode* each : document.children(node)) b = b || document.name(each) == "b";
    const auto n = static_cast<std::size_t>(number);
    switch (kind) {
      case Place:
        return at == n;
      case Index:
        return at >= n;
      case End:
        return at + 1 == count;
      case HasChild:
        return b;
      case Attribute:
        return same;
      case NotAttribute:
        return !same;
      case Both:
        return b && same;
      case Either:
        return at + 1 == count || same;
    }
    return false;
  }
};

struct Step {
  bool anywhere;  // behind "//"
  std::string name;
  std::vector<Condition> conditions;
};

void add_beneath(const XmlDocument& document, XmlNode* from, Nodes& out) {
  for (XmlNode* each : document.children(from)) {
    out.push_back(each);
    add_beneath(document, each, out);
  }
}

// The children of one node that a step leaves.
Nodes left_by(const XmlDocument& document, const XmlNode* parent, const Step& step) {
  Nodes found;
  for (XmlNode* each : document.children(parent)) {
    if (step.name == "*" || document.name(each) == step.name) found.push_back(each);
  }
  for (const Condition& condition : step.conditions) {
    Nodes kept;
    for (std::size_t i = 0; i < found.size(); ++i) {
      if (condition.holds(document, found[i], i, found.size())) kept.push_back(found[i]);
    }
    found = std::move(kept);
  }
  return found;
}

// In document order, each once.
Nodes walked(XmlDocument& document, const std::vector<Step>& steps) {
  Nodes order{document.root()};
  add_beneath(document, document.root(), order);
  Nodes from{document.root()};
  for (const Step& step : steps) {
    Nodes parents;
    for (XmlNode* each : from) {
      parents.push_back(each);
      if (step.anywhere) add_beneath(document, each, parents);
    }
    Nodes found;
    for (const XmlNode* parent : parents) {
      for (XmlNode* each : left_by(document, parent, step)) found.push_back(each);
    }
    from.clear();
    for (XmlNode* each : order) {
      if (std::find(found.begin(), found.end(), each) != found.end()) from.push_back(each);
    }
  }
  return from;
}

std::string element(int depth) {
  const std::string name = *rc::gen::element<std::string>("a", "b", "c");
  const int k = *rc::gen::inRange(0, 4);
  std::string out = "<" + name + (k == 3 ? "" : " k='" + std::to_string(k) + "'") + ">";
  const int children = depth == 0 ? 0 : *rc::gen::inRange(0, 4);
  for (int i = 0; i < children; ++i) out += element(depth - 1);
  return out + "</" + name + ">";
}

RC_GTEST_PROP(XmlPattern, SelectsWhatAPlainWalkFinds, ()) {
  const auto document = parsed(element(3));
  std::vector<Step> steps;
  std::string pattern;
  const int count = *rc::gen::inRange(1, 4);
  for (int i = 0; i < count; ++i) {
    Step step{*rc::gen::arbitrary<bool>(), *rc::gen::element<std::string>("a", "b", "c", "*"), {}};
    pattern += (step.anywhere ? "//" : "/") + step.name;
    for (int n = *rc::gen::inRange(0, 3); n > 0; --n) {
      const Condition condition{static_cast<Condition::Kind>(*rc::gen::inRange(0, 8)),
                                *rc::gen::inRange(0, 3)};
      pattern += "[" + condition.written() + "]";
      step.conditions.push_back(condition);
    }
    steps.push_back(std::move(step));
  }
  const Nodes found = document->select(document->root(), xpath_of_pattern(pattern, {}), {});
  RC_LOG() << pattern << " in " << document->xml(document->children(document->root()).front());
  const bool same = found == walked(*document, steps);
  RC_ASSERT(same);
}

}  // namespace
}  // namespace rk::pagehost
