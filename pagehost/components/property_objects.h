// The Properties collection of connections, record sets and fields, and its Property objects.
#ifndef RK_PAGEHOST_COMPONENTS_PROPERTY_OBJECTS_H_
#define RK_PAGEHOST_COMPONENTS_PROPERTY_OBJECTS_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/tabled_object.h"
#include "value/value.h"

namespace rk::pagehost {

struct Property {
  std::string name;
  Value value;
};

// Of one object; what pages assign stays in it and has no other effect unless the object looks.
using PropertyList = std::vector<Property>;

// Null where there is none of that name, in any letter case.
Property* property_named(PropertyList& list, std::string_view name);

// What `object.Properties` answers, with or without a name or number behind it. Raises 3265 for
// one that is not there.
Value properties_member(const std::shared_ptr<PropertyList>& list, const Call& call);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_PROPERTY_OBJECTS_H_
