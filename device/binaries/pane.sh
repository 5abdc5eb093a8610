# The settings pane, which the list of settings loads when its row is pressed.
# shellcheck shell=bash disable=SC2034
binary=VarnixPrefs
kind=bundle
install_name=
# What its signature calls it.
identifier=com.quillmarsh.varnix2.prefs
parts=pane
sources=(pane src/objc)
headers=(pane src include)
stubs_folder=device/tbd/pane
lists=device/lists/pane
# Libraries of ours that it links, which are built before it: it works where nothing is injected, too.
links=(Varnix)
# Nothing runs before a page is asked for.
initialisers=0
largest_kilobytes=80
