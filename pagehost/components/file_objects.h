// The File, Folder and collection objects of the file system object.
#ifndef RK_PAGEHOST_COMPONENTS_FILE_OBJECTS_H_
#define RK_PAGEHOST_COMPONENTS_FILE_OBJECTS_H_

#include <string>

#include "pagehost/components/text_stream.h"
#include "platform/clock.h"
#include "value/object.h"

namespace rk::pagehost {

// Raises 53 where there is no such file.
Ref<Object> file_object(const FileSystem& system, const platform::Clock& clock,
                        const std::string& path);
// Raises 76 where there is no such folder.
Ref<Object> folder_object(const FileSystem& system, const platform::Clock& clock,
                          const std::string& path);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_FILE_OBJECTS_H_
