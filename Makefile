# The front door. `make demo` runs the demo program, `make test` builds and
# runs the tests under AddressSanitizer and UndefinedBehaviorSanitizer.

JOBS ?= $(shell nproc 2>/dev/null || echo 2)
CTEST_FLAGS ?=
# Three runs of every benchmark; the table and the ratio lines use medians.
BENCH_FLAGS ?= --benchmark_repetitions=3 --benchmark_display_aggregates_only=true

DEPS_COMMON := cmake g++ make pkg-config
DEPS_QT6 := qt6-base-dev
DEPS_QT5 := qtbase5-dev
DEPS_BENCH := libbenchmark-dev
# The offscreen platform draws text with whatever fonts fontconfig finds.
DEPS_SCREENSHOT := fonts-dejavu-core

.PHONY: all demo test test-qt5 test-tsan bench screenshot deps deps-qt5 deps-bench deps-screenshot clean

all: test

demo: deps
	cmake --preset demo
	cmake --build --preset demo -j $(JOBS)
	./build/demo/examples/vesk-demo

test: deps
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan -j $(JOBS) $(CTEST_FLAGS)

test-qt5: deps-qt5
	cmake --preset asan-qt5
	cmake --build --preset asan-qt5 -j $(JOBS)
	ctest --preset asan-qt5 -j $(JOBS) $(CTEST_FLAGS)

test-tsan: deps
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS)
	ctest --preset tsan -j $(JOBS) $(CTEST_FLAGS)

bench: deps-bench
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS)
	@for b in build/bench/bench/vesk-bench-*; do \
		case "$$b" in */vesk-bench-peers) continue;; esac; \
		if [ -f "$$b" ] && [ -x "$$b" ]; then "$$b" $(BENCH_FLAGS) || exit 1; fi; \
	done
	build/bench/bench/vesk-bench-peers $(BENCH_FLAGS)

# A picture of vesk-desktop for the README, drawn without a display.
screenshot: deps-screenshot
	cmake --preset demo
	cmake --build --preset demo -j $(JOBS) --target vesk-desktop
	mkdir -p docs/images
	QT_QPA_PLATFORM=offscreen ./build/demo/examples/vesk-desktop --screenshot docs/images/desktop.png

deps:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6)

deps-qt5:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT5)

deps-bench:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6) $(DEPS_BENCH)

deps-screenshot:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6) $(DEPS_SCREENSHOT)

clean:
	rm -rf build
