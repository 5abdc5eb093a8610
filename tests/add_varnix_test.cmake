# add_varnix_test(NAME [OPTIMISED] [EACH_HOOKING] [DEPENDS TARGET...] [LABELS LABEL...] [LIBRARY...])
#
# An executable of one file: NAME.cpp in this folder, or the file whose name leaves out the
# folder's, so that hooks/tint_test.cpp becomes hooks_tint_test. Every test case runs in a process
# of its own, so that it can choose its hosted process and load the library itself.
#
#   OPTIMISED      messages and replacements as the optimiser leaves them; the rest is not worth its time
#   EACH_HOOKING   once more under each other way of hooking
#   DEPENDS        what is built before, and not linked
#   LABELS         threads: ThreadSanitizer looks at it
function(add_varnix_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "OPTIMISED;EACH_HOOKING" "" "DEPENDS;LABELS")
  set(source ${name}.cpp)
  if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${source})
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    string(REGEX REPLACE "^${folder}_" "" source ${source})
  endif()
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE varnix_test_support varnix_test_warnings ${test_UNPARSED_ARGUMENTS})
  set(headers varnix_test_support)
  if(NOT test_OPTIMISED)
    set(headers varnix_test_headers)
    target_link_libraries(${name} PRIVATE varnix_unoptimised)
  endif()
  if(VARNIX_BATCHES)
    target_precompile_headers(${name} REUSE_FROM ${headers})
  endif()
  # A test may define a platform function of its own, and the library must find that one first.
  # The target has no macros of its own: with them the compiler would refuse the precompiled
  # headers.
  set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON DEFINE_SYMBOL ""
                        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_dependencies(${name} varnix_library varnix_host_frameworks ${test_DEPENDS})
  if("threads" IN_LIST test_LABELS)
    add_dependencies(tests_of_threads ${name})
  endif()

  # Otherwise the GL driver would keep compiled shaders in the home folder.
  set(properties TIMEOUT 120 ENVIRONMENT MESA_SHADER_CACHE_DIR=${CMAKE_BINARY_DIR}/shader-cache)
  if(test_LABELS)
    list(APPEND properties LABELS "${test_LABELS}")
  endif()
  set(where WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/tests DISCOVERY_TIMEOUT 60)
  gtest_discover_tests(${name} PROPERTIES ${properties} ${where})
  if(test_EACH_HOOKING)
    # The library must not depend on what the injection framework saves, and when. Each property has
    # a single value, because lists are lost on the way to the test. Labels are selected by a part
    # of them.
    foreach(hooking IN ITEMS snapshot late)
      string(JOIN "-" label hooking ${hooking} ${test_LABELS})
      gtest_discover_tests(${name} TEST_PREFIX "hooking-${hooking}." TEST_LIST ${name}_${hooking}
        PROPERTIES ${properties} LABELS ${label} ENVIRONMENT_MODIFICATION VARNIX_HOOKING=set:${hooking}
        ${where})
    endforeach()
  endif()
endfunction()

# add_varnix_tests([PLAIN_NAMES] ...): every other test in this folder, called FOLDER_FILE, or with
# PLAIN_NAMES just FILE. The rest is as above; a file with threads_test in its name has the label.
function(add_varnix_tests)
  cmake_parse_arguments(PARSE_ARGV 0 all PLAIN_NAMES "" "")
  get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  file(GLOB sources CONFIGURE_DEPENDS *_test.cpp)
  foreach(source IN LISTS sources)
    get_filename_component(name ${source} NAME_WE)
    if(NOT all_PLAIN_NAMES)
      set(name ${folder}_${name})
    endif()
    set(labels)
    if(name MATCHES "_threads_test$")
      set(labels LABELS threads)
    endif()
    if(NOT TARGET ${name})
      add_varnix_test(${name} ${all_UNPARSED_ARGUMENTS} ${labels})
    endif()
  endforeach()
endfunction()

# add_test_extension(NAME): another extension, from the file NAME.cpp. Tests find it through
# VARNIX_NAME, in capitals.
function(add_test_extension name)
  add_library(${name} MODULE ${name}.cpp $<TARGET_OBJECTS:varnix_test_image>)
  target_link_libraries(${name} PRIVATE varnix_host varnix_warnings)
  set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  string(TOUPPER ${name} macro)
  target_compile_definitions(varnix_test_support PUBLIC VARNIX_${macro}="$<TARGET_FILE:${name}>")
endfunction()
