# What `cmake --install` puts where, and the Debian package that CPack makes of the program's part.
#
#   cmake --install build --component program      the program, its manual page, unit file, documents
#   cmake --install build --component development  the library: archives, headers, find_package

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# --- the program
install(TARGETS rkclient RUNTIME COMPONENT program)

# Both are written from the program's own --help, so neither can tell of options that are not there.
foreach(made IN ITEMS man_page completion)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/packaging/${made}
    COMMAND ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 ${Python3_EXECUTABLE}
      ${CMAKE_SOURCE_DIR}/packaging/${made} $<TARGET_FILE:rkclient>
      > ${CMAKE_BINARY_DIR}/packaging/${made}
    DEPENDS rkclient packaging/${made} packaging/help_text.py VERBATIM)
endforeach()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging)
add_custom_target(packaging ALL
  DEPENDS ${CMAKE_BINARY_DIR}/packaging/man_page ${CMAKE_BINARY_DIR}/packaging/completion)

install(FILES ${CMAKE_BINARY_DIR}/packaging/man_page DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
  RENAME rkclient.1 COMPONENT program)
install(FILES ${CMAKE_BINARY_DIR}/packaging/completion
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME rkclient COMPONENT program)
install(FILES packaging/rkclient@.service DESTINATION lib/systemd/system COMPONENT program)
install(FILES packaging/rkclient.sysusers DESTINATION lib/sysusers.d RENAME rkclient.conf
  COMPONENT program)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
install(DIRECTORY packaging/proxy DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT program)
install(CODE "
  set(site \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/rkclient/example-site\")
  file(REMOVE_RECURSE \"\${site}\")
  execute_process(COMMAND $<TARGET_FILE:rkclient> new \"\${site}\" OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  " COMPONENT program)
install(FILES README.md packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)

# --- the library, a target a room: Rkclient::catalogue, Rkclient::adapters_sqlite, ...
get_property(rooms GLOBAL PROPERTY RK_ROOMS)
foreach(room IN LISTS rooms)
  string(REPLACE "/" "_" id ${room})
  set_target_properties(rk_${id} PROPERTIES EXPORT_NAME ${id})
  install(TARGETS rk_${id} EXPORT RkclientTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}/rkclient COMPONENT development)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${room}/*.h)
  install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/rkclient/${room}
    COMPONENT development)
endforeach()
install(EXPORT RkclientTargets NAMESPACE Rkclient::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Rkclient COMPONENT development)
configure_package_config_file(packaging/RkclientConfig.cmake.in
  ${CMAKE_BINARY_DIR}/packaging/RkclientConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Rkclient)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/packaging/RkclientConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/packaging/RkclientConfig.cmake
  ${CMAKE_BINARY_DIR}/packaging/RkclientConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Rkclient COMPONENT development)

# --- the package
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rkclient)
set(CPACK_PACKAGE_CONTACT "The Rkclient developers <rkclient@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Serves storefronts written as classic .asp pages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL program)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME rkclient)
set(CPACK_DEBIAN_PROGRAM_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_STRIP_FILES ON)
include(CPack)
