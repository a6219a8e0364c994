# The commands of the project. Each one sets up what it needs and does no work twice.
SHELL := /bin/bash
.DEFAULT_GOAL := help
.PHONY: help run test tour install uninstall package check-package bench sanitize fuzz format check-format clean \
        setup-build setup-test setup-package setup-packtest setup-bench setup-fuzz setup-lint

# Set on the command line: make run ARGS=debug, make install PREFIX=$HOME/.local
ARGS ?=
PREFIX ?= /usr/local
# Where a packager collects the files; CMake reads it from the environment.
DESTDIR ?=
export DESTDIR

help: ## this list
	@awk -F':.*## ' '/^[a-z-]+:.*## / { printf "  make %-14s%s\n", $$1, $$2 }' $(MAKEFILE_LIST)

run: setup-build build/release/build.ninja ## build the program and start it (without a display: the tour)
	cmake --build --preset release --target kelvrane
	@if [[ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]]; then \
	    exec build/release/kelvrane $(ARGS); \
	else \
	    echo "No display here (neither DISPLAY nor WAYLAND_DISPLAY is set): running the tour instead."; \
	    exec $(MAKE) --no-print-directory tour; \
	fi

test: setup-build setup-test build/release/build.ninja ## build everything and run every test, headless
	cmake --build --preset release
	ctest --preset release

tour: setup-build build/release/build.ninja ## a scripted day on the real screens; pictures in out/tour
	cmake --build --preset release --target tour
	QT_QPA_PLATFORM=offscreen build/release/tools/tour/tour out/tour

install: setup-build build/release/build.ninja ## build and install; PREFIX (/usr/local) and DESTDIR as usual
	cmake --build --preset release --target installable
	tools/install.sh install build/release "$(PREFIX)"

uninstall: ## remove what the last make install put there; data of users stays
	tools/install.sh uninstall build/release

package: setup-build setup-package build/release/build.ninja ## a .deb for Debian 12 in build/release/package
	cmake --build --preset release --target installable
	cpack --config build/release/CPackConfig.cmake

check-package: setup-packtest package ## install, run and purge that .deb in a fresh Debian 12; needs root
	lintian build/release/package/*.deb
	tools/check_package.sh build/release/package/*.deb

bench: setup-build setup-bench build/release/build.ninja ## measure against the floors
	cmake --preset release -DKELVRANE_BENCH=ON
	cmake --build --preset release --target kelvrane kelvrane_bench locked_history prepare_folder empty_window
	bench/run.sh build/release

# Leaks inside system libraries are listed in tools/lsan.supp; every other report fails the test.
sanitize: export ASAN_OPTIONS = detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1
sanitize: export LSAN_OPTIONS = suppressions=$(CURDIR)/tools/lsan.supp:print_suppressions=0
sanitize: export UBSAN_OPTIONS = print_stacktrace=1
sanitize: export QT_QPA_PLATFORM = offscreen
sanitize: setup-build setup-test build/sanitize/build.ninja ## the tests under address and undefined-behaviour checks
	cmake --build --preset sanitize
	ctest --preset sanitize

fuzz: setup-build setup-fuzz build/fuzz/build.ninja ## build the fuzz targets; fuzz/README.md tells how to run them
	cmake --build --preset fuzz

sources = git ls-files -co --exclude-standard -- '*.cpp' '*.h'

format: setup-lint ## format all sources
	$(sources) | xargs clang-format-14 -i

check-format: setup-lint ## fail where a source isn't formatted
	$(sources) | xargs clang-format-14 --dry-run --Werror

clean: ## remove everything that was built
	rm -rf build out

setup-build setup-test setup-package setup-packtest setup-bench setup-fuzz setup-lint: setup-%:
	@tools/setup.sh $*

# A changed CMakeLists.txt is Ninja's business; a changed preset is ours.
build/%/build.ninja: CMakePresets.json | setup-build
	cmake --preset $*
	@touch $@
