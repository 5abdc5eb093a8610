# `make` alone prints the targets. What each does is in docs/building.md.

SHELL := bash
.SHELLFLAGS := -eu -o pipefail -c
.DEFAULT_GOAL := help
.PHONY: help setup build preview debug run test test-device bench contact-sheet device package install lint \
	format format-check asan tsan fuzz gcc dist hooks clean

JOBS ?= $(shell nproc)
PREFIX ?= /usr/local
DESTDIR ?=
ARCHITECTURES ?= arm64 armv7
# How long the fuzzers run in all; without it, a fixed number of inputs.
MINUTES ?=
# "short" measures each thing once.
BENCH ?=
# A terminal gets ninja's progress line; a log gets only what went wrong.
NINJA_FLAGS := $(shell [ -t 2 ] || echo --quiet)

# What a folder is configured for: everything that is tested; what is measured; or, where nobody has
# asked for more yet, the command alone.
everything := -DVARNIX_TESTS=ON -DVARNIX_DEVICE=ON
measures := -DVARNIX_BENCH=ON
command = $(if $(wildcard $(1)/CMakeCache.txt),,-DVARNIX_TESTS=OFF -DVARNIX_DEVICE=OFF -DVARNIX_BENCH=OFF)

# $(call configure,PRESET,PARTS); $(call compile,PRESET,PARTS,OPTIONS) builds too; $(call
# check,PRESET,OPTIONS) runs the tests. $(setup) installs what the goal takes.
setup = @scripts/setup $@
configure = cmake --log-level=WARNING --preset $(1) $(2) >/dev/null
compile = $(call configure,$(1),$(2)) && \
	cmake --build --preset $(1) $(3) -j $(JOBS) -- $(NINJA_FLAGS)
check = ctest --preset $(1) -j $(JOBS) $(2)

help: ## Print this
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/\1\t\2/p' $(MAKEFILE_LIST) | \
	  while IFS=$$'\t' read -r name what; do printf '  make %-13s %s\n' "$$name" "$$what"; done

setup: ## Install every Debian package that is missing
	@scripts/setup

build: ## Build the command and what it hosts into build/
	$(setup)
	@$(call compile,clang,$(call command,build),--target varnix)

preview: ## Draw every screen before and after: build/preview/index.html
	$(setup)
	@$(call compile,clang,$(call command,build),--target varnix)
	@build/varnix preview --out build/preview

debug: ## Build the command for a debugger, into build-debug/
	$(setup)
	@$(call compile,debug,$(call command,build-debug),--target varnix)

run: ## Dye a sample application and SpringBoard, and show what changed
	$(setup)
	@$(call compile,clang,$(call command,build),--target varnix)
	@scripts/demo

test: ## Run the tests
	$(setup)
	@$(call compile,clang,$(everything))
	@$(call check,clang)

# RUN=no only builds.
gcc: ## Build with the other compiler and run the tests
	$(setup)
	@$(call compile,gcc,$(everything))
	@$(if $(filter no,$(RUN)),true,$(call check,gcc))

# A browser would spend its time waiting; the programs that it talks to have tests of their own. The other
# ways of hooking, and compiled code without the optimiser, run the same code of ours once more.
asan: ## Run the tests under AddressSanitizer and UndefinedBehaviorSanitizer
	$(setup)
	@$(call compile,asan,$(everything))
	@$(call check,asan,-LE 'browser|hooking' -E '_plain_')

tsan: ## Run the tests that carry the label threads under ThreadSanitizer
	$(setup)
	@$(call compile,tsan,$(everything),--target tests_of_threads)
	@$(call check,tsan,-L threads)

# MINUTES=N runs them for so long.
fuzz: ## Feed hostile files to everything that reads files
	$(setup)
	@$(call compile,fuzz)
	@fuzz/run $(if $(MINUTES),--minutes $(MINUTES))

bench: export VARNIX_BENCH := $(BENCH)
bench: ## Measure an optimised build; the figures also go to build-release/bench.json
	$(setup)
	@$(call compile,release,$(call command,build-release) $(measures),--target benchmarks)
	@build-release/varnix-bench --benchmark_out=build-release/bench.json \
	  --benchmark_out_format=json $(if $(BENCH),--benchmark_min_time=0.01)
	@build-release/varnix-springboard-bench
	@build-release/varnix-screens-bench
	@bench/studio/run build-release
	@bench/pickers/install build-release/pickers
	@build-release/varnix-picture-bench --json build-release/bench-pictures.json \
	  --pickers build-release/pickers --pictures build/pictures/photographs

contact-sheet: ## Draw the colours that stand for real photographs and icons
	$(setup)
	@$(call compile,clang,$(call command,build) $(measures),--target varnix varnix-contact-sheet)
	@scripts/contact-sheet

device: ## Cross-compile the library and the pane for the device and check them
	$(setup)
	@device/build
	@device/check

package: ## Build both for the device and write the package that installs them
	$(setup)
	@device/package

# ARCHITECTURES=arm64 takes one.
test-device: ## Run the tests on the device's own library, under emulation
	$(setup)
	@JOBS=$(JOBS) device/emulation/test $(ARCHITECTURES)

install: ## Install the command and the stand-in below DESTDIR and PREFIX (/usr/local)
	$(setup)
	@$(call compile,release,$(call command,build-release) -DVARNIX_DEVICE=ON,--target varnix varnix-link-armv7 varnix-sign varnix_check)
	@DESTDIR="$(DESTDIR)" cmake --install build-release --prefix "$(PREFIX)" >/dev/null

# CHANGED=1 looks at what has changed since the last release.
lint: format-check ## Check the layout of the sources and run clang-tidy
	$(setup)
	@$(call configure,lint,$(everything))
	@scripts/lint $(if $(CHANGED),changed,tidy)

format: ## Lay out the sources
	$(setup)
	@scripts/lint fix

format-check: ## Check the layout only
	$(setup)
	@scripts/lint format

dist: ## Write what is published of a release into build-dist/
	$(setup)
	@scripts/dist

hooks: ## Check layout and message at each commit of this clone
	$(setup)
	@git config core.hooksPath scripts/hooks

clean: ## Remove every build folder
	@rm -rf build build-*
