#include "value/text_pieces.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace rk {
namespace {

constexpr std::string_view kHighHalf = "\xED\xA0\xBD";
constexpr std::string_view kLowHalf = "\xED\xB8\x80";

TEST(TextSearch, FindsPlacesFromTheLeftWithoutOverlap) {
  TextSearch search("aaAaa", "aa", Letters::AnyCase);
  EXPECT_EQ(search.next(), 0U);
  EXPECT_EQ(search.next(), 2U);
  EXPECT_EQ(search.next(), std::string_view::npos);
  EXPECT_EQ(search.next(), std::string_view::npos);
}

TEST(TextSearch, FindsAnEmptyTextNowhere) {
  EXPECT_EQ(TextSearch("abc", "", Letters::Exact).next(), std::string_view::npos);
  EXPECT_EQ(TextSearch("", "a", Letters::Exact).next(), std::string_view::npos);
}

TEST(TextPieces, JoinHalvesThatMeet) {
  TextPieces pieces(0);
  pieces.add("a");
  pieces.add(kHighHalf);
  pieces.add("");
  pieces.add(kLowHalf);
  EXPECT_EQ(std::move(pieces).text().view(), "a\xF0\x9F\x98\x80");
}

// Pieces of every length around what is gathered, beside the same appended one by one.
RC_GTEST_PROP(TextPiecesPlain, MakeTheTextOfPiecesAppendedOneByOne, ()) {
  const auto long_piece = rc::gen::map(
      rc::gen::inRange(0, 3000), [](int size) { return std::string(std::size_t(size), 'x'); });
  const auto letters = rc::gen::container<std::string>(rc::gen::inRange('a', 'z'));
  const auto short_piece = rc::gen::element<std::string>(
      "", "|", "\xE4\xB8\xAD", std::string(kHighHalf), std::string(kLowHalf),
      "b" + std::string(kHighHalf), std::string(kLowHalf) + "c");
  const auto piece =
      rc::gen::weightedOneOf<std::string>({{6, short_piece}, {2, letters}, {1, long_piece}});
  const auto added = *rc::gen::container<std::vector<std::string>>(piece);
  TextPieces pieces(*rc::gen::inRange<std::size_t>(0, 20000));
  Text plain;
  for (const std::string& one : added) {
    pieces.add(one);
    plain.append(one);
  }
  RC_ASSERT(std::move(pieces).text().view() == plain.view());
}

// A search for every place at every offset, and pieces appended one by one.
Text plainly_replaced(std::string_view text, std::string_view sought, std::string_view with,
                      std::size_t limit) {
  Text out;
  for (std::size_t at = 0; at < text.size();) {
    const bool found = !sought.empty() && limit > 0 && text.substr(at, sought.size()) == sought;
    out.append(found ? with : text.substr(at, 1));
    at += found ? sought.size() : 1;
    if (found) --limit;
  }
  return out;
}

RC_GTEST_PROP(TextPiecesPlain, ReplaceWhatASearchAtEveryOffsetReplaces, ()) {
  const auto letters = rc::gen::container<std::string>(rc::gen::element('a', 'b', '|'));
  const auto many = rc::gen::scale(*rc::gen::inRange(1, 40), letters);
  const std::string text = *many;
  const std::string sought = *rc::gen::element<std::string>("", "|", "a", "ab", "aab", "b|");
  const std::string with = *rc::gen::element<std::string>("", "x", "<br>", "|a", "\xE4\xB8\xAD");
  const auto limit = *rc::gen::element<std::size_t>(0, 1, 2, static_cast<std::size_t>(-1));
  RC_ASSERT(replaced_text(text, sought, with, limit, Letters::Exact).view() ==
            plainly_replaced(text, sought, with, limit).view());
  const auto parts = split_text(text, sought, limit, Letters::Exact);
  RC_ASSERT(parts.size() <= limit);
  Text joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) joined.append(sought);
    if (i + 1 < parts.size()) RC_ASSERT(parts[i].as_view().find(sought) == std::string::npos);
    joined.append(parts[i].as_view());
  }
  if (limit > 0) RC_ASSERT(joined.view() == text);
}

}  // namespace
}  // namespace rk
