# The arrows between the rooms, checked by every build that touched a source.

get_property(folders GLOBAL PROPERTY RK_ROOMS)
list(TRANSFORM folders REPLACE "(.+)" "${CMAKE_SOURCE_DIR}/\\1/*.h;${CMAKE_SOURCE_DIR}/\\1/*.cc")
file(GLOB watched CONFIGURE_DEPENDS ${folders})
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/layers.stamp
  COMMAND ${CMAKE_SOURCE_DIR}/script/layers --arrows
  COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/layers.stamp
  DEPENDS ${watched} ${CMAKE_SOURCE_DIR}/script/layers ${CMAKE_SOURCE_DIR}/script/layers.table
  COMMENT "Arrows between the rooms"
  VERBATIM)
add_custom_target(layers ALL DEPENDS ${CMAKE_BINARY_DIR}/layers.stamp)
if(TARGET rkclient)
  add_dependencies(rkclient layers)
endif()
