#include "adapters/xml/white_space.h"

#include <libxml/tree.h>

namespace rk::xml {
namespace {

constexpr std::uintptr_t kMask = 3;
constexpr unsigned kEndShift = 2;

std::uintptr_t bits_of(const xmlNode* node) {
  return reinterpret_cast<std::uintptr_t>(node->_private);
}

void set_bits(xmlNode* node, unsigned shift, Space space) {
  const std::uintptr_t others = bits_of(node) & ~(kMask << shift);
  const std::uintptr_t bits = others | (static_cast<std::uintptr_t>(space) << shift);
  node->_private = reinterpret_cast<void*>(bits);  // NOLINT(performance-no-int-to-ptr): no address
}

}  // namespace

Space space_before(const _xmlNode* node) {
  return static_cast<Space>(bits_of(node) & kMask);
}

Space space_at_end(const _xmlNode* element) {
  return static_cast<Space>((bits_of(element) >> kEndShift) & kMask);
}

void set_space_before(_xmlNode* node, Space space) {
  set_bits(node, 0, space);
}

void set_space_at_end(_xmlNode* element, Space space) {
  set_bits(element, kEndShift, space);
}

}  // namespace rk::xml
