# The boundary's own test, and the library for the device that it takes.
set(probe ${CMAKE_BINARY_DIR}/tests/probe.dylib)
add_custom_command(OUTPUT ${probe}
  COMMAND ${VARNIX_BUILD_DEVICE_LIBRARY} ${probe} ${CMAKE_CURRENT_SOURCE_DIR}/emulation/probe.cpp
  DEPENDS emulation/probe.cpp emulation/probe.h VERBATIM)
# The same again, but it demands more of the run-time than that is.
set(demanding ${CMAKE_BINARY_DIR}/tests/demanding.dylib)
add_custom_command(OUTPUT ${demanding}
  COMMAND ${VARNIX_BUILD_DEVICE_LIBRARY} ${demanding} ${CMAKE_CURRENT_SOURCE_DIR}/emulation/probe.cpp
          ${CMAKE_CURRENT_SOURCE_DIR}/emulation/newer_libobjc.tbd
  DEPENDS emulation/probe.cpp emulation/probe.h emulation/newer_libobjc.tbd VERBATIM)
add_custom_target(probe DEPENDS ${probe} ${demanding})

add_executable(emulation_boundary_test emulation/boundary_test.cpp)
target_link_libraries(emulation_boundary_test PRIVATE varnix_test_support varnix_warnings)
target_compile_definitions(emulation_boundary_test PRIVATE VARNIX_PROBE="${probe}"
                           VARNIX_DEMANDING="${demanding}")
set_target_properties(emulation_boundary_test PROPERTIES ENABLE_EXPORTS ON
                      RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
add_dependencies(emulation_boundary_test probe varnix_host_frameworks)
gtest_discover_tests(emulation_boundary_test PROPERTIES TIMEOUT 120 DISCOVERY_TIMEOUT 60)
