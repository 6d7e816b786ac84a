# kvxlib: make demo | make test | make data | make bench | make install | make windows | make clean
#         make check-asan | make check-tsan | make check-valgrind | make fuzz
# demo, test and windows install missing build prerequisites with apt-get
# when run as root on Debian; otherwise they print the command to run.

BUILD      ?= build
BUILD_TYPE ?= Release
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
PREFIX     ?= /usr/local
CMAKE_ARGS ?=
ifeq ($(CI),true)
CMAKE_ARGS += -DKVX_WERROR=ON
endif
WINDOWS_BUILD ?= build-windows

# pkgconf and the Python packages serve the package tests (installed
# library used through pkg-config; the ctypes binding under pytest, also
# pip-installed into a fresh virtual environment).
BUILD_DEPS   = cmake g++ make libgtest-dev pkgconf python3 python3-pytest python3-setuptools python3-venv
BENCH_DEPS   = libbenchmark-dev liberfa-dev libnova-dev libswe-dev swe-basic-data
# wine64 runs the Windows programs in the cross-build's tests.
WINDOWS_DEPS = cmake make g++-mingw-w64-x86-64-win32 wine64

# make data [DATA_DIR=...]: DE405, Delta T and meteor files and the
# per-user settings that point at them (tools/make_data.sh).
DATA_DIR ?= $(or $(XDG_DATA_HOME),$(HOME)/.local/share)/kvxlib

.PHONY: data all demo test bench clean deps bench-deps configure install uninstall windows windows-deps \
        check-asan check-tsan check-valgrind fuzz fuzz-deps

all: configure
	cmake --build $(BUILD) -j $(JOBS)

deps:
	@sh tools/ensure-packages.sh $(BUILD_DEPS)

bench-deps:
	@sh tools/ensure-packages.sh $(BUILD_DEPS) $(BENCH_DEPS)

windows-deps:
	@sh tools/ensure-packages.sh $(WINDOWS_DEPS)

configure: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_ARGS)

# The library and kvx only; the tests are built by `make test`.
demo: configure
	cmake --build $(BUILD) -j $(JOBS) --target kvx
	$(BUILD)/apps/kvx/kvx

data:
	sh tools/make_data.sh $(DATA_DIR)

test: all
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# make install [PREFIX=/usr/local] [DESTDIR=...]; make uninstall removes the
# files listed in $(BUILD)/install_manifest.txt.
install: all
	cmake --install $(BUILD) --prefix $(PREFIX)

uninstall:
	cmake -DMANIFEST=$(BUILD)/install_manifest.txt -P cmake/uninstall.cmake

# kvxlib.dll and kvx.exe (in $(WINDOWS_BUILD)/bin) with mingw-w64, then the
# Windows build's checks: export table, imports, and under wine the C
# program, kvx and the start-up from the registry.
windows: windows-deps
	cmake -S . -B $(WINDOWS_BUILD) -DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/mingw-w64-x86_64.cmake \
	  -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_ARGS)
	cmake --build $(WINDOWS_BUILD) -j $(JOBS)
	cd $(WINDOWS_BUILD) && ctest --output-on-failure

bench: bench-deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DKVX_BUILD_BENCH=ON $(CMAKE_ARGS)
	cmake --build $(BUILD) -j $(JOBS) --target kvx_bench
	$(BUILD)/bench/kvx_bench

# Sanitizer and thread checks, each in a build tree of its own.
# check-asan: GCC AddressSanitizer + UndefinedBehaviorSanitizer, the first
# report aborts; all tests. check-tsan: ThreadSanitizer over the tests that
# run the library from several threads. check-valgrind: memcheck over the
# test program of the ordinary build and the thread tests (the tests that
# only start other programs are left out, and the fast-sine sweep, whose
# long-double reference valgrind computes in double precision: VALGRIND_FILTER).
ASAN_BUILD     ?= build-asan
TSAN_BUILD     ?= build-tsan
FUZZ_BUILD     ?= build-fuzz
SANITIZER_ENV   = ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1 \
                  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 TSAN_OPTIONS=halt_on_error=1
VALGRIND_FILTER ?= -Kvx*:Startup*:Exports*:FastTrig.WithinOneUlpOfOneOverTheWholeRange

check-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Release -DKVX_SANITIZE=address,undefined $(CMAKE_ARGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && $(SANITIZER_ENV) ctest --output-on-failure -j $(JOBS)

check-tsan: deps
	cmake -S . -B $(TSAN_BUILD) -DCMAKE_BUILD_TYPE=Release -DKVX_SANITIZE=thread $(CMAKE_ARGS)
	cmake --build $(TSAN_BUILD) -j $(JOBS) --target kvx_thread_tests
	cd $(TSAN_BUILD) && $(SANITIZER_ENV) ./tests/kvx_thread_tests

check-valgrind: all
	@command -v valgrind >/dev/null || sh tools/ensure-packages.sh valgrind
	valgrind --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite,indirect \
	  $(BUILD)/tests/kvx_tests --gtest_filter='$(VALGRIND_FILTER)'
	valgrind --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite,indirect \
	  $(BUILD)/tests/kvx_thread_tests

# make fuzz [FUZZ_SECONDS=60]: builds the libFuzzer harnesses of fuzz/ with
# clang (ASan + UBSan) and runs each for FUZZ_SECONDS over its corpus;
# FUZZ_RUNS=N stops each after N inputs instead (FUZZ_SECONDS still caps it).
FUZZ_SECONDS ?= 60
FUZZ_RUNS    ?= -1
FUZZ_DEPS     = clang libclang-rt-14-dev
fuzz-deps:
	@sh tools/ensure-packages.sh $(FUZZ_DEPS)

fuzz: fuzz-deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=Release -DKVX_BUILD_FUZZ=ON \
	  -DKVX_BUILD_TESTS=OFF -DKVX_BUILD_APPS=OFF -DKVX_SANITIZE=address,undefined
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target kvx_fuzzers
	FUZZ_RUNS=$(FUZZ_RUNS) sh fuzz/run.sh $(FUZZ_BUILD)/fuzz $(FUZZ_SECONDS)

clean:
	rm -rf $(BUILD) $(WINDOWS_BUILD) $(ASAN_BUILD) $(TSAN_BUILD) $(FUZZ_BUILD)
