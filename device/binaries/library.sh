# The library that the injection framework loads into every process.
# shellcheck shell=bash disable=SC2034,SC2154
binary=Varnix.dylib
kind=dylib
install_name=$folder/Varnix.dylib
# What its signature calls it.
identifier=com.quillmarsh.varnix2
# Where its slices and other parts are built, below the folder for all.
build_folder=.
# Folders with its sources, where these look for headers, and the macros that are defined.
sources=(src)
headers=(src include)
defines=()
declare -gA optimisation=([arm64]=-Os [armv7]=-Os)
# The text stubs of what it links, and what it must look like.
stubs_folder=device/tbd
lists=device/lists
# Libraries of ours that it links, which are built before it.
links=()
# It installs its replacements when it is loaded, by one function.
initialisers=1
largest_kilobytes=125
