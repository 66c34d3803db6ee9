#include "classes/program_ids.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/fixed_clock.h"
#include "tests/support/fixed_random.h"
#include "value/text.h"

namespace rk::classes {
namespace {

TEST(ProgramIds, EachMakesANewObjectThatThePageHostCanStart) {
  tests::FixedClock clock;
  tests::FixedRandom random;
  std::set<std::string> names;
  for (const ProgramId& id : program_ids()) {
    EXPECT_TRUE(id.name.starts_with("Rkclient.")) << id.name;
    EXPECT_TRUE(names.insert(lowered_ascii(id.name)).second) << id.name;
    const Ref<Object> object = id.make({clock, random});
    ASSERT_TRUE(object) << id.name;
    EXPECT_NE(object, id.make({clock, random})) << id.name;
  }
  EXPECT_TRUE(names.contains("rkclient.sitemain"));
}

}  // namespace
}  // namespace rk::classes
