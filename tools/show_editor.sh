#!/bin/sh
# Shows the settings editor on a copy of the example: in a window, or where there is no display as
# a picture. Usage: tools/show_editor.sh BUILD_FOLDER
set -eu
build=$(cd "$1" && pwd)
root=$(cd "$(dirname "$0")/.." && pwd)
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -R "$root/examples/plattegrond" "$copy/plattegrond"
cd "$copy/plattegrond"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    printf '\n--- the settings editor ---\n\n  $ cfgdesk plattegrond.ini --drawing project/woonhuis.dxf\n'
    "$build/bin/cfgdesk" plattegrond.ini --drawing project/woonhuis.dxf
    exit
fi
printf '\n--- the settings editor (no display: as a picture) ---\n'
mkdir -m 700 "$copy/runtime"
QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME="$copy" XDG_RUNTIME_DIR="$copy/runtime" \
    "$build/bin/corma_screenshots" "$build/.." . 9 example --only main
printf '\n    build/main-example.png\n'
