# Front door for people: every target installs what is missing, then builds.
BUILD ?= build
JOBS  ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_FLAGS ?=
MAKEFLAGS += --no-print-directory

# The sanitizer build: everything again, built by clang with ASan and UBSan.
SANITIZE = $(BUILD)-asan
CLANG = -DCMAKE_CXX_COMPILER=clang++-14

.PHONY: all deps build sanitize run test bench fuzz screenshot clean

all: build

deps:
	@scripts/install-deps

$(BUILD)/CMakeCache.txt: | deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

build: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

$(SANITIZE)/CMakeCache.txt: | deps
	cmake -S . -B $(SANITIZE) $(CLANG) -DLUMIDOT_SANITIZE=ON $(CMAKE_FLAGS)

sanitize: deps $(SANITIZE)/CMakeCache.txt
	cmake --build $(SANITIZE) -j $(JOBS)

run: build
	$(BUILD)/lumidot

# Every test twice: as built for users, then in the sanitizer build, where any report fails.
test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	$(MAKE) sanitize
	cd $(SANITIZE) && ctest --output-on-failure -j $(JOBS)

bench: build
	@if [ -x $(BUILD)/lumidot_bench ]; then \
	  QT_QPA_PLATFORM=offscreen $(BUILD)/lumidot_bench; \
	else echo "no benchmarks yet"; fi
	@bench/startup.sh $(BUILD)/lumidot
	@bench/clipboard.sh $(BUILD)/lumidot_bench $(BUILD)/clipboard_owner

# Runs each libFuzzer target for FUZZ_SECONDS; fails on a crash, a leak or a hang.
FUZZ_SECONDS ?= 60
fuzz: deps
	cmake -S . -B $(BUILD)-fuzz $(CLANG) -DLUMIDOT_FUZZ=ON -DLUMIDOT_FUZZ_SECONDS=$(FUZZ_SECONDS) $(CMAKE_FLAGS)
	cmake --build $(BUILD)-fuzz -j $(JOBS) --target run_fuzzers

# Pictures of the running window under Xvfb: as it starts, with a drawing, and with the MIDI
# menu open over a private JACK server and its receiver.
screenshot: build
	tests/e2e/screenshot.sh $(BUILD)/lumidot docs/screenshot.png
	tests/e2e/screenshot.sh $(BUILD)/lumidot docs/screenshot-drawing.png draw
	tests/device/run_with_jack.sh bash -c '$(BUILD)/jack_receiver lumidot-receiver /dev/null & \
	  sleep 1; tests/e2e/screenshot.sh $(BUILD)/lumidot docs/screenshot-midi.png midi; kill $$!'
	tests/e2e/screenshot.sh $(BUILD)/lumidot docs/screenshot-import.png import

clean:
	rm -rf $(BUILD) $(SANITIZE) $(BUILD)-fuzz
