// An object that is reached as pages reach it: made by its program identifier, called by name.
#ifndef RK_TESTS_SUPPORT_MADE_OBJECT_H_
#define RK_TESTS_SUPPORT_MADE_OBJECT_H_

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "classes/program_ids.h"
#include "tests/support/fake_equipment.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"
#include "value/text_functions.h"

namespace rk::tests {

class MadeObject : public testing::Test {
 protected:
  explicit MadeObject(std::string_view program_id) {
    for (const classes::ProgramId& id : classes::program_ids()) {
      if (equal_ignoring_case(id.name, program_id)) object = id.make(fakes.equipment());
    }
  }

  Value call(std::string_view name, std::vector<Value> values, CallKind kind = CallKind::Get) {
    std::vector<Value*> arguments;
    for (Value& value : values) arguments.push_back(&value);
    return object->invoke(object->member(name), kind, arguments);
  }
  std::string text_of(std::string_view name, std::vector<Value> values) {
    return joined_text(call(name, std::move(values))).string();
  }
  void start() { call("OnStartPage", {Value::object(page.scripting)}); }

  FakeEquipment fakes;
  FakePage page;
  Ref<Object> object;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_MADE_OBJECT_H_
