#!/bin/sh
# Fails when a source is not formatted as .clang-format says or clang-tidy has a finding. Most of the
# time would go into the headers that sources share, so those of a target are looked at several at
# once; only the static analyser, which passes over what is included, gets them one by one.
# Usage: tools/lint.sh BUILD_FOLDER UNITY_BUILD_FOLDER (both configured, so that compile_commands.json
# is there)
set -eu
build=$(cd "$1" && pwd)
together=$(cd "$2" && pwd)
root=$(pwd)
sources=$(git ls-files "src/*.cpp" "apps/*.cpp" "tools/*.cpp")

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

# What is compiled for src/, apps/ and tools/. A source that is in none of it, as what stands in for
# a library that is there, is looked at by itself.
units=$(sed -n 's/^ *"file": "\(.*\)",*$/\1/p' "$together/compile_commands.json" \
    | grep -E "^($root|$together)/(src|apps|tools)/" | grep -vE '_autogen/|cmake_pch' | sort -u)
# shellcheck disable=SC2086 # a list of files without spaces
included=$(grep -h '^#include "' $(printf '%s\n' $units | grep '/Unity/'))
for source in $sources; do
    case "$units $included" in
        *"$root/$source"*) ;;
        *) units="$units $root/$source" ;;
    esac
done

# What clang-tidy counts on standard error matters only when it fails.
check='checks=$1
shift
log=$(mktemp)
clang-tidy -p "$0" --quiet "$checks" --extra-arg=-Wno-unknown-warning-option "$@" 2>"$log" \
    || { cat "$log" >&2; rm "$log"; exit 1; }
rm "$log"'
# shellcheck disable=SC2086
printf '%s\n' $units | xargs -P "$(nproc)" -n 1 \
    sh -c "$check" "$together" "--checks=-clang-analyzer-*,-bugprone-suspicious-include"
# shellcheck disable=SC2086
printf '%s\n' $sources | xargs -P "$(nproc)" -n 2 sh -c "$check" "$build" "--checks=-*,clang-analyzer-*"
echo "lint: no findings"
