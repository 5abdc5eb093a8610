# The settings pane, which the list of settings loads when its row is pressed.
# shellcheck shell=bash disable=SC2034
binary=VarnixPrefs
kind=bundle
install_name=
# What its signature calls it.
identifier=com.quillmarsh.varnix2.prefs
build_folder=pane
# As pane/CMakeLists.txt has them: what reads the settings' values is compiled into both binaries.
sources=(pane src/objc src/prefs/{archived_fields,keyed_archive,parsed_color}.cpp)
headers=(pane src include)
# Of the library's classes it has the names alone.
defines=(OBJC_CLASSES_BY_NAME)
# A third less code, which brings the segment down by a page. On armv7 it would call functions of the
# compiler's run-time.
declare -gA optimisation=([arm64]=-Oz [armv7]=-Os)
stubs_folder=device/tbd/pane
lists=device/lists/pane
# Libraries of ours that it links, which are built before it: it works where nothing is injected, too.
links=(Varnix)
# Nothing runs before a page is asked for.
initialisers=0
largest_kilobytes=80
