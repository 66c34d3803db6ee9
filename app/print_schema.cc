#include "app/commands.h"
#include "app/program.h"
#include "app/schema.h"

namespace rk::app {

int print_schema(const std::string& engine) {
  const std::optional<SchemaEngine> known = schema_engine(engine);
  if (!known) throw WrongCommandLine("no engine is called " + engine);
  print(schema_ddl(*known));
  return kDone;
}

}  // namespace rk::app
