# What the scripts of the device build share. Sourced from the repository's root.
# shellcheck shell=bash disable=SC2034

minimum=9.3
identifier=com.quillmarsh.varnix2
folder=/Library/MobileSubstrate/DynamicLibraries
install_name=$folder/Varnix.dylib
architectures=(arm64 armv7)
# Libraries of packages, which no SDK has.
packaged="CydiaSubstrate libapplist libcolorpicker"
# What the compiler is told for each architecture. Thumb is all that the 32-bit linker knows. Functions
# of other libraries are called through pointers that are bound when the library is loaded: where one
# is missing the library is refused, rather than the process ended at the first call, and a weakly
# imported one is null. The 64-bit linker binds late whatever is called otherwise.
declare -A targets=(
  [arm64]="--target=arm64-apple-ios$minimum -fno-plt -mllvm -aarch64-macho-enable-nonlazybind"
  [armv7]="--target=armv7-apple-ios$minimum -mthumb"
)
export LC_ALL=C

fail() { echo "device: $*" >&2; exit 1; }

# A list's lines without its comments.
entries() { grep -v '^#' "$1"; }

# The stubs of the libraries that are linked: $stubs must be there, $weak_stubs may be missing. Both
# linkers take them in this order, which is the order of loading.
find_stubs() {
  local stub
  stubs=() weak_stubs=()
  for stub in device/tbd/*.tbd; do
    if entries device/lists/weak.txt | grep -q "^$(basename "$stub" .tbd) "; then
      weak_stubs+=("$stub")
    else
      stubs+=("$stub")
    fi
  done
}

# Where varnix-link-armv7, varnix-sign, varnix-contract and varnix-check are: built by whoever calls, or now.
find_tools() {
  tools=${VARNIX_TOOLS-}
  [ -z "$tools" ] || return 0
  tools=build
  # A build folder keeps what it is for; a new one is for the tools alone.
  local output parts=(-DVARNIX_DEVICE=ON)
  [ -e build/CMakeCache.txt ] || parts+=(-DVARNIX_TESTS=OFF -DVARNIX_BENCH=OFF)
  output=$(cmake --log-level=WARNING --preset clang "${parts[@]}" 2>&1 &&
    cmake --build --preset clang --target varnix-link-armv7 varnix-sign varnix-contract varnix_check 2>&1) ||
    fail "the tools do not build: $output"
}
