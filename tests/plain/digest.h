// The digest step by step, on signed words as its rule tells it: one character after the other is
// packed, and every operation is written out. services/digest.h is held against it.
#ifndef RK_TESTS_PLAIN_DIGEST_H_
#define RK_TESTS_PLAIN_DIGEST_H_

#include <cstdint>
#include <string>
#include <vector>

namespace rk::tests::plain {

// The codes of a text's characters in the ANSI code page, as signed 16-bit numbers.
std::string md5(const std::vector<std::int16_t>& codes);

}  // namespace rk::tests::plain

#endif  // RK_TESTS_PLAIN_DIGEST_H_
