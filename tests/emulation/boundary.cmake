# The boundary's own test, and the library for the device that it takes.
set(probe ${CMAKE_BINARY_DIR}/tests/probe.dylib)
set(object ${CMAKE_CURRENT_BINARY_DIR}/probe.o)
if(VARNIX_EMULATED STREQUAL arm64)
  set(target --target=arm64-apple-ios9.3)
  set(link ld64.lld-19 -dylib -arch arm64 -platform_version ios 9.3 9.3 -no_fixup_chains -undefined dynamic_lookup
      -install_name /Library/probe.dylib -o ${probe} ${object})
endif()
# With the flags of the library itself, which are told from the root folder.
add_custom_command(OUTPUT ${probe}
  COMMAND clang++-19 @${VARNIX_DEVICE_BUILD}/flags ${target} -c tests/emulation/probe.cpp -o ${object}
  COMMAND ${link}
  DEPENDS emulation/probe.cpp emulation/probe.h WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
add_custom_target(probe DEPENDS ${probe})

add_executable(emulation_boundary_test emulation/boundary_test.cpp)
target_link_libraries(emulation_boundary_test PRIVATE varnix_test_support varnix_warnings)
target_compile_definitions(emulation_boundary_test PRIVATE VARNIX_PROBE="${probe}")
set_target_properties(emulation_boundary_test PROPERTIES ENABLE_EXPORTS ON
                      RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
add_dependencies(emulation_boundary_test probe varnix_host_frameworks)
gtest_discover_tests(emulation_boundary_test PROPERTIES TIMEOUT 120 DISCOVERY_TIMEOUT 60)
