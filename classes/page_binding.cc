#include "classes/page_binding.h"

#include "value/script_error.h"

namespace rk::classes {

platform::ScriptingContext& scripting_context(const Value& mysc) {
  if (!mysc.is_object()) raise(errors::kObjectRequired);
  if (mysc.as_object() == nullptr) raise(errors::kObjectRequired);
  auto* context = dynamic_cast<platform::ScriptingContext*>(mysc.as_object());
  if (context == nullptr) raise(errors::kNoSuchMember);
  return *context;
}

}  // namespace rk::classes
