#include "site/repeat.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "site/tags.h"
#include "tests/plain/repeat.h"
#include "tests/support/field_object.h"
#include "value/array.h"

namespace rk::site {
namespace {

constexpr std::array<std::string_view, 3> kTags{"Name", "Price", "Id"};

Value text(std::string_view utf8) {
  return Value::text(utf8);
}

// A row's values for Name, Price and Id, and what is appended behind its copy.
struct Row {
  Value name;
  Value price;
  Value id;
  Value line;
};

std::string expand(std::string_view item, const std::vector<Row>& rows, std::string_view block) {
  Repeat list(item, kTags);
  for (const Row& row : rows) {
    list.append(row.line);
    list.fill("Name", row.name);
    list.fill("Price", row.price);
    list.fill("Id", row.id);
    list.next();
  }
  return list.into(block).string();
}

std::string expand(std::string_view item, const std::vector<Row>& rows) {
  return expand(item, rows, "[" + std::string(item) + "]");
}

TEST(Repeat, FillsACopyOfTheItemForEachRow) {
  EXPECT_EQ(
      expand("<{Name}:{Price}>", {{text("a"), text("1"), {}, {}}, {text("b"), text("2"), {}, {}}}),
      "[<a:1><b:2>]");
}

TEST(Repeat, NoRowsLeaveAnEmptyList) {
  EXPECT_EQ(expand("<{Name}>", {}), "[]");
}

// The file with its tags filled, as a page that is no list fills it.
std::string filled(std::string_view file, const Row& row) {
  Repeat page(file, kTags);
  page.fill("Name", row.name);
  page.fill("Price", row.price);
  page.fill("Id", row.id);
  page.next();
  return page.filled();
}

TEST(Repeat, FillsAFileThatIsNoList) {
  EXPECT_EQ(filled("<{Name} {Id}{Other}>", {text("a"), text("1"), text("7"), {}}), "<a 7{Other}>");
  EXPECT_EQ(filled("no tag", {text("a"), text("1"), text("7"), {}}), "no tag");
  EXPECT_EQ(filled("", {text("a"), text("1"), text("7"), {}}), "");
}

TEST(Repeat, FillsAFileTagByTag) {
  EXPECT_EQ(filled("<{Name}>", {text("{Price}"), text("{Name}"), text("7"), {}}), "<{Name}>");
  EXPECT_EQ(filled("<{Id}> {Name}", {text("a"), Value::null(), text("7"), {}}), "");
}

TEST(Repeat, FillsWithTheValueOfAField) {
  const Value field = Value::object(make_ref<tests::FieldObject>(Value::real(1.5)));
  EXPECT_EQ(expand("<{Name}>", {{text("a"), {}, {}, {}}, {field, {}, {}, {}}}), "[<a><1.5>]");
}

TEST(Repeat, KeepsLosingTheListOnAFieldThatIsNull) {
  const Value field = Value::object(make_ref<tests::FieldObject>(Value::null()));
  EXPECT_EQ(expand("<{Name}>", {{text("a"), {}, {}, {}}, {field, {}, {}, {}}}), "[]");
  EXPECT_EQ(expand("<{Name}>", {{field, {}, {}, {}}, {text("b"), {}, {}, {}}}), "[<b>]");
}

TEST(Repeat, WhatIsAppendedStandsBehindTheCopy) {
  EXPECT_EQ(
      expand("<{Name}>", {{text("a"), {}, {}, text("|")}, {text("b"), {}, {}, Value::null()}}),
      "[<a>|<b>]");
}

TEST(Repeat, ReplacesEveryCopyInTheBlock) {
  EXPECT_EQ(expand("<{Name}>", {{text("a"), {}, {}, {}}}, "1<{Name}>2<{Name}>3"), "1<a>2<a>3");
}

TEST(Repeat, BlockWithoutTheItemShowsNoList) {
  EXPECT_EQ(expand("<{Name}>", {{text("a"), {}, {}, {}}}, "<{name}>"), "<{name}>");
}

TEST(Repeat, KeepsFillingATagThatAValueBrings) {
  EXPECT_EQ(expand("<{Name}>", {{text("{Price}"), text("7"), {}, {}}}), "[<7>]")
      << "later in the row";
  EXPECT_EQ(expand("<{Name},{Price}>",
                   {{text("a"), text("{Name}"), {}, {}}, {text("b"), text("2"), {}, {}}}),
            "[<a,b><b,2>]")
      << "by the next row";
  EXPECT_EQ(expand("<{Price}>", {{{}, text("{Name}"), {}, {}}}), "[<{Name}>]") << "by none";
}

TEST(Repeat, TagThatGrowsOfAValueAndWhatFollowsIsFilled) {
  EXPECT_EQ(expand("<{Name}ce}>", {{text("{Pri"), text("7"), {}, {}}}), "[<7>]");
  EXPECT_EQ(expand("<{{Name}}>", {{text("Price"), text("7"), {}, {}}}), "[<7>]");
  EXPECT_EQ(
      expand("ce}{Name}", {{text("{Pri"), text("7"), {}, {}}, {text("x"), text("8"), {}, {}}}),
      "[ce}8x]")
      << "with the beginning of the next copy";
}

TEST(Repeat, KeepsLosingTheListOnNull) {
  EXPECT_EQ(expand("<{Name}>", {{text("a"), {}, {}, {}},
                                {text("b"), Value::null(), {}, {}},
                                {text("c"), {}, {}, {}}}),
            "[<c>]");
}

TEST(Repeat, ValueWithoutATextLosesTheListToo) {
  EXPECT_EQ(
      expand("<{Name}>", {{text("a"), {}, {}, {}}, {Value::array(Array::of({})), {}, {}, {}}}),
      "[]");
}

TEST(Repeat, ItemWithoutTagsIsRemovedWhereverItStands) {
  EXPECT_EQ(expand("<i>", {{{}, {}, {}, text("|")}, {{}, {}, {}, text("<i>")}}), "[|]");
}

TEST(Repeat, RawCopyInsideAValueIsRemovedAtTheEnd) {
  EXPECT_EQ(expand("<{Id}>", {{{}, {}, text("1<{Id}>2"), {}}}), "[<12>]");
}

TEST(Repeat, EmptyItemIsNeitherRemovedNorReplaced) {
  EXPECT_EQ(expand("", {{text("a"), {}, {}, text("line")}}, "block"), "block");
}

TEST(Repeat, AppendedTextWithATagIsFilledWithItsRow) {
  EXPECT_EQ(expand("<{Name}>", {{text("a"), {}, {}, text("({Name})")}}), "[<a>(a)]");
}

// --- equal to the plain version -----------------------------------------------------------------

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t n) { return random_() % n; }
  std::string pieces(std::size_t most) {
    static constexpr std::array<std::string_view, 16> kPieces{
        "{Name}", "{Price}", "{Id}", "{", "}",    "{Pri",    "ce}",    "Name",
        "{N",     "ame}",    "<b>",  "x", "</b>", "{Other}", "{name}", "Id"};
    std::string text;
    for (std::size_t n = below(most + 1); n > 0; --n) text += kPieces[below(kPieces.size())];
    return text;
  }
  Value value() {
    switch (below(12)) {
      case 0:
        return below(4) == 0 ? Value::null() : Value();
      case 1:
        return Value::long_integer(static_cast<std::int32_t>(below(100)));
      case 2:
      case 3:
        return text(pieces(4));
      default:
        return text(std::string(below(3), 'v'));
    }
  }

 private:
  std::mt19937 random_;
};

TEST(Repeat, EqualsThePlainVersionOnGeneratedLists) {
  for (unsigned seed = 0; seed < 30000; ++seed) {
    Generator generate(seed);
    const std::string item = generate.pieces(6);
    const std::string block = generate.pieces(3) + item + generate.pieces(3) + item;
    Repeat fast(item, kTags);
    plain::Repeat plain(item);
    for (std::size_t rows = generate.below(6); rows > 0; --rows) {
      // Mostly as renderers go, sometimes tags left out, twice, in another order.
      const bool usual = generate.below(3) != 0;
      const std::size_t steps = usual ? kTags.size() : generate.below(6);
      for (std::size_t i = 0; i < steps; ++i) {
        if (generate.below(4) == 0) {
          const Value line = generate.value();
          fast.append(line);
          plain.append(line);
        }
        const std::string_view tag = kTags[usual ? i : generate.below(kTags.size())];
        const Value content = generate.value();
        fast.fill(tag, content);
        plain.fill(tag, content);
      }
      fast.next();
      plain.next();
    }
    ASSERT_EQ(fast.into(block).view(), plain.into(block))
        << "seed " << seed << " item " << item << " block " << block;
  }
}

TEST(Cut, EqualsThePlainVersionOnGeneratedTexts) {
  std::mt19937 random(1);
  const auto letters = [&](std::size_t most) {
    std::string text(random() % (most + 1), ' ');
    for (char& c : text) c = "ab"[random() % 2];
    return text;
  };
  for (int i = 0; i < 100000; ++i) {
    const std::string html = letters(14);
    const std::string start = letters(3);
    const std::string last = letters(3);
    ASSERT_EQ(cut(html, start, last), plain::cut(html, start, last))
        << html << " " << start << " " << last;
    std::string replaced = html;
    replace_all(replaced, start, last);
    ASSERT_EQ(replaced, plain::replaced(html, start, last));
  }
}

}  // namespace
}  // namespace rk::site
