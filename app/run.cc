#include "app/commands.h"
#include "app/program.h"

namespace rk::app {

int run(const RunOptions&) {
  throw CommandFailure("run: not built yet");
}

}  // namespace rk::app
