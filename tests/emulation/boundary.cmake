# The boundary's own test, and the library for the device that it takes.
set(probe ${CMAKE_BINARY_DIR}/tests/probe.dylib)
set(sources ${CMAKE_CURRENT_SOURCE_DIR}/emulation/probe.cpp ${PROJECT_SOURCE_DIR}/src/objc/image.cpp)
add_custom_command(OUTPUT ${probe} COMMAND ${VARNIX_BUILD_DEVICE_LIBRARY} ${probe} ${sources}
  DEPENDS ${sources} emulation/probe.h ${builder} VERBATIM)
# The same again, but it demands more of the run-time than that is.
set(demanding ${CMAKE_BINARY_DIR}/tests/demanding.dylib)
add_custom_command(OUTPUT ${demanding}
  COMMAND ${VARNIX_BUILD_DEVICE_LIBRARY} ${demanding} ${sources}
          ${CMAKE_CURRENT_SOURCE_DIR}/emulation/newer_libobjc.tbd
  DEPENDS ${sources} emulation/probe.h emulation/newer_libobjc.tbd ${builder} VERBATIM)
add_custom_target(probe DEPENDS ${probe} ${demanding})

foreach(name IN ITEMS boundary unsound)
  set(test emulation_${name}_test)
  add_executable(${test} emulation/${name}_test.cpp)
  target_link_libraries(${test} PRIVATE varnix_test_support varnix_warnings)
  set_target_properties(${test} PROPERTIES ENABLE_EXPORTS ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_dependencies(${test} probe varnix_library varnix_host_frameworks)
  gtest_discover_tests(${test} PROPERTIES TIMEOUT 120 DISCOVERY_TIMEOUT 60)
endforeach()
target_compile_definitions(emulation_boundary_test PRIVATE VARNIX_PROBE="${probe}"
                           VARNIX_DEMANDING="${demanding}")
# It looks for what it spoils as the rules do.
target_link_libraries(emulation_unsound_test PRIVATE varnix_loading_rules)
