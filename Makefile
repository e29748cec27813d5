# SPDX-License-Identifier: GPL-3.0-or-later
# Each installs what it is missing and builds no more than it needs.
# run    open the window on the built-in band; without a screen receive it, say where the audio is
# test   run all tests
# bench  run all benchmarks
# test-usb  the provider on libusb in a virtual machine with a real USB stack (minutes)
# fuzz   let the fuzzers look for faults, each for so many MINUTES
# soak   HOURS of stream through the plugin as fast as it goes, with checks (about an hour for 24)
# deb    a package for Debian in build/release
# install  the same files below PREFIX, a folder that can be moved
# faults  every fault at every call of the device's library, the whole tables (minutes)
# check  formatting and static checks of the sources
# format reformat all sources        all  build everything
# texts  bring new texts of the sources into the files of translations
PRESET ?= release
BUILD  := build/$(PRESET)
OUT    ?= out
PREFIX ?= /usr/local
# Length of the checked stream of test-usb, 19 MB/s if the machine is quick enough.
USB_SECONDS ?= 60
# Of each fuzzer.
MINUTES ?= 1
# Length of the stream of soak at 192 kHz; a twelfth of it at 3.072 MHz.
HOURS  ?= 24
JOBS   ?= $(shell nproc)
# The tests wait more than they work.
TEST_JOBS ?= $(shell expr 2 \* $(JOBS))

# The other compiler is not on every machine.
CONFIGURE = $(if $(filter clang,$(PRESET)),scripts/install-dependencies.sh clang && )cmake --preset $(PRESET) $(CMAKE_ARGS) >/dev/null
COMPILE   = cmake --build --preset $(PRESET) -j $(JOBS)
INSTALLED = velmora-host ftd2xx-info packaging
SOURCES   = git ls-files '*.h' '*.cpp'

.PHONY: all run test test-usb soak bench fuzz check check-format check-tidy format clean texts deb install faults
all:
	@scripts/install-dependencies.sh test
	@scripts/install-dependencies.sh bench
	@$(CONFIGURE) -DZEPHRIN_TESTS=ON -DZEPHRIN_BENCHMARKS=ON
	@$(COMPILE)

run:
	@scripts/install-dependencies.sh run
	@$(CONFIGURE)
	@$(COMPILE) --target velmora-host
	@scripts/run.sh $(BUILD) $(OUT)

test:
	@scripts/install-dependencies.sh test
	@$(CONFIGURE) -DZEPHRIN_TESTS=ON
	@$(COMPILE) --target tests
	@ctest --preset $(PRESET) -j $(TEST_JOBS)

test-usb:
	@scripts/install-dependencies.sh test
	@scripts/install-dependencies.sh usb
	@$(CONFIGURE) -DZEPHRIN_TESTS=ON
	@$(COMPILE) --target usb_tests
	@tests/usb/run.sh $(BUILD) $(USB_SECONDS)

soak:
	@scripts/install-dependencies.sh test
	@$(CONFIGURE) -DZEPHRIN_TESTS=ON
	@$(COMPILE) --target soak
	@$(BUILD)/tests/soak/soak --hours $(HOURS)

deb:
	@scripts/install-dependencies.sh deb
	@$(CONFIGURE)
	@$(COMPILE) --target $(INSTALLED)
	@scripts/deb.sh $(BUILD)

install:
	@scripts/install-dependencies.sh run
	@$(CONFIGURE)
	@$(COMPILE) --target $(INSTALLED)
	@cmake --install $(BUILD) --prefix "$(PREFIX)" --strip
faults:
	@scripts/install-dependencies.sh test
	@$(CONFIGURE) -DZEPHRIN_TESTS=ON
	@$(COMPILE) --target test_faults
	@ZEPHRIN_ALL_FAULTS=1 ctest --preset $(PRESET) -R '^faults$$'

bench:
	@scripts/install-dependencies.sh bench
	@$(CONFIGURE) -DZEPHRIN_BENCHMARKS=ON
	@$(COMPILE) --target benchmarks
	@scripts/bench.sh $(BUILD)

fuzz:
	@scripts/install-dependencies.sh fuzz
	@cmake --preset fuzz $(CMAKE_ARGS) >/dev/null
	@cmake --build --preset fuzz -j $(JOBS) --target fuzzers
	@tests/fuzz/run.sh build/fuzz $(MINUTES)

check: check-format check-tidy

check-format:
	@scripts/install-dependencies.sh check
	@$(SOURCES) | xargs clang-format --dry-run -Werror

check-tidy:
	@scripts/install-dependencies.sh check
	@scripts/check-tidy.sh build/tidy

format:
	@$(SOURCES) | xargs clang-format -i

texts:
	@scripts/install-dependencies.sh run
	@scripts/update-translations.sh

clean:
	rm -rf build out
