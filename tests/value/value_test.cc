#include "value/value.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "value/array.h"
#include "value/script_error.h"

namespace rk {
namespace {

TEST(Value, IsSixteenBytes) {
  EXPECT_EQ(sizeof(Value), 16u);
}

TEST(Value, StartsEmptyAndMovesLeaveEmpty) {
  Value a;
  EXPECT_TRUE(a.is_empty());
  Value b = Value::text("x");
  a = std::move(b);
  EXPECT_EQ(a.as_view(), "x");
  EXPECT_TRUE(b.is_empty());  // NOLINT(bugprone-use-after-move): the promise under test
}

TEST(Value, AppendsToTheTextInPlace) {
  Value a = Value::text("x");
  const Value b = a;
  a.append("y");
  a.append(Text("z"));
  EXPECT_EQ(a.as_view(), "xyz");
  EXPECT_EQ(b.as_view(), "x");
}

TEST(Value, ACopiedArrayIsItsOwnOnceWritten) {
  Value a = Value::array(Array::of({Value::integer(1)}));
  Value b = a;
  b.writable_array().elements()[0] = Value::integer(2);
  EXPECT_EQ(a.as_array().elements()[0].as_integer(), 1);
  EXPECT_EQ(b.as_array().elements()[0].as_integer(), 2);
}

TEST(Value, KnowsAnArgumentLeftOut) {
  EXPECT_TRUE(Value::missing().is_missing());
  EXPECT_FALSE(Value::error(5).is_missing());
}

TEST(Value, SharedTextsAreCountedByManyThreads) {
  Value shared = Value::text("shared between pages");
  shared.share();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&shared] {
      for (int turn = 0; turn < 10000; ++turn) {
        Value copy = shared;
        copy.append("x");
        if (copy.as_view().size() != 21) std::abort();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(shared.as_view(), "shared between pages");
}

TEST(Array, FindsElementsByTheirIndexes) {
  const std::int32_t bounds[] = {1, 2};
  const auto array = Array::make(bounds);
  EXPECT_EQ(array->elements().size(), 6u);
  const std::int32_t at[] = {1, 2};
  EXPECT_EQ(array->index_of(at), 5u);
}

TEST(Array, RaisesSubscriptOutOfRange) {
  const std::int32_t bounds[] = {1, 2};
  const auto array = Array::make(bounds);
  const std::int32_t past[] = {2, 0};
  const std::int32_t few[] = {0};
  const std::int32_t below[] = {-1, 0};
  EXPECT_THROW(array->index_of(past), ScriptError);
  EXPECT_THROW(array->index_of(few), ScriptError);
  EXPECT_THROW(array->index_of(below), ScriptError);
}

TEST(Array, PreservesElementsWhenTheLastDimensionGrows) {
  const std::int32_t bounds[] = {1, 0};
  const auto array = Array::make(bounds);
  array->elements()[1] = Value::integer(7);
  array->resize_last(3);
  EXPECT_EQ(array->elements().size(), 8u);
  EXPECT_EQ(array->elements()[1].as_integer(), 7);
}

TEST(Array, RefusesToBeLargerThanMemoryAllows) {
  const std::int32_t bounds[] = {2000000000};
  try {
    Array::make(bounds);
    FAIL();
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.number(), 7);
  }
}

}  // namespace
}  // namespace rk
