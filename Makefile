# Two commands for a fresh machine: `make demo` and `make test`. The others are for whoever changes the project.

SHELL := /bin/sh
JOBS ?= $(shell nproc)
SECONDS ?= 60
# ON for the gate and CI; OFF lets a compiler that warns of more than ours build the project.
WARNINGS_AS_ERRORS ?= OFF
CONFIGURE = cmake -DREDFISHCONFIG_WARNINGS_AS_ERRORS=$(WARNINGS_AS_ERRORS) --preset
SOURCES = $(shell git ls-files '*.cpp' '*.h')

.PHONY: demo test test-long packages-build packages-test packages-gate build sanitize thread fuzz bench coverage format check-format lint gate clean

demo: build
	@sh examples/demo.sh build/release/tool/redfishconfig

test: packages-test
	$(CONFIGURE) release -DBUILD_TESTING=ON
	cmake --build --preset release -j $(JOBS)
	ctest --preset release -j $(JOBS)

# The full form of the comparisons with the references; make test has a bounded one.
test-long: test
	REDFISHCONFIG_LONG=1 ctest --preset release -j $(JOBS) -R 'World|RealRegistries|GeneratedRegistries' --verbose

packages-build:
	@packaging/install-packages build

packages-test:
	@packaging/install-packages build test

packages-gate:
	@packaging/install-packages build test gate

build: packages-build
	$(CONFIGURE) release -DBUILD_TESTING=OFF
	cmake --build --preset release -j $(JOBS)

# The tests under the address and undefined-behaviour sanitizers, and under the thread sanitizer.
sanitize thread: packages-test
	$(CONFIGURE) $@
	cmake --build --preset $@ -j $(JOBS)
	ctest --preset $@ -j $(JOBS)

# Runs each fuzzer for SECONDS, from its corpus; what it finds new stays below build/fuzz.
fuzz: packages-gate
	$(CONFIGURE) fuzz
	cmake --build --preset fuzz -j $(JOBS)
	fuzz/run build/fuzz $(SECONDS)

# Prints the figures beside their goals, and writes them to build/bench/figures.json. The tool as a whole process is
# paired with the one of BASELINE, a revision; that of the state before the rule model unless it says otherwise.
BASELINE ?= 89af945
BASELINE_FOLDER = build/baseline-$(BASELINE)
bench: packages-gate
	$(CONFIGURE) bench
	cmake --build --preset bench -j $(JOBS)
	-test -d $(BASELINE_FOLDER) || git worktree add --detach $(BASELINE_FOLDER) $(BASELINE)
	-cmake -S $(BASELINE_FOLDER) -B $(BASELINE_FOLDER)/build -G Ninja -DBUILD_TESTING=OFF
	-cmake --build $(BASELINE_FOLDER)/build -j $(JOBS)
	REDFISHCONFIG_BASELINE=$(BASELINE_FOLDER)/build/tool/redfishconfig \
		build/bench/bench/redfishconfig_bench build/bench/figures.json

coverage: packages-gate
	$(CONFIGURE) coverage
	cmake --build --preset coverage -j $(JOBS)
	find build/coverage -name '*.gcda' -delete
	ctest --preset coverage -j $(JOBS) -LE install
	gcovr --root . --filter RedfishConfig/ --filter client/ --filter app/ --filter tool/ --object-directory build/coverage --exclude-throw-branches --print-summary

format:
	clang-format -i $(SOURCES)

check-format: packages-gate
	clang-format --dry-run --Werror $(SOURCES)

lint: packages-gate
	$(CONFIGURE) release -DBUILD_TESTING=ON
	git ls-files 'RedfishConfig/*.cpp' 'client/*.cpp' 'app/*.cpp' 'tool/*.cpp' 'examples/*.cpp' | xargs -P $(JOBS) -n 4 clang-tidy --quiet -p build/release

# What a change must pass.
gate: WARNINGS_AS_ERRORS = ON
gate: check-format test lint sanitize thread

clean:
	rm -rf build
