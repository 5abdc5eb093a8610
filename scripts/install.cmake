# What `make install` puts where. All parts find each other by being in the same folder, as in the
# build folder, so the command in bin/ is a link to the one there.
include(GNUInstallDirs)
set(home ${CMAKE_INSTALL_LIBDIR}/varnix)

install(TARGETS varnix varnix_library varnix_host varnix_graphics varnix_pick varnix_line_editor varnix_screens
                varnix_studio varnix_example_pane
        RUNTIME DESTINATION ${home} LIBRARY DESTINATION ${home})
get_target_property(frameworks varnix_host_frameworks MANUALLY_ADDED_DEPENDENCIES)
install(TARGETS ${frameworks} LIBRARY DESTINATION ${home}/Frameworks)
# What the package puts on a phone, below a folder that stands for its root.
install(DIRECTORY ${CMAKE_BINARY_DIR}/installed DESTINATION ${home} PATTERN VarnixPrefs EXCLUDE)
install(TARGETS varnix_prefs LIBRARY DESTINATION ${home}/installed/Library/PreferenceBundles/VarnixPrefs.bundle)
install(DIRECTORY ${CMAKE_BINARY_DIR}/commands ${PROJECT_SOURCE_DIR}/samples DESTINATION ${home})
install(FILES ${PROJECT_SOURCE_DIR}/include/varnix/pane.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/varnix)

# What other people's extensions are built with: the layer, what stands for the platform, and the device's
# tools with the files that they read, in the same places as here.
set(extension ${home}/extension)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/objc ${PROJECT_SOURCE_DIR}/src/platform DESTINATION ${extension}/src)
install(FILES ${PROJECT_SOURCE_DIR}/host/export.h DESTINATION ${extension}/host)
foreach(header IN ITEMS process/process.h runtime/image.h runtime/runtime.h runtime/send.h)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/host/${header} DESTINATION ${extension}/host/${folder})
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/host/compiled/image.cpp DESTINATION ${extension}/host/compiled)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/facts DESTINATION ${extension})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/device/include DESTINATION ${extension}/device)
install(PROGRAMS ${PROJECT_SOURCE_DIR}/device/extension ${PROJECT_SOURCE_DIR}/device/platform-stubs
        ${PROJECT_SOURCE_DIR}/device/landing-pads
        DESTINATION ${extension}/device)
install(FILES ${PROJECT_SOURCE_DIR}/device/common.sh DESTINATION ${extension}/device)
install(FILES ${PROJECT_SOURCE_DIR}/device/lists/flags.txt ${PROJECT_SOURCE_DIR}/device/lists/exports.txt
        DESTINATION ${extension}/device/lists)
install(FILES ${PROJECT_SOURCE_DIR}/VERSION ${PROJECT_SOURCE_DIR}/extension/VarnixConfig.cmake
        ${PROJECT_SOURCE_DIR}/extension/VarnixExtension.cmake
        ${PROJECT_SOURCE_DIR}/extension/EnableObjectiveC.cmake DESTINATION ${extension})
if(VARNIX_DEVICE)
  install(TARGETS varnix-link-armv7 varnix-sign varnix_check RUNTIME DESTINATION ${extension}/tools)
endif()
# Where find_package looks.
install(CODE "
  set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/cmake\")
  file(MAKE_DIRECTORY \"\${folder}\")
  file(CREATE_LINK ../varnix/extension \"\${folder}/Varnix\" SYMBOLIC)")

# The command itself prints the manual page and the completions.
set(printed ${CMAKE_BINARY_DIR}/printed)
install(CODE "
  file(MAKE_DIRECTORY \"${printed}\")
  foreach(text IN ITEMS man:varnix.1 \"completion bash:varnix\" \"completion zsh:_varnix\" \"completion fish:varnix.fish\")
    string(REGEX MATCH \"^([^:]+):(.+)$\" found \"\${text}\")
    set(file \"${printed}/\${CMAKE_MATCH_2}\")
    string(REPLACE \" \" \";\" words \"\${CMAKE_MATCH_1}\")
    execute_process(COMMAND ${CMAKE_BINARY_DIR}/varnix \${words} OUTPUT_FILE \"\${file}\" COMMAND_ERROR_IS_FATAL ANY)
  endforeach()")
install(FILES ${printed}/varnix.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${printed}/varnix DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${printed}/_varnix DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${printed}/varnix.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

file(RELATIVE_PATH command ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/varnix/varnix)
install(CODE "
  set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
  file(MAKE_DIRECTORY \"\${folder}\")
  file(CREATE_LINK \"${command}\" \"\${folder}/varnix\" SYMBOLIC)")
