#!/bin/sh
# Fails when a source is not formatted as .clang-format says or clang-tidy has a finding.
# Usage: tools/lint.sh BUILD_FOLDER (configured, so that compile_commands.json is there)
set -eu

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
git ls-files 'src/*.cpp' 'apps/*.cpp' |
    xargs -P "$(nproc)" -n 2 clang-tidy -p "$1" --quiet --extra-arg=-Wno-unknown-warning-option
echo "lint: no findings"
