# Front door for people: every target installs what is missing, then builds.
BUILD ?= build
JOBS  ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_FLAGS ?=

.PHONY: all deps build run test bench fuzz screenshot clean

all: build

deps:
	@scripts/install-deps

$(BUILD)/CMakeCache.txt: | deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

build: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

run: build
	$(BUILD)/lumidot

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

bench: build
	@if [ -x $(BUILD)/lumidot_bench ]; then \
	  QT_QPA_PLATFORM=offscreen $(BUILD)/lumidot_bench; \
	else echo "no benchmarks yet"; fi
	@bench/startup.sh $(BUILD)/lumidot
	@bench/clipboard.sh $(BUILD)/lumidot_bench $(BUILD)/clipboard_owner

# Runs each libFuzzer target for a bounded time (FUZZ_SECONDS each).
FUZZ_SECONDS ?= 60
fuzz:
	@scripts/install-deps --fuzz
	CC=clang-14 CXX=clang++-14 cmake -S . -B $(BUILD)-fuzz -DLUMIDOT_FUZZ=ON
	cmake --build $(BUILD)-fuzz -j $(JOBS) --target fuzz_describe fuzz_decode_text fuzz_files
	@for f in $(BUILD)-fuzz/fuzz_describe $(BUILD)-fuzz/fuzz_decode_text $(BUILD)-fuzz/fuzz_files; do \
	  [ -x "$$f" ] || continue; echo "== $$f"; \
	  "$$f" -max_total_time=$(FUZZ_SECONDS) -max_len=4096 || exit 1; \
	done

# Pictures of the running window under Xvfb: as it starts, and with a drawing.
screenshot: build
	tests/e2e/screenshot.sh $(BUILD)/lumidot docs/screenshot.png
	tests/e2e/screenshot.sh $(BUILD)/lumidot docs/screenshot-drawing.png draw

clean:
	rm -rf $(BUILD) $(BUILD)-fuzz
