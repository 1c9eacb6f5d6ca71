#!/bin/sh
# Installs the library into a scratch folder, moves it, and builds and runs a program against it:
# once by its CMake package and once by pkg-config.
# Usage: package_test.sh BUILD_FOLDER SCRATCH_FOLDER EXAMPLE_INI CXX CXX_FLAGS EDITOR
# EDITOR is ON when the editor was built.
set -eu
build=$1 scratch=$2 example=$3 cxx=$4 flags=$5 editor=$6
here=$(cd "$(dirname "$0")" && pwd)

rm -rf "$scratch"
mkdir -p "$scratch"
cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/moved" # an installed tree can be moved

cmake -S "$here" -B "$scratch/by-cmake" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/moved" \
    -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$scratch/by-cmake" >/dev/null
"$scratch/by-cmake/consumer" "$example"

libraries=$(dirname "$(find "$scratch/moved" -name corma.pc)")
PKG_CONFIG_PATH=$libraries
export PKG_CONFIG_PATH
# shellcheck disable=SC2046,SC2086 # lists of flags are meant to be split
"$cxx" -std=c++20 $flags $(pkg-config --cflags corma) "$here/consumer.cpp" \
    $(pkg-config --libs corma) -o "$scratch/by-pkg-config"
LD_LIBRARY_PATH=$(dirname "$libraries") "$scratch/by-pkg-config" "$example"

# The installed program finds the installed library by itself.
"$scratch/moved/bin/cfgctl" get "$example" "[Tekst]Hoogte"
if [ "$editor" = ON ]; then
    "$scratch/moved/bin/cfgdesk" --version
fi
