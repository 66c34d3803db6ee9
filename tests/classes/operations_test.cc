#include "classes/operations.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::classes {
namespace {

using tests::error_of;

class Toy {
 public:
  void Reset() { sum_ = 0; }
  Value Add(Value& first, Value& second) {
    sum_ += to_long(first) + to_long(second);
    first = Value::text("added");
    return Value::long_integer(sum_);
  }

 private:
  std::int32_t sum_ = 0;
};

constexpr std::array kRows{operation<&Toy::Reset>("Reset"), operation<&Toy::Add>("Add")};
constexpr std::span<const Operation<Toy>> kTable = kRows;

class Operations : public testing::Test {
 protected:
  Value call(std::string_view name, std::vector<Value> values, CallKind kind = CallKind::Get) {
    std::vector<Value*> arguments;
    for (Value& value : values) arguments.push_back(&value);
    return call_operation(kTable, toy, member_of(kTable, name), kind, arguments);
  }
  Toy toy;
};

TEST_F(Operations, AritiesFollowFromTheFunctions) {
  EXPECT_EQ(kRows[0].arity, 0u);
  EXPECT_EQ(kRows[1].arity, 2u);
}

TEST_F(Operations, NumbersBeginBehindTheDefaultMember) {
  EXPECT_EQ(member_of(kTable, "reset"), kDefaultMember + 1);
  EXPECT_EQ(member_of(kTable, "ADD"), kDefaultMember + 2);
  EXPECT_EQ(member_of(kTable, "Addition"), kNoMember);
}

TEST_F(Operations, CallsWithTheCallersOwnVariables) {
  Value first = Value::long_integer(2);
  Value second = Value::text("3");
  Value* arguments[] = {&first, &second};
  const Value sum =
      call_operation(kTable, toy, member_of(kTable, "Add"), CallKind::Method, arguments);
  EXPECT_EQ(to_long(sum), 5);
  EXPECT_EQ(first.as_view(), "added");
}

TEST_F(Operations, WithoutAResultIsEmpty) {
  EXPECT_TRUE(call("Reset", {}).is_empty());
}

TEST_F(Operations, WrongCallsRaise) {
  EXPECT_EQ(error_of([&] { call("Add", {Value()}); }), 450);
  EXPECT_EQ(error_of([&] { call("Reset", {Value()}); }), 450);
  EXPECT_EQ(error_of([&] { call("Add", {Value(), Value::missing()}); }), 449);
  EXPECT_EQ(error_of([&] { call("Remove", {}); }), 438);
  EXPECT_EQ(error_of([&] { call("Add", {Value(), Value()}, CallKind::Let); }), 438);
  EXPECT_EQ(error_of([&] { call("Add", {Value(), Value()}, CallKind::Set); }), 438);
}

}  // namespace
}  // namespace rk::classes
