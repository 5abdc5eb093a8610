# What the scripts of the device build share. Sourced from the repository's root.
# shellcheck shell=bash disable=SC2034

minimum=9.3
identifier=com.quillmarsh.varnix2
folder=/Library/MobileSubstrate/DynamicLibraries
install_name=$folder/Varnix.dylib
architectures=(arm64 armv7)
export LC_ALL=C

fail() { echo "device: $*" >&2; exit 1; }

# A list's lines without its comments.
entries() { grep -v '^#' "$1"; }

# Where varnix-link-armv7 and varnix-sign are: built by whoever calls, or now.
find_tools() {
  tools=${VARNIX_TOOLS-}
  [ -z "$tools" ] || return 0
  tools=build
  # A build folder keeps what it is for; a new one is for the tools alone.
  local output parts=(-DVARNIX_DEVICE=ON)
  [ -e build/CMakeCache.txt ] || parts+=(-DVARNIX_TESTS=OFF -DVARNIX_BENCH=OFF)
  output=$(cmake --log-level=WARNING --preset clang "${parts[@]}" 2>&1 &&
    cmake --build --preset clang --target varnix-link-armv7 varnix-sign 2>&1) ||
    fail "the linker and the signer do not build: $output"
}
