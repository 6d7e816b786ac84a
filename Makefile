# kvxlib: make demo | make test | make bench | make clean
# demo and test install missing build prerequisites with apt-get when run as
# root on Debian; otherwise they print the command to run.

BUILD      ?= build
BUILD_TYPE ?= Release
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_ARGS ?=
ifeq ($(CI),true)
CMAKE_ARGS += -DKVX_WERROR=ON
endif

BUILD_DEPS = cmake g++ make libgtest-dev
BENCH_DEPS = libbenchmark-dev liberfa-dev libnova-dev libswe-dev swe-basic-data

.PHONY: all demo test bench clean deps bench-deps configure

all: configure
	cmake --build $(BUILD) -j $(JOBS)

deps:
	@sh tools/ensure-packages.sh $(BUILD_DEPS)

bench-deps:
	@sh tools/ensure-packages.sh $(BUILD_DEPS) $(BENCH_DEPS)

configure: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_ARGS)

demo: all
	$(BUILD)/apps/kvx/kvx

test: all
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

bench: bench-deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DKVX_BUILD_BENCH=ON $(CMAKE_ARGS)
	cmake --build $(BUILD) -j $(JOBS) --target kvx_bench
	$(BUILD)/bench/kvx_bench

clean:
	rm -rf $(BUILD)
