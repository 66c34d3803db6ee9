// Both forms of the slideshow against the step-by-step version.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/plain/slideshow.h"
#include "tests/support/fake_page.h"

namespace rk::widgets {
namespace {

using tests::number;
using tests::text;

rc::Gen<Value> field() {
  return rc::gen::element(Value::null(), text(""), text("/images/北京.jpg"), text("a|b"), text("'"),
                          text("\r\n"), number(7), Value::boolean(true));
}

rc::Gen<Value> pixels() {
  return rc::gen::element(number(500), text("200"), text(""), Value::null(), Value::real(0.5));
}

RC_GTEST_PROP(SlideshowPlain, BothFormsAreThoseOfTheStepByStepVersion, ()) {
  const SlideshowParameters parameters{
      *rc::gen::element(text("1"), text(""), text("2"), number(1), Value(), Value::null()),
      *pixels(), *pixels(), *pixels(), *rc::gen::element(Value(), text("blue"))};
  const PlayerAddresses player{"http://player.example/a.cab", "http://player.example/"};
  const int count = *rc::gen::inRange(1, 12);
  std::vector<plain::Picture> pictures;
  tests::Rows rows{{"Id", "adinfo", "link", "picurl"}, {}};
  for (int n = 1; n <= count; ++n) {
    const plain::Picture& picture =
        pictures.emplace_back(plain::Picture{*field(), *field(), *field()});
    rows.rows.push_back({number(n), picture.adinfo, picture.link, picture.picurl});
  }
  tests::FakePage page;
  page.db.answer(pictures_sql(parameters.Agent_User), rows);
  RC_ASSERT(ShowFlash_Ad(page.context, player, parameters) ==
            plain::slideshow(pictures, player, parameters));
}

}  // namespace
}  // namespace rk::widgets
