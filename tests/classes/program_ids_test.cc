#include "classes/program_ids.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "classes/class_ini_file.h"
#include "classes/host.h"
#include "classes/site_main.h"
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

// Every page and include of the demo, in small letters.
std::string demo_pages() {
  std::string text;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(RK_SOURCE_DIR "/demo")) {
    const std::string ending = entry.path().extension();
    if (ending != ".asp" && ending != ".inc") continue;
    std::ifstream file(entry.path());
    text.append(std::istreambuf_iterator<char>(file), {});
  }
  return lowered_ascii(text);
}

template <class Class>
void collect(std::set<std::string>& names) {
  for (const auto& row : Class::operations()) names.insert(lowered_ascii(row.name));
}

TEST(ProgramIds, EveryOperationIsUsedOnAPageOfTheDemo) {
  // What the page host or the control connection calls by itself.
  constexpr std::array kNotForPages{"onstartpage", "onendpage", "wskem_connect",
                                    "wskem_dataarrival"};
  std::set<std::string> names;
  collect<SiteMain>(names);
  collect<Host>(names);
  collect<ClassIniFile>(names);
  for (const char* name : kNotForPages) EXPECT_EQ(names.erase(name), 1u) << name;
  const std::string pages = demo_pages();
  for (const std::string& name : names) {
    EXPECT_NE(pages.find("." + name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace rk::classes
