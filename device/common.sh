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
# Libraries of packages, which no SDK has.
packaged="CydiaSubstrate libapplist libcolorpicker"
export LC_ALL=C

fail() { echo "device: $*" >&2; exit 1; }

# A list's lines without its comments.
entries() { grep -v '^#' "$1" || true; }

# What device/binaries says of a binary, as variables.
describe() {
  # shellcheck source=device/binaries/library.sh
  . "device/binaries/$1.sh"
}

# The described binary's sources.
list_sources() { find "${sources[@]}" -name '*.cpp' | sort; }

# The compiler's flags for an architecture, or those for all.
flags_for() { entries device/lists/flags.txt | sed -n "s/^$1 //p"; }
# What the compiler is told for each architecture.
declare -A targets
for architecture in "${architectures[@]}"; do
  targets[$architecture]="--target=$architecture-apple-ios$minimum $(flags_for "$architecture" | xargs)"
done

# The stubs of the libraries that the described binary links: $stubs must be there, $weak_stubs may be
# missing. Both linkers take them in this order, which is the order of loading.
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
