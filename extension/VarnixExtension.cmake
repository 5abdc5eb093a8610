# How a library that the injection framework loads is compiled, for Linux and for the device: ours, and
# with an installed copy other people's.

# As on the device: the code has no exceptions and no type information, but the platform's exceptions
# pass through; a product and a sum are rounded separately on every processor.
set(VARNIX_EXTENSION_OPTIONS
  $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -funwind-tables -fno-rtti -fno-threadsafe-statics -ffp-contract=off>)
set(VARNIX_EXTENSION_LINK_OPTIONS
  # The platform's loader reaches only the device's files, and so does starting programs.
  LINKER:--wrap=dlopen,--wrap=posix_spawn
  # Classes contain many addresses to relocate: this takes a bit for each instead of 24 bytes.
  LINKER:-z,pack-relative-relocs)

# varnix_add_extension(NAME SOURCE... [FLAGS FLAG...]
#                      [PACKAGE ID] [VERSION VERSION] [FILTER FILE] [MAINTAINER TEXT] [DESCRIPTION TEXT])
#
# NAME is a shared library for Linux, NAME.so, for `varnix run --load` and `varnix inspect --load`. The
# target NAME-device builds NAME.dylib for phones beside it, and with PACKAGE the package, as
# device/extension says. Sources are C++ over the headers in objc/ and platform/, or C and Objective-C, for
# which find_package names the component ObjectiveC. FLAGS are for the compiler of the sources, and for both.
function(varnix_add_extension name)
  cmake_parse_arguments(PARSE_ARGV 1 it "" "PACKAGE;VERSION;FILTER;MAINTAINER;DESCRIPTION" "FLAGS")
  set(sources ${it_UNPARSED_ARGUMENTS})
  add_library(${name} SHARED ${sources})
  if(sources MATCHES "\\.cpp(;|$)" AND sources MATCHES "\\.m(;|$)")
    message(FATAL_ERROR "${name}: C++ over the layer or Objective-C, not both in one extension")
  elseif(sources MATCHES "\\.cpp(;|$)")
    target_link_libraries(${name} PRIVATE Varnix::layer)
    target_compile_options(${name} PRIVATE ${it_FLAGS})
  else()
    if(sources MATCHES "\\.m(;|$)" AND NOT VARNIX_OBJECTIVE_C_OPTIONS)
      message(FATAL_ERROR "${name}: Objective-C takes find_package(Varnix COMPONENTS ObjectiveC)")
    endif()
    target_compile_options(${name} PRIVATE
      $<$<COMPILE_LANGUAGE:OBJC>:${VARNIX_OBJECTIVE_C_OPTIONS}> $<$<COMPILE_LANGUAGE:C,OBJC>:${it_FLAGS}>)
    target_link_libraries(${name} PRIVATE Varnix::compiled)
  endif()
  set_target_properties(${name} PROPERTIES PREFIX "" LINKER_LANGUAGE CXX CXX_VISIBILITY_PRESET hidden
                        VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON)

  set(options --out ${CMAKE_CURRENT_BINARY_DIR})
  foreach(option IN ITEMS PACKAGE VERSION FILTER MAINTAINER DESCRIPTION)
    if(DEFINED it_${option})
      string(TOLOWER ${option} word)
      list(APPEND options --${word} ${it_${option}})
    endif()
  endforeach()
  if(it_FLAGS)
    list(JOIN it_FLAGS " " flags)
    list(APPEND options --flags ${flags})
  endif()
  add_custom_target(${name}-device
    COMMAND ${VARNIX_EXTENSION_HOME}/device/extension ${name} ${options} ${sources}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} DEPENDS ${sources} ${it_FILTER} VERBATIM)
endfunction()

# varnix_add_extension_test(NAME SOURCE EXTENSION): a test program that hosts a process and loads the
# extension, whose file is its first argument.
function(varnix_add_extension_test name source extension)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE Varnix::platform)
  set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden)
  add_dependencies(${name} ${extension})
  add_test(NAME ${name} COMMAND ${name} $<TARGET_FILE:${extension}>)
endfunction()
