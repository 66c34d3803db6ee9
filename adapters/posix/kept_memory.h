// Memory of one page for the next one. Called once, at the start of a program that runs pages,
// before it makes threads.
#ifndef RK_ADAPTERS_POSIX_KEPT_MEMORY_H_
#define RK_ADAPTERS_POSIX_KEPT_MEMORY_H_

namespace rk::posix {

// The allocator gives memory back to the system as soon as 128 KiB at the end of its heap are free,
// and takes longer texts from the system one by one. Every page of a few hundred KiB would so be
// built in fresh memory, which the system hands out 4 KiB at a time: that takes longer than
// building the page does. From here on four MiB may stay for each heap, of which there are eight
// for a processor at most; where larger texts come and go the allocator raises both by itself.
void keep_freed_memory();

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_KEPT_MEMORY_H_
