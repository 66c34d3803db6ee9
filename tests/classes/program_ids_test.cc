#include "classes/program_ids.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/fake_equipment.h"
#include "value/text.h"

namespace rk::classes {
namespace {

TEST(ProgramIds, EachMakesANewObjectThatThePageHostCanStart) {
  tests::FakeEquipment fakes;
  std::set<std::string> names;
  for (const ProgramId& id : program_ids()) {
    EXPECT_TRUE(id.name.starts_with("Rkclient.")) << id.name;
    EXPECT_TRUE(names.insert(lowered_ascii(id.name)).second) << id.name;
    const Ref<Object> object = id.make(fakes.equipment());
    ASSERT_TRUE(object) << id.name;
    EXPECT_NE(object, id.make(fakes.equipment())) << id.name;
  }
  EXPECT_EQ(names,
            (std::set<std::string>{"rkclient.classinifile", "rkclient.host", "rkclient.sitemain"}));
}

}  // namespace
}  // namespace rk::classes
