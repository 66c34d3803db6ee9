# One test program a room, out of tests/<room>/; what they share lies in tests/support/ and tests/plain/.
# Every test leaves its counts in results/<name>.json, from which script/test makes its sum.

find_package(GTest REQUIRED)
find_package(rapidcheck REQUIRED)
include(GoogleTest)

set(RK_RESULTS ${CMAKE_BINARY_DIR}/results)
file(MAKE_DIRECTORY ${RK_RESULTS})
# Rooms whose code several threads run: their tests are run under ThreadSanitizer as well.
set(RK_THREADED value adapters/sqlite adapters/odbc pagehost/pages pagehost/components pagehost/http)

file(GLOB support CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/*.cc ${CMAKE_SOURCE_DIR}/tests/plain/*.cc)
if(support)
  add_library(rk_test_support STATIC ${support})
  target_compile_options(rk_test_support PRIVATE ${RK_WARNINGS})
  target_include_directories(rk_test_support PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(rk_test_support PUBLIC rk_classes GTest::gtest rapidcheck)
else()
  add_library(rk_test_support INTERFACE)
  target_include_directories(rk_test_support INTERFACE ${CMAKE_SOURCE_DIR})
endif()

get_property(rooms GLOBAL PROPERTY RK_ROOMS)
foreach(room IN LISTS rooms)
  string(REPLACE "/" "_" id ${room})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${room}/*_test.cc)
  if(RK_SANITIZE MATCHES thread)
    # It measures memory by a new and delete of its own; ThreadSanitizer has its own too.
    list(FILTER sources EXCLUDE REGEX "/forward_recordset_test\\.cc$")
  endif()
  if(sources)
    add_executable(${id}_tests ${sources})
    target_compile_options(${id}_tests PRIVATE ${RK_WARNINGS})
    target_compile_definitions(${id}_tests PRIVATE RK_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    target_link_libraries(${id}_tests PRIVATE rk_${id} rk_test_support GTest::gtest_main)
    # One ctest entry a room: start-up of a process a test would cost more than the tests.
    add_test(NAME ${id} COMMAND ${id}_tests --gtest_output=json:${RK_RESULTS}/${id}.json)
    set(labels unit)
    if(room IN_LIST RK_THREADED)
      list(APPEND labels threads)
    endif()
    # A property holds for so many generated cases; a hundred, run by hand, is for a quick look.
    set_tests_properties(${id} PROPERTIES LABELS "${labels}"
      ENVIRONMENT "RC_PARAMS=max_success=1000")
  endif()
endforeach()

# Tests of the program as a whole: transcripts of its commands, and pages in a browser.
if(TARGET rkclient)
  file(GLOB transcripts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/cli/*.transcript)
  if(transcripts)
    add_test(NAME cli COMMAND ${CMAKE_SOURCE_DIR}/tests/cli/run_transcripts.py
      --program $<TARGET_FILE:rkclient> --results ${RK_RESULTS}/cli.json)
    set_tests_properties(cli PROPERTIES LABELS program)
  endif()
  if(NOT RK_SANITIZE)
    add_test(NAME package COMMAND ${CMAKE_SOURCE_DIR}/tests/package/run_package.py
      --build ${CMAKE_BINARY_DIR} --program $<TARGET_FILE:rkclient> --results ${RK_RESULTS}/package.json)
    set_tests_properties(package PROPERTIES LABELS program)
  endif()
  file(GLOB browser CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/browser/*.test.mjs)
  if(browser)
    add_test(NAME browser COMMAND ${CMAKE_SOURCE_DIR}/tests/browser/run_browser.py
      --program $<TARGET_FILE:rkclient> --results ${RK_RESULTS}/browser.json)
    set_tests_properties(browser PROPERTIES LABELS browser)
  endif()
endif()

# The translator's tests run what it writes on the real engine.
if(TARGET jetsql_tests)
  target_link_libraries(jetsql_tests PRIVATE sqlite3)
endif()

# The pages of tests/pages/ and the DOM objects are run on the real XML engine, sites in two code
# pages on the real ones, and folders on the disk.
if(TARGET pagehost_components_tests)
  target_link_libraries(pagehost_components_tests PRIVATE
    rk_adapters_xml rk_adapters_codepage rk_adapters_pcre2 rk_adapters_posix)
endif()
