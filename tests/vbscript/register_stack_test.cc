#include "vbscript/register_stack.h"

#include <gtest/gtest.h>

namespace rk::vbscript {
namespace {

TEST(RegisterStack, AFrameWithoutRegistersNeedsNoChunk) {
  RegisterStack stack;
  Value* const first = stack.take(0);
  stack.give_back(first, 0);
  EXPECT_NE(stack.take(1), nullptr);
}

TEST(RegisterStack, AFrameThatFillsAChunkIsGivenBackWithIt) {
  RegisterStack stack;
  Value* const outer = stack.take(1);
  Value* const inner = stack.take(20000);
  inner[0] = Value::integer(7);
  stack.give_back(stack.take(0), 0);
  EXPECT_EQ(inner[0].kind(), Value::Kind::Integer);
  stack.give_back(inner, 20000);
  EXPECT_EQ(stack.take(1), outer + 1);
}

}  // namespace
}  // namespace rk::vbscript
