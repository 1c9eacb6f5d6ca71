#!/bin/sh
# Fails when a source is not formatted as .clang-format says or clang-tidy has a finding.
# Usage: tools/lint.sh BUILD_FOLDER (configured, so that compile_commands.json is there)
set -eu

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

# What clang-tidy counts on standard error matters only when it fails.
check='log=$(mktemp)
clang-tidy -p "$0" --quiet "$@" 2>"$log" || { cat "$log" >&2; rm "$log"; exit 1; }
rm "$log"'
git ls-files "src/*.cpp" "apps/*.cpp" "tools/*.cpp" | xargs -P "$(nproc)" -n 2 sh -c "$check" "$1"
echo "lint: no findings"
