# Builds the demo storefront into the program, for `rkclient new`: a source file that takes in every
# file of demo/ as it stands, compiled anew where one of them changes.

set(RK_STOREFRONT ${CMAKE_BINARY_DIR}/storefront_files.cc)
file(GLOB_RECURSE files RELATIVE ${CMAKE_SOURCE_DIR}/demo CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/demo/*)
# The stand-ins of outside services are no part of a site.
list(FILTER files EXCLUDE REGEX "^fakes/")
list(SORT files)

set(number 0)
set(sections)
set(declarations)
set(rows)
set(whole)
foreach(file IN LISTS files)
  string(APPEND sections "rk_storefront_${number}:\n.incbin \"${CMAKE_SOURCE_DIR}/demo/${file}\"\nrk_storefront_${number}_end:\n")
  string(APPEND declarations "extern const char rk_storefront_${number}[];\nextern const char rk_storefront_${number}_end[];\n")
  string(APPEND rows "      {\"${file}\", between(rk_storefront_${number}, rk_storefront_${number}_end)},\n")
  list(APPEND whole ${CMAKE_SOURCE_DIR}/demo/${file})
  math(EXPR number "${number} + 1")
endforeach()

file(CONFIGURE OUTPUT ${RK_STOREFRONT} @ONLY CONTENT [[
#include "app/storefront_files.h"

#include <cstddef>

asm(R"(
.pushsection .rodata
@sections@.popsection
)");

extern "C" {
@declarations@}

namespace rk::app {

namespace {

std::string_view between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

std::span<const StorefrontFile> storefront_files() {
  static const StorefrontFile kFiles[] = {
@rows@  };
  return kFiles;
}

}  // namespace rk::app
]])
set_source_files_properties(${RK_STOREFRONT} PROPERTIES OBJECT_DEPENDS "${whole}")
target_sources(rk_app PRIVATE ${RK_STOREFRONT})
