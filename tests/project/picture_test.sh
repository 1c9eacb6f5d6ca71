#!/bin/sh
# Runs a program with --picture and checks that it writes a PNG of the expected size.
# Usage: picture_test.sh PROGRAM PICTURE WIDTH HEIGHT
set -eu
program=$1 picture=$2 expected="$3 $4"

rm -f "$picture"
"$program" --picture "$picture"

# A PNG begins with a signature and the chunk IHDR, whose first two numbers are width and height.
kind=$(od -An -c -j1 -N3 "$picture" | tr -d ' ')
size=$(od -An -tu1 -j16 -N8 "$picture" | {
    read -r a b c d e f g h
    echo "$((((a * 256 + b) * 256 + c) * 256 + d)) $((((e * 256 + f) * 256 + g) * 256 + h))"
})
if [ "$kind" != PNG ] || [ "$size" != "$expected" ]; then
    echo "$picture is '$kind' of '$size' instead of a PNG of '$expected'" >&2
    exit 1
fi

# A place that cannot be written is told by the exit status.
if "$program" --picture "$picture/none.png" 2>/dev/null; then
    echo "a picture that cannot be written was not told" >&2
    exit 1
fi
