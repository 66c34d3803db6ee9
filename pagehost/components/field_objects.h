// The Field objects of a record set and its Fields collection.
#ifndef RK_PAGEHOST_COMPONENTS_FIELD_OBJECTS_H_
#define RK_PAGEHOST_COMPONENTS_FIELD_OBJECTS_H_

#include <cstddef>

#include "pagehost/components/recordset_object.h"

namespace rk::pagehost {

// Bound to the record set: it shows the value of the row that is current when it is read.
Ref<Object> field_object(Ref<RecordsetObject> recordset, std::size_t ordinal);
Ref<Object> fields_object(Ref<RecordsetObject> recordset);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_FIELD_OBJECTS_H_
