#!/bin/sh
# Installs the Debian packages that are missing for a purpose: build, lint or fuzz.
set -eu

case "${1:-build}" in
    build) packages="g++ cmake ninja-build ccache pkg-config libicu-dev libsqlite3-dev unixodbc-dev
                     libcli11-dev nlohmann-json3-dev libgtest-dev libgmock-dev libbenchmark-dev
                     qt6-base-dev qt6-svg-dev qt6-translations-l10n fonts-dejavu-core
                     odbcinst libsqliteodbc odbc-postgresql postgresql
                     python3 python3-ezdxf" ;;
    lint)  packages="clang-format clang-tidy git" ;;
    fuzz)  packages="clang libclang-rt-14-dev" ;;
    *)     echo "usage: tools/setup.sh build|lint|fuzz" >&2; exit 2 ;;
esac

missing=""
for package in $packages; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

echo "setup: installing$missing"
as_root=""
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "setup: run as root, or install sudo" >&2; exit 1; }
    as_root="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -qq
# shellcheck disable=SC2086 # the list is meant to be split
$as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
