// What pages create of this library by name: program identifier -> class.
//
// app/ hands the table to the page host, which calls OnStartPage on what it made and OnEndPage
// when the page ends, both by name, where the object has them.
#ifndef RK_CLASSES_PROGRAM_IDS_H_
#define RK_CLASSES_PROGRAM_IDS_H_

#include <span>
#include <string_view>

#include "classes/equipment.h"
#include "value/object.h"
#include "value/ref.h"

namespace rk::classes {

struct ProgramId {
  std::string_view name;  // compared without regard to letter case
  Ref<Object> (*make)(const Equipment& equipment);
};

std::span<const ProgramId> program_ids();

}  // namespace rk::classes

#endif  // RK_CLASSES_PROGRAM_IDS_H_
