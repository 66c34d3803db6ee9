// Files whose reading or writing fails in the way that a test names.
#ifndef RK_TESTS_SUPPORT_FAILING_FILES_H_
#define RK_TESTS_SUPPORT_FAILING_FILES_H_

#include <string>
#include <string_view>

#include "tests/support/memory_files.h"
#include "value/script_error.h"

namespace rk::tests {

inline const KnownError* const kFileFailures[] = {
    &errors::kFileNotFound, &errors::kDeviceError,      &errors::kDiskFull,
    &errors::kInputPastEnd, &errors::kPermissionDenied, &errors::kPathNotFound,
    &errors::kOutOfMemory};

class FailingFiles final : public MemoryFiles {
 public:
  std::string read(std::string_view path) const override {
    if (read_failure != nullptr) raise(*read_failure);
    return MemoryFiles::read(path);
  }
  void write(std::string_view path, std::string_view bytes) override {
    if (write_failure != nullptr) raise(*write_failure);
    MemoryFiles::write(path, bytes);
  }

  const KnownError* read_failure = nullptr;   // none: reading works
  const KnownError* write_failure = nullptr;  // none: writing works
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_FAILING_FILES_H_
