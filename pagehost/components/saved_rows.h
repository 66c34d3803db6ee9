// Record sets as XML documents, as Save writes them and Open reads them back: a schema of the
// columns, and an element a row whose attributes are the values; a Null has no attribute. The names
// of elements and attributes are those that pages and style sheets of the time look for. Pure
// functions.
#ifndef RK_PAGEHOST_COMPONENTS_SAVED_ROWS_H_
#define RK_PAGEHOST_COMPONENTS_SAVED_ROWS_H_

#include <memory>
#include <string>

#include "pagehost/components/memory_rows.h"
#include "platform/xml.h"

namespace rk::pagehost {

// UTF-8. Walks over the rows. Raises 7 past the longest text that is read back.
std::string saved_text(MemoryRows& rows);

// The rows of such a document, with the changes in it that were pending. Raises -2147467259 where
// it is none, or holds what its schema does not allow.
std::unique_ptr<MemoryRows> rows_of_saved(platform::XmlDocument& document);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_SAVED_ROWS_H_
