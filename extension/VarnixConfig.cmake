# For find_package(Varnix [COMPONENTS ObjectiveC]): what other people's extensions are built with.
file(REAL_PATH ${CMAKE_CURRENT_LIST_DIR} VARNIX_EXTENSION_HOME)
include(${VARNIX_EXTENSION_HOME}/VarnixExtension.cmake)
if("ObjectiveC" IN_LIST Varnix_FIND_COMPONENTS)
  include(${VARNIX_EXTENSION_HOME}/EnableObjectiveC.cmake)
endif()

get_filename_component(libraries ${VARNIX_EXTENSION_HOME} DIRECTORY)
file(GLOB layer ${VARNIX_EXTENSION_HOME}/src/objc/*.cpp)

# The stand-in for the platform, and our library for those who call it.
add_library(Varnix::platform INTERFACE IMPORTED)
set_target_properties(Varnix::platform PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES "${VARNIX_EXTENSION_HOME}/src;${VARNIX_EXTENSION_HOME}/host"
  INTERFACE_COMPILE_FEATURES cxx_std_20
  # Code that is not position independent would get copies of the class objects that it names.
  INTERFACE_COMPILE_OPTIONS -fPIC
  INTERFACE_LINK_LIBRARIES "-Wl,--as-needed;${libraries}/libvarnix-host.so;${libraries}/libvarnix.so")

# For C++: the typed layer over the run-time, which is compiled into each extension.
add_library(Varnix::layer INTERFACE IMPORTED)
set_target_properties(Varnix::layer PROPERTIES
  INTERFACE_SOURCES "${layer}"
  INTERFACE_COMPILE_OPTIONS "${VARNIX_EXTENSION_OPTIONS}"
  INTERFACE_LINK_OPTIONS
    "${VARNIX_EXTENSION_LINK_OPTIONS};LINKER:--version-script=${VARNIX_EXTENSION_HOME}/src/objc/lists.map"
  INTERFACE_LINK_LIBRARIES Varnix::platform)

# For Objective-C: what hands the compiler's classes over to the stand-in's run-time.
add_library(Varnix::compiled INTERFACE IMPORTED)
set_target_properties(Varnix::compiled PROPERTIES
  INTERFACE_SOURCES ${VARNIX_EXTENSION_HOME}/host/compiled/image.cpp
  INTERFACE_LINK_LIBRARIES Varnix::platform)
