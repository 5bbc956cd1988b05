#!/usr/bin/env bash
# Makes the Debian package of the release build and prints where it is.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/setup.sh

ensure_packages build libraries program package
build_preset release -- --target brindlecam
cpack --config build/release/CPackConfig.cmake -B "$PWD/build/package"
ls build/package/*.deb
