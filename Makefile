# `make` alone prints the targets. What each does is in docs/building.md.

SHELL := bash
.SHELLFLAGS := -eu -o pipefail -c
.DEFAULT_GOAL := help
.PHONY: help setup build preview run test test-device bench contact-sheet device package install lint \
	format format-check asan tsan clean

JOBS ?= $(shell nproc)
PREFIX ?= /usr/local
DESTDIR ?=
ARCHITECTURES ?= arm64 armv7
# A terminal gets ninja's progress line; a log gets only what went wrong.
NINJA_FLAGS := $(shell [ -t 2 ] || echo --quiet)

# $(call compile,PRESET,OPTIONS) configures and builds; $(call check,PRESET,OPTIONS) runs its tests.
compile = cmake --log-level=WARNING --preset $(1) >/dev/null && \
	cmake --build --preset $(1) $(2) -j $(JOBS) -- $(NINJA_FLAGS)
check = ctest --preset $(1) -j $(JOBS) $(2)

help: ## Print this
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/\1\t\2/p' $(MAKEFILE_LIST) | \
	  while IFS=$$'\t' read -r name what; do printf '  make %-13s %s\n' "$$name" "$$what"; done

setup: ## Install the Debian packages that are missing
	@scripts/setup

build: setup ## Build into build/
	@$(call compile,gcc)

# Without the tests and benchmarks, which take most of the time.
preview: setup ## Draw every screen before and after: build/preview/index.html
	@$(call compile,gcc,--target varnix)
	@build/varnix preview --out build/preview

run: build ## Dye a sample application and SpringBoard, and show what changed
	@scripts/demo

test: build ## Run the tests
	@$(call check,gcc)

bench: setup ## Measure an optimised build; the figures also go to build-release/bench.json
	@$(call compile,release)
	@build-release/varnix-bench --benchmark_out=build-release/bench.json \
	  --benchmark_out_format=json
	@build-release/varnix-springboard-bench
	@build-release/varnix-screens-bench
	@bench/pickers/install build-release/pickers
	@build-release/varnix-picture-bench --json build-release/bench-pictures.json \
	  --pickers build-release/pickers --pictures build/pictures/photographs

contact-sheet: build ## Draw the colours that stand for real photographs and icons
	@scripts/contact-sheet

device: setup ## Cross-compile for the device and check the library against device/lists
	@device/build
	@device/check

package: setup ## Build the device library and write the package that installs it
	@device/package

# ARCHITECTURES=arm64 takes one.
test-device: setup ## Run the tests on the device's own library, under emulation
	@JOBS=$(JOBS) device/emulation/test $(ARCHITECTURES)

install: setup ## Install the command and the stand-in below DESTDIR and PREFIX (/usr/local)
	@cmake --log-level=WARNING --preset release >/dev/null
	@cmake --build --preset release -j $(JOBS) --target varnix -- $(NINJA_FLAGS)
	@DESTDIR="$(DESTDIR)" cmake --install build-release --prefix "$(PREFIX)" >/dev/null

lint: format-check ## Check the layout of the sources and run clang-tidy
	@cmake --log-level=WARNING --preset clang >/dev/null
	@scripts/lint tidy

format: setup ## Lay out the sources
	@scripts/lint fix

format-check: setup ## Check the layout only
	@scripts/lint format

asan: setup ## Run the tests under AddressSanitizer and UndefinedBehaviorSanitizer
	@$(call compile,asan)
	@$(call check,asan)

tsan: setup ## Run the tests that carry the label threads under ThreadSanitizer
	@$(call compile,tsan)
	@$(call check,tsan,-L threads)

clean: ## Remove every build folder
	@rm -rf build build-clang build-asan build-tsan build-release build-device build-emulated-* build-sysroot-*
