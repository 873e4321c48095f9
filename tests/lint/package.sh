#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Packs what stands in a build folder and has the package checked: package.sh BUILD_FOLDER
set -eu
build=$(cd "$1" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

if ! cpack --config "$build/CPackConfig.cmake" -B "$folder" >"$folder/report" 2>&1; then
    cat "$folder/report" >&2
    exit 1
fi
dpkg-deb --extract "$folder"/*.deb "$folder/contents"
desktop-file-validate "$folder"/contents/usr/share/applications/*.desktop
appstreamcli validate --no-net "$folder"/contents/usr/share/metainfo/*.xml
# A session that lints as root is told so; that is no fault of the package.
lintian --fail-on error,warning --tag-display-limit 0 --allow-root "$folder"/*.deb
