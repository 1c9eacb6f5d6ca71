# The commands of the repository. Each sets up what it needs; everything below is plain CMake.
.PHONY: run test bench fuzz lint format screenshots setup clean

# Two jobs a gigabyte of memory would allow more; the number of processors is what pays.
JOBS ?= $(shell nproc)

run: setup
	cmake --preset release
	cmake --build --preset release --target cfgctl cfgdesk corma_screenshots -j $(JOBS)
	tools/show_example.sh build/release/bin/cfgctl
	tools/show_editor.sh build/release

test: setup
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	sync # or tests that wait for the disk wait for what the build wrote
	ctest --preset asan -j $(JOBS)

bench: setup
	cmake --preset release
	cmake --build --preset release --target benchmarks -j $(JOBS)
	tools/bench.sh build/release

fuzz: setup
	tools/setup.sh fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	tools/fuzz.sh build/fuzz

lint: setup
	tools/setup.sh lint
	cmake --preset dev -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON
	cmake --preset asan -B build/lint-together -DCORMA_SANITIZE=OFF
	cmake --build build/lint --target generated_headers
	cmake --build build/lint-together --target generated_headers
	tools/lint.sh build/lint build/lint-together

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

screenshots: setup
	cmake --preset release
	cmake --build --preset release --target corma_screenshots -j $(JOBS)
	tools/screenshots.sh build/release/bin/corma_screenshots

setup:
	@tools/setup.sh build

clean:
	rm -rf build
