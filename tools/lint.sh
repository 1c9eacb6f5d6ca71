#!/bin/sh
# Fails when a source is not formatted as .clang-format says or clang-tidy has a finding.
# Usage: tools/lint.sh BUILD_FOLDER (configured as a unity build, so that compile_commands.json is there)
set -eu

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
python3 "$(dirname "$0")/tidy_units.py" "$1"
echo "lint: no findings"
