#include "app/commands.h"
#include "app/program.h"

namespace rk::app {

int check(const std::string&) {
  throw CommandFailure("check: not built yet");
}

}  // namespace rk::app
