// The one drive that the file system object shows: the disk that the site lies on, without a
// letter. Pages look at it for the room that is left. Of the page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_DRIVE_OBJECT_H_
#define RK_PAGEHOST_COMPONENTS_DRIVE_OBJECT_H_

#include <string>

#include "pagehost/components/text_stream.h"
#include "platform/clock.h"
#include "value/object.h"

namespace rk::pagehost {

struct DrivePlace {
  FileSystem system;
  const platform::Clock* clock = nullptr;
  std::string folder;  // any of the site's
};

Ref<Object> drive_object(const DrivePlace& place);
Ref<Object> drives_object(const DrivePlace& place);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_DRIVE_OBJECT_H_
