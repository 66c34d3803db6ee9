#include "vbscript/limits.h"

#include <pthread.h>

namespace rk::vbscript {

std::uintptr_t stack_floor_of_this_thread() {
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
  void* lowest = nullptr;
  std::size_t size = 0;
  pthread_attr_getstack(&attributes, &lowest, &size);
  pthread_attr_destroy(&attributes);
  return reinterpret_cast<std::uintptr_t>(lowest) + kStackReserveBytes;
}

}  // namespace rk::vbscript
