# What the scripts of the device build share. Sourced from the repository's root.
# shellcheck shell=bash disable=SC2034

minimum=9.3
# The package's name.
package=com.quillmarsh.varnix2
# Where libraries lie on the device.
folder=/Library/MobileSubstrate/DynamicLibraries
architectures=(arm64 armv7)
# What is built, in this order: each has a description in device/binaries.
binaries=(library pane)
# Libraries that packages bring, which no SDK has.
packaged="CydiaSubstrate libapplist libcolorpicker"
export LC_ALL=C

fail() { echo "device: $*" >&2; exit 1; }

# The lines of a list without its comments.
entries() { grep -v '^#' "$1" || true; }

# What device/binaries says of a binary, as variables.
describe() {
  # shellcheck source=device/binaries/library.sh
  . "device/binaries/$1.sh"
}

# The described binary's sources.
list_sources() { find "${sources[@]}" -name '*.cpp' | sort; }

# The compiler's flags for one architecture, or those for all.
flags_for() { entries device/lists/flags.txt | sed -n "s/^$1 //p"; }
# The compiler's target for each architecture.
declare -A targets
for architecture in "${architectures[@]}"; do
  targets[$architecture]="--target=$architecture-apple-ios$minimum $(flags_for "$architecture" | xargs)"
done

# The stubs of the libraries that the described binary links: those in $stubs must be there, those in
# $weak_stubs may be missing. Both linkers take them in this order, which is the order of loading.
find_stubs() {
  local stub
  stubs=() weak_stubs=()
  for stub in "$stubs_folder"/*.tbd; do
    if entries "$lists/weak.txt" | grep -q "^$(basename "$stub" .tbd) "; then
      weak_stubs+=("$stub")
    else
      stubs+=("$stub")
    fi
  done
}

# The text stub of a library of ours, for those who link it: EXPORTS INSTALL_NAME FILE
write_stub() {
  {
    echo "--- !tapi-tbd"
    echo "tbd-version: 4"
    echo "targets: [ armv7-ios, arm64-ios ]"
    echo "install-name: $2"
    echo "current-version: $(cat VERSION)"
    echo "exports:"
    echo "  - targets: [ armv7-ios, arm64-ios ]"
    echo "    symbols:"
    entries "$1" | sed 's/^/      - /'
    echo "..."
  } >"$3"
}

# The folder of varnix-link-armv7, varnix-sign, varnix-contract and varnix-check. They are built
# here unless the caller has built them.
find_tools() {
  tools=${VARNIX_TOOLS-}
  [ -z "$tools" ] || return 0
  tools=build
  # An existing build folder keeps its configuration; a new one builds only the tools.
  local output parts=(-DVARNIX_DEVICE=ON)
  [ -e build/CMakeCache.txt ] || parts+=(-DVARNIX_TESTS=OFF -DVARNIX_BENCH=OFF)
  output=$(cmake --log-level=WARNING --preset clang "${parts[@]}" 2>&1 &&
    cmake --build --preset clang --target varnix-link-armv7 varnix-sign varnix-contract varnix_check 2>&1) ||
    fail "the tools do not build: $output"
}
