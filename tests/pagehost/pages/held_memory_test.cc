#include "pagehost/pages/held_memory.h"

#include <gtest/gtest.h>

namespace rk::pagehost {
namespace {

TEST(HeldMemory, ObjectsGiveBackWhatTheyHeld) {
  const auto memory = std::make_shared<HeldMemory>();
  {
    HeldBytes one(memory);
    HeldBytes two(memory);
    one.set(100);
    two.set(50);
    one.set(30);
    EXPECT_EQ(memory->bytes(), 80u);
  }
  EXPECT_EQ(memory->bytes(), 0u);
}

TEST(HeldMemory, PastTheBoundThePageEndsAndNothingMoreIsCounted) {
  const auto memory = std::make_shared<HeldMemory>();
  HeldBytes one(memory);
  one.set(kMaxHeldBytes);
  HeldBytes two(memory);
  EXPECT_THROW(two.set(1), platform::PageEnd);
  EXPECT_EQ(memory->bytes(), kMaxHeldBytes);
}

TEST(HeldMemory, AnObjectOfNoPageCountsNothing) {
  HeldBytes one(nullptr);
  EXPECT_NO_THROW(one.set(2 * kMaxHeldBytes));
}

}  // namespace
}  // namespace rk::pagehost
