// Reads files without taking an engine's locks away.
//
// The record locks that a process holds on a file are gone as soon as it closes any descriptor of
// that file, whichever part of it had opened that one. A database engine in this process would go
// on as if it held them: other processes then take its log away, and what is written afterwards is
// lost. So a file that begins as an SQLite database is opened once, and that descriptor lasts as
// long as the file has a name.
//
// Process-wide, as the locks are. Several threads may call.
#ifndef RK_ADAPTERS_POSIX_LASTING_DESCRIPTORS_H_
#define RK_ADAPTERS_POSIX_LASTING_DESCRIPTORS_H_

#include <sys/stat.h>

#include <memory>

#include "adapters/posix/open_beneath.h"

namespace rk::posix {

// A regular file that `place` (O_PATH) leads to and `status` tells of, for pread: its offset is
// everybody's. Null with errno where it cannot be opened.
std::shared_ptr<const Descriptor> open_for_reading(const Descriptor& place,
                                                   const struct stat& status);

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_LASTING_DESCRIPTORS_H_
