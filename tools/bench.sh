#!/bin/sh
# Measures times and memory of the settings store, of its model, of writing, of databases, of the
# editor and other dialogs, of drawings and of their blocks, and prints them as tables, each number
# beside what the machine needs at least for it and beside our aim. The single runs go to bench.json,
# bench_model.json, bench_write.json, bench_data.json, bench_editor.json, bench_dialogs.json,
# bench_drawing.json, bench_dwg.json and bench_blocks.json.
# Usage: tools/bench.sh BUILD_FOLDER (with the target "benchmarks" built)
set -eu

drawings=$1/bench/drawings

echo "bench: measuring for some six minutes"
"$1/bin/corma_bench" --benchmark_out="$1/bench.json" --benchmark_out_format=json
"$1/bin/corma_bench_memory"
"$1/bin/corma_bench_model" --benchmark_out="$1/bench_model.json" --benchmark_out_format=json
"$1/bin/corma_bench_model_memory"
"$1/bin/corma_bench_write" --benchmark_out="$1/bench_write.json" --benchmark_out_format=json
"$1/bin/corma_bench_data" --benchmark_out="$1/bench_data.json" --benchmark_out_format=json
if [ -x "$1/bin/corma_bench_editor" ]; then
    "$1/bin/corma_bench_editor" --benchmark_out="$1/bench_editor.json" --benchmark_out_format=json
    "$1/bin/corma_bench_dialogs" "$drawings" --benchmark_repetitions=5 \
        --benchmark_out="$1/bench_dialogs.json" --benchmark_out_format=json
fi
"$1/bin/corma_bench_drawing" "$drawings" --benchmark_repetitions=5 \
    --benchmark_out="$1/bench_drawing.json" --benchmark_out_format=json
"$1/bin/corma_bench_drawing_memory" "$drawings"
"$1/bin/corma_bench_dwg" "$drawings" --benchmark_repetitions=5 \
    --benchmark_out="$1/bench_dwg.json" --benchmark_out_format=json
"$1/bin/corma_bench_blocks" "$drawings" --benchmark_repetitions=5 \
    --benchmark_out="$1/bench_blocks.json" --benchmark_out_format=json
