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
