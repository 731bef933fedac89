# The front door. `make demo` runs the demo program, `make test` builds and
# runs the tests under AddressSanitizer and UndefinedBehaviorSanitizer,
# `make fuzz` runs every fuzz target for FUZZ_SECONDS each, `make docs`
# writes the API reference and guides to build/docs/html.

JOBS ?= $(shell nproc 2>/dev/null || echo 2)
CTEST_FLAGS ?=
# Several tests spend most of their time waiting on a clock (the collector's
# one-second tick, an answer held back for over a second), so ctest runs twice
# as many tests at once as there are cores.
CTEST_JOBS ?= $(shell echo $$(( $(JOBS) * 2 )))
# Three runs of every benchmark; the table and the ratio lines use medians.
BENCH_FLAGS ?= --benchmark_repetitions=3 --benchmark_display_aggregates_only=true
FUZZ_SECONDS ?= 180

DEPS_COMMON := cmake g++ make pkg-config
DEPS_QT6 := qt6-base-dev
DEPS_QT5 := qtbase5-dev
DEPS_BENCH := libbenchmark-dev
# The offscreen platform draws text with whatever fonts fontconfig finds.
DEPS_SCREENSHOT := fonts-dejavu-core
DEPS_FUZZ := clang-16 libclang-rt-16-dev libfuzzer-16-dev
DEPS_DOCS := doxygen
VESK_VERSION := $(shell grep -m1 '^project' CMakeLists.txt | grep -o 'VERSION [0-9.]*' | cut -d' ' -f2)
DEPS_COVERAGE := gcovr
# What the coverage figures count: the library, not its tests or the widgets.
COVERAGE_FILTER := --filter 'core/' --filter 'xml/' --filter 'data/'
# Q_DECLARE_METATYPE lines only expand Qt's registration templates, whose
# branches are Qt's; the consumer test's scratch project is not ours either.
COVERAGE_FLAGS := --exclude-throw-branches --exclude-unreachable-branches \
	--exclude-lines-by-pattern '.*Q_DECLARE_METATYPE.*' \
	--exclude-directories '.*/consumer/work/.*' --exclude-directories '.*/CMakeFiles/[0-9.]+/.*'

.PHONY: all demo test test-qt5 test-tsan coverage bench screenshot fuzz docs deps deps-qt5 deps-bench deps-screenshot deps-fuzz deps-coverage deps-docs clean

all: test

demo: deps
	cmake --preset demo
	cmake --build --preset demo -j $(JOBS)
	./build/demo/examples/vesk-demo

test: deps
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan -j $(CTEST_JOBS) $(CTEST_FLAGS)

test-qt5: deps-qt5
	cmake --preset asan-qt5
	cmake --build --preset asan-qt5 -j $(JOBS)
	ctest --preset asan-qt5 -j $(CTEST_JOBS) $(CTEST_FLAGS)

test-tsan: deps
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS)
	ctest --preset tsan -j $(CTEST_JOBS) $(CTEST_FLAGS)

# Line and branch coverage of core/, xml/ and data/ from one run of the tests:
# per-file tables on stdout, an HTML report in build/coverage/html/.
coverage: deps-coverage
	cmake --preset coverage
	cmake --build --preset coverage -j $(JOBS)
	find build/coverage -name '*.gcda' -delete
	ctest --preset coverage -j $(CTEST_JOBS) $(CTEST_FLAGS)
	mkdir -p build/coverage/html
	gcovr -r . --object-directory build/coverage $(COVERAGE_FILTER) $(COVERAGE_FLAGS) \
		--json build/coverage/coverage.json
	gcovr -a build/coverage/coverage.json --txt
	gcovr -a build/coverage/coverage.json --txt --branches
	gcovr -a build/coverage/coverage.json --html-details build/coverage/html/index.html
	@echo "HTML report: build/coverage/html/index.html"

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

# Each target starts from its seeds in fuzz/corpus/<target>/ (if any) and
# writes what it finds to build/fuzz/corpus/<target>/, never into the
# repository. A crash stops the run and leaves the input in build/fuzz/crashes.
fuzz: deps-fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	@mkdir -p build/fuzz/crashes; \
	for target in build/fuzz/fuzz/fuzz_*; do \
		[ -f "$$target" ] && [ -x "$$target" ] || continue; \
		name=$$(basename "$$target"); \
		scratch=build/fuzz/corpus/$$name; \
		log=build/fuzz/$$name.log; \
		mkdir -p "$$scratch"; \
		seeds=; [ -d "fuzz/corpus/$$name" ] && seeds="fuzz/corpus/$$name"; \
		echo "=== $$name: $(FUZZ_SECONDS) s"; \
		if ! "$$target" -max_total_time=$(FUZZ_SECONDS) -print_final_stats=1 \
			-artifact_prefix=build/fuzz/crashes/$$name- "$$scratch" $$seeds >"$$log" 2>&1; then \
			tail -n 80 "$$log"; echo "=== $$name failed; full log in $$log"; exit 1; \
		fi; \
		grep -E '^(Done|stat::number_of_executed_units|stat::new_units_added)' "$$log"; \
	done

# The reference of every public header and the guides in docs/. Doxygen
# treats any warning (an undocumented public name, a broken reference, a
# missing snippet) as an error; the log must also come out empty.
docs: deps-docs
	rm -rf build/docs
	mkdir -p build/docs
	@VESK_VERSION=$(VESK_VERSION) doxygen docs/Doxyfile || { cat build/docs/warnings.log; echo "=== docs: doxygen failed"; exit 1; }
	@if [ -s build/docs/warnings.log ]; then cat build/docs/warnings.log; echo "=== docs: doxygen warned"; exit 1; fi
	@echo "=== docs: build/docs/html/index.html"

deps:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6)

deps-qt5:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT5)

deps-bench:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6) $(DEPS_BENCH)

deps-screenshot:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6) $(DEPS_SCREENSHOT)

deps-coverage:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6) $(DEPS_COVERAGE)

deps-fuzz:
	@scripts/ensure-packages $(DEPS_COMMON) $(DEPS_QT6) $(DEPS_FUZZ)

deps-docs:
	@scripts/ensure-packages $(DEPS_DOCS)

clean:
	rm -rf build
