#!/bin/sh
# Runs each fuzz target for FUZZ_SECONDS (20), beginning with its corpus; what is found new goes to
# a copy of the corpus in the build folder. Fails on a finding and names the input.
# Usage: tools/fuzz.sh BUILD_FOLDER (of the preset "fuzz", with the target "fuzzers" built)
set -eu

build=$1
seconds=${FUZZ_SECONDS:-20}
mkdir -p "$build/corpus" "$build/findings"

while read -r name corpus; do
    echo "fuzz: $name for $seconds s"
    mkdir -p "$build/corpus/$name"
    cp -R "$corpus/." "$build/corpus/$name"
    if ! "$build/bin/$name" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
        -artifact_prefix="$build/findings/$name-" -print_final_stats=1 \
        "$build/corpus/$name" >"$build/findings/$name.log" 2>&1; then
        cat "$build/findings/$name.log" >&2
        echo "fuzz: $name found something, see $build/findings" >&2
        exit 1
    fi
    grep 'number_of_executed_units' "$build/findings/$name.log"
done <"$build/fuzzers.txt"
echo "fuzz: no findings"
