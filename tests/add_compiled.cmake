# What an Objective-C compiler writes, for tests: for Linux, and in the emulated suite for the device.
if(NOT CMAKE_CROSSCOMPILING)
  include(${PROJECT_SOURCE_DIR}/extension/EnableObjectiveC.cmake)

  add_library(varnix_compiled_image OBJECT ${PROJECT_SOURCE_DIR}/host/compiled/image.cpp)
  target_link_libraries(varnix_compiled_image PRIVATE varnix_host varnix_warnings)
endif()

set(VARNIX_COMPILED_HEADERS ${CMAKE_CURRENT_LIST_DIR}/compiled/headers)
set(VARNIX_COMPILED_WARNINGS -Wno-objc-root-class -Wno-objc-protocol-method-implementation -Wno-unused-parameter
    -Wno-cast-function-type -Wno-cast-of-sel-type -Wno-arc-performSelector-leaks -Wno-arc-retain-cycles)

# add_compiled(NAME SOURCE... [OPTIONS OPTION...] [STUBS STUB...] [FOLDER FOLDER] [LINKS_OURS]): the target
# NAME is a library below tests/, in FOLDER. STUBS are text stubs for the device's linkers; LINKS_OURS links
# our library.
function(add_compiled name)
  cmake_parse_arguments(PARSE_ARGV 1 it "LINKS_OURS" "FOLDER" "OPTIONS;STUBS")
  set(sources ${it_UNPARSED_ARGUMENTS})
  set(folder ${CMAKE_BINARY_DIR}/tests/${it_FOLDER})
  if(CMAKE_CROSSCOMPILING)
    set(output ${folder}/${name}.dylib)
    list(TRANSFORM sources PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
    set(with)
    if(it_LINKS_OURS)
      set(with --with ${VARNIX_DEVICE_BUILD}/Varnix)
    endif()
    list(TRANSFORM it_STUBS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set(flags -I ${CMAKE_CURRENT_SOURCE_DIR} -I ${VARNIX_COMPILED_HEADERS} ${VARNIX_COMPILED_WARNINGS} ${it_OPTIONS})
    list(JOIN flags " " flags)
    file(GLOB headers CONFIGURE_DEPENDS *.h)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${output}
      COMMAND ${VARNIX_BUILD_DEVICE_LIBRARY} ${output} ${with} --flags "${flags}" ${sources} ${it_STUBS}
      DEPENDS ${sources} ${it_STUBS} ${headers} ${PROJECT_SOURCE_DIR}/device/emulation/build-library VERBATIM)
    add_custom_target(${name} DEPENDS ${output})
    return()
  endif()
  add_library(${name} MODULE ${sources} $<TARGET_OBJECTS:varnix_compiled_image>)
  target_include_directories(${name} PRIVATE . ${VARNIX_COMPILED_HEADERS})
  target_compile_options(${name} PRIVATE
    $<$<COMPILE_LANGUAGE:OBJC>:${VARNIX_OBJECTIVE_C_OPTIONS} -Wall -Wextra -Werror ${VARNIX_COMPILED_WARNINGS}
      ${it_OPTIONS}>)
  target_link_libraries(${name} PRIVATE varnix_host $<$<BOOL:${it_LINKS_OURS}>:varnix_library>)
  set_target_properties(${name} PROPERTIES PREFIX "" LINKER_LANGUAGE CXX LIBRARY_OUTPUT_DIRECTORY ${folder})
endfunction()
