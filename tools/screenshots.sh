#!/bin/sh
# Makes the pictures of docs/screenshots/: every dialog in four languages, at 100 and 200 percent, in
# a light and a dark palette. Usage: tools/screenshots.sh CORMA_SCREENSHOTS [OUT_FOLDER]
set -eu
program=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
root=$(cd "$(dirname "$0")/.." && pwd)
out=${2:-$root/docs/screenshots}
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -R "$root/examples/plattegrond" "$copy/plattegrond"

# The same pictures on every desktop.
unset QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME ACAD
export QT_QPA_PLATFORM=offscreen HOME="$copy" XDG_CONFIG_HOME="$copy" XDG_RUNTIME_DIR="$copy/runtime" LC_ALL=C.UTF-8
mkdir -p "$out" "$copy/runtime"
chmod 700 "$copy/runtime"
out=$(cd "$out" && pwd)
for language in en:9 nl:19 fr:12 ru:25; do
    for scale in 1 2; do
        for palette in light dark; do
            suffix="${language%:*}-${scale}00-$palette"
            option=
            [ "$palette" = light ] || option=--dark
            # shellcheck disable=SC2086 # no option is no argument
            (cd "$copy/plattegrond" && QT_SCALE_FACTOR=$scale "$program" "$out" . \
                "${language#*:}" "$suffix" $option)
        done
    done
done
