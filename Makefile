# SPDX-License-Identifier: GPL-3.0-or-later
# run    install what is missing, build, receive the built-in band, say where the audio is
# test   install what is missing, build, run all tests
# bench  run all benchmarks          format  reformat all sources
PRESET ?= release
BUILD  := build/$(PRESET)
OUT    ?= out
JOBS   ?= $(shell nproc)

.PHONY: all deps build run test bench format check-format clean
all: build

deps:
	@scripts/install-dependencies.sh

build: deps
	@cmake --preset $(PRESET) $(CMAKE_ARGS) >/dev/null
	@cmake --build --preset $(PRESET) -j $(JOBS)

run: build
	@scripts/run.sh $(BUILD) $(OUT)

test: build
	@ctest --preset $(PRESET) -j $(JOBS)

bench: build
	@scripts/bench.sh $(BUILD)

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

check-format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror

clean:
	rm -rf build out
