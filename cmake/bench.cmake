# All of bench/*_bench.cc as one program, rk_bench; script/bench runs it.

find_package(benchmark QUIET)
file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/bench/*_bench.cc)
if(sources AND benchmark_FOUND)
  file(GLOB shared CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/bench/*.cc)
  rk_rooms_included(needs ${shared})
  add_executable(rk_bench ${shared})
  target_compile_options(rk_bench PRIVATE ${RK_WARNINGS})
  target_compile_definitions(rk_bench PRIVATE RK_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(rk_bench PRIVATE ${needs} rk_test_support benchmark::benchmark_main sqlite3)
endif()
