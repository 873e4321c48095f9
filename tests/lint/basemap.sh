#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the base map anew and compares it with the one in the tree: basemap.sh BUILD_FOLDER. Its sources are kept in the
# build folder: only the first run needs the network.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$1/basemap
rm -rf "$work/made"
"$root/tools/basemap/make.sh" "$work/made" "$work/sources"
diff --recursive --brief --exclude=ATTRIBUTION.md "$work/made" "$root/assets/basemap"
