# The boundary's own test, and the library for the device that it takes.
set(probe ${CMAKE_BINARY_DIR}/tests/probe.dylib)
add_custom_command(OUTPUT ${probe}
  COMMAND ${VARNIX_BUILD_DEVICE_LIBRARY} ${probe} ${CMAKE_CURRENT_SOURCE_DIR}/emulation/probe.cpp
  DEPENDS emulation/probe.cpp emulation/probe.h VERBATIM)
add_custom_target(probe DEPENDS ${probe})

add_executable(emulation_boundary_test emulation/boundary_test.cpp)
target_link_libraries(emulation_boundary_test PRIVATE varnix_test_support varnix_warnings)
target_compile_definitions(emulation_boundary_test PRIVATE VARNIX_PROBE="${probe}")
set_target_properties(emulation_boundary_test PROPERTIES ENABLE_EXPORTS ON
                      RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
add_dependencies(emulation_boundary_test probe varnix_host_frameworks)
gtest_discover_tests(emulation_boundary_test PROPERTIES TIMEOUT 120 DISCOVERY_TIMEOUT 60)
