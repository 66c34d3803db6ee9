# fuzz/<name>_fuzz.cc: with RK_FUZZ the libFuzzer program fuzz_<name>, else the test
# fuzz_replay_<name>, which feeds the target the files of seeds/, corpus/ and crashes/ in fuzz/<name>/.

file(GLOB targets CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/fuzz/*_fuzz.cc)
foreach(source IN LISTS targets)
  string(REGEX REPLACE "^.*/(.*)_fuzz\\.cc$" "\\1" name ${source})
  rk_rooms_included(needs ${source})
  if(RK_FUZZ)
    add_executable(fuzz_${name} ${source})
    target_compile_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(fuzz_${name} PRIVATE ${needs})
  else()
    add_executable(fuzz_replay_${name} ${source} ${CMAKE_SOURCE_DIR}/fuzz/replay.cc)
    target_compile_options(fuzz_replay_${name} PRIVATE ${RK_WARNINGS})
    target_link_libraries(fuzz_replay_${name} PRIVATE ${needs})
    add_test(NAME fuzz_replay_${name} COMMAND fuzz_replay_${name}
      ${RK_RESULTS}/fuzz_replay_${name}.json
      ${CMAKE_SOURCE_DIR}/fuzz/${name}/seeds ${CMAKE_SOURCE_DIR}/fuzz/${name}/corpus
      ${CMAKE_SOURCE_DIR}/fuzz/${name}/crashes)
    set_tests_properties(fuzz_replay_${name} PROPERTIES LABELS fuzz)
  endif()
endforeach()

# What the translator writes is prepared by the real engine.
foreach(program fuzz_jetsql fuzz_replay_jetsql)
  if(TARGET ${program})
    target_link_libraries(${program} PRIVATE sqlite3)
  endif()
endforeach()
