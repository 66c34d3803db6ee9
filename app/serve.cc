#include "app/commands.h"
#include "app/program.h"

namespace rk::app {

int serve(const ServeOptions&) {
  throw CommandFailure("serve: not built yet");
}

}  // namespace rk::app
