// The scripting context out of the argument of OnStartPage, for the classes that a page binds.
#ifndef RK_CLASSES_PAGE_BINDING_H_
#define RK_CLASSES_PAGE_BINDING_H_

#include "platform/page.h"
#include "value/value.h"

namespace rk::classes {

// Raises 424 for what is no object, 438 for an object that is no scripting context.
platform::ScriptingContext& scripting_context(const Value& mysc);

}  // namespace rk::classes

#endif  // RK_CLASSES_PAGE_BINDING_H_
