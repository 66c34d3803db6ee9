// The numbers that Rnd answers: the language's own sequence, the same in every run until Randomize.
#ifndef RK_VBSCRIPT_RANDOM_SEQUENCE_H_
#define RK_VBSCRIPT_RANDOM_SEQUENCE_H_

#include <cstdint>

namespace rk::vbscript {

class RandomSequence {
 public:
  float next() noexcept;
  float last() const noexcept;
  // Rnd with a negative number: a sequence that the number alone decides.
  float restart(float seed) noexcept;
  // Randomize: mixes the number into the state.
  void randomize(double seed) noexcept;

 private:
  std::uint32_t state_ = 0x50000;  // 24 bits
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_RANDOM_SEQUENCE_H_
