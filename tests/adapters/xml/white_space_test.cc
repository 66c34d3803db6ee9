#include "adapters/xml/white_space.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>

#include <memory>

namespace rk::xml {
namespace {

TEST(XmlWhiteSpace, BothPlacesOfANodeAreKeptApart) {
  const std::unique_ptr<xmlNode, void (*)(xmlNode*)> node(xmlNewNode(nullptr, BAD_CAST "a"),
                                                          xmlFreeNode);
  EXPECT_EQ(space_before(node.get()), Space::None);
  EXPECT_EQ(space_at_end(node.get()), Space::None);
  set_space_before(node.get(), Space::Line);
  set_space_at_end(node.get(), Space::Blank);
  EXPECT_EQ(space_before(node.get()), Space::Line);
  EXPECT_EQ(space_at_end(node.get()), Space::Blank);
  set_space_before(node.get(), Space::None);
  EXPECT_EQ(space_before(node.get()), Space::None);
  EXPECT_EQ(space_at_end(node.get()), Space::Blank);
}

}  // namespace
}  // namespace rk::xml
