#!/bin/sh
# Measures times and memory of the settings store and prints them as tables, each number beside
# what the machine needs at least for it and beside our aim. The single runs go to bench.json.
# Usage: tools/bench.sh BUILD_FOLDER (with corma_bench and corma_bench_memory built)
set -eu

echo "bench: measuring for about a minute"
"$1/bin/corma_bench" --benchmark_out="$1/bench.json" --benchmark_out_format=json
"$1/bin/corma_bench_memory"
