#include "services/lookups.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "tests/support/fixed_random.h"
#include "tests/support/scripted_http.h"
#include "tests/support/toy_code_pages.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::services {
namespace {

class Lookups : public ::testing::Test {
 protected:
  std::string api(std::string_view key) {
    return joined_text(getapiurl(endpoints, random, Value::text(key))).string();
  }
  std::string filing(std::string_view number, std::string_view domain) {
    return std::string(
        Getbeian(web, endpoints, server, Value::text(number), Value::text(domain)).as_view());
  }

  // Pairs of a lead byte and a number: the characters of one sentence in their order.
  class SentencePages final : public platform::CodePages {
   public:
    bool supports(int) const override { return true; }
    std::string to_utf8(std::string_view bytes, int, std::optional<std::size_t>*) const override {
      return Text(kSentence).mid(static_cast<std::size_t>(bytes.at(1) - '0'), 1).string();
    }
    std::string from_utf8(std::string_view utf8, int) const override { return std::string(utf8); }
    bool is_lead_byte(unsigned char byte, int) const override { return byte == 0x81; }

    static std::string bytes() {
      std::string pairs;
      for (std::size_t i = 0; i < Text(kSentence).length(); ++i) {
        pairs += '\x81';
        pairs += static_cast<char>('0' + i);
      }
      return pairs;
    }

   private:
    static constexpr std::string_view kSentence = "您所查询的信息在备案库中不存在";
  };

  tests::ScriptedHttp http;
  tests::ToyCodePages code_pages;
  Web web{http, code_pages, platform::kGb2312};
  Endpoints endpoints{"http://avail", "http://hi", "http://xin", "http://filing"};
  tests::FixedRandom random{{0.0, 0.04, 0.08, 0.12, 0.16}};
  tests::FakeServer server;
};

TEST_F(Lookups, ADomainIsAskedForUnencodedWithFreshLetters) {
  http.answers = {"210 free"};
  EXPECT_EQ(chDomainReg(web, endpoints, random, Value::text("a b.com")).as_view(), "210 free");
  EXPECT_EQ(http.addresses.at(0),
            "http://avail/cgi-bin/check_muitl.cgi?domain=a b.com&rktemstr=aBcDe");
}

TEST_F(Lookups, AnEmptyDomainIsAskedForToo) {
  EXPECT_EQ(chDomainReg(web, endpoints, random, Value()).as_view(), "0119");
  EXPECT_EQ(http.addresses.size(), 1u);
}

TEST_F(Lookups, EachKeyHasItsAddress) {
  EXPECT_EQ(api("netcn"), "http://hi/wwwnetcn.aspx?rktemstr=aBcDe");
  EXPECT_EQ(api("xinnetreg"), "http://xin/domain/api.gb?rktemstr=aBcDe&method=Register&");
  EXPECT_EQ(api("xinnetgetkey"), "http://xin/domain/api.gb?rktemstr=aBcDe&method=GetProductKey&");
  EXPECT_EQ(api("xinnetDomainRenew"),
            "http://xin/domain/api.gb?rktemstr=aBcDe&method=DomainRenew&");
  EXPECT_EQ(api("xinnetchangekey"),
            "http://xin/domain/api.gb?rktemstr=aBcDe&method=ChangeProductKey&");
}

TEST_F(Lookups, AKeyInOtherLetterCaseGivesEmptyAndDrawsNothing) {
  EXPECT_TRUE(getapiurl(endpoints, random, Value::text("XinnetReg")).is_empty());
  EXPECT_EQ(random.drawn(), 0u);
}

TEST_F(Lookups, WhatIsNoKeyGivesEmptyAndRaisesNothing) {
  for (const Value& key :
       {Value(), Value::null(), Value::nothing(), Value::array(Array::of({})),
        Value::long_integer(1), Value::object(make_ref<tests::FakeScriptingContext>())}) {
    EXPECT_TRUE(getapiurl(endpoints, random, key).is_empty());
  }
}

TEST_F(Lookups, AFilingOfWhatIsNoTextRaisesNothing) {
  const Value array = Value::array(Array::of({}));
  http.answers = {"", "OnTrMouseOut(this) b.com</a>\r"};
  EXPECT_EQ(Getbeian(web, endpoints, server, array, Value::text("b.com")).as_view(), "1");
  EXPECT_EQ(http.addresses.at(1), "http://filing/?cxfs=3&baxh=");
  http.answers = {"", "OnTrMouseOut(this) b.com</a>\r"};
  EXPECT_EQ(Getbeian(web, endpoints, server, Value::text("1"), array).as_view(), "2");
}

TEST_F(Lookups, AnAddressThatIsNotConfiguredRaisesWithItsKey) {
  endpoints = {};
  try {
    getapiurl(endpoints, random, Value::text("netcn"));
    FAIL();
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.description(), "No address is configured for [endpoints] hichina");
  }
}

TEST_F(Lookups, TheFilingNumberIsAskedForAtTheFormsPath) {
  http.answers = {"x document.frame.action=\"/q1.jsp\"; y", "OnTrMouseOut(this) a.com</a>\r"};
  EXPECT_EQ(filing("no1", "a.com"), "1");
  EXPECT_EQ(http.addresses.at(0), "http://filing/chaxun/ggcx.jsp");
  EXPECT_EQ(http.addresses.at(1), "http://filing/q1.jsp?cxfs=3&baxh=no1");
}

TEST_F(Lookups, OnlyTheFirstRowCounts) {
  http.answers = {"", "OnTrMouseOut(this) b.com</a>\rOnTrMouseOut(this) a.com</a>\r"};
  EXPECT_EQ(filing("no1", "a.com"), "2");
}

TEST_F(Lookups, AnEmptyDomainIsFoundInAnyRowButNotWithoutOne) {
  http.answers = {"", "OnTrMouseOut(this) b.com</a>\r"};
  EXPECT_EQ(filing("no1", ""), "1");
  http.answers = {"", "OnTrMouseOut(this)</a>\r"};
  EXPECT_EQ(filing("no1", ""), "1") << "an empty row is one";
  http.answers = {"", "nothing"};
  EXPECT_EQ(filing("no1", ""), "2");
}

TEST_F(Lookups, AnUnreachableServiceReadsAs2AndStillAsksTheRootPath) {
  EXPECT_EQ(filing("no1", "a.com"), "2");
  EXPECT_EQ(http.addresses.at(1), "http://filing/?cxfs=3&baxh=no1");
}

TEST_F(Lookups, TheNotFoundSentenceReadsAs0WhateverElseThePageHolds) {
  const SentencePages pages;
  const Web pages_web{http, pages, platform::kGb2312};
  const auto asked = [&] {
    return std::string(
        Getbeian(pages_web, endpoints, server, Value::text("n"), Value::text("a.com")).as_view());
  };
  const std::string row = "OnTrMouseOut(this) a.com</a>\r";
  http.answers = {"", row + SentencePages::bytes()};
  EXPECT_EQ(asked(), "0");
  http.answers = {"", row + SentencePages::bytes().substr(2)};
  EXPECT_EQ(asked(), "1");
}

}  // namespace
}  // namespace rk::services
