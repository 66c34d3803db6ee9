#include "pagehost/components/components.h"

#include "pagehost/components/command_object.h"
#include "pagehost/components/connection_object.h"
#include "pagehost/components/dictionary.h"
#include "pagehost/components/file_system.h"
#include "pagehost/components/recordset_object.h"
#include "pagehost/components/stream_object.h"

namespace rk::pagehost {
namespace {

FileSystem system_of(PageServices& page) {
  return {&page.files(), &page.code_pages(), page.ansi_code_page()};
}

Ref<Object> file_system(PageServices& page) {
  return make_ref<FileSystemObject>(system_of(page), page.random(), page.clock(), page.site_root());
}

}  // namespace

void add_components(Programs& programs) {
  programs.add("Scripting.Dictionary", [](PageServices&) { return make_ref<Dictionary>(); });
  programs.add("Scripting.FileSystemObject", file_system);
  programs.add("ADODB.Connection",
               [](PageServices& page) { return make_ref<ConnectionObject>(page.database()); });
  programs.add("ADODB.Recordset",
               [](PageServices& page) { return make_ref<RecordsetObject>(page.database()); });
  programs.add("ADODB.Stream",
               [](PageServices& page) { return make_ref<StreamObject>(system_of(page)); });
  programs.add("ADODB.Command",
               [](PageServices& page) { return make_ref<CommandObject>(page.database()); });
}

}  // namespace rk::pagehost
