#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Rebuilds assets/basemap from Debian and npm packages, byte for byte.
#   make.sh [OUTPUT [WORK]]   OUTPUT: assets/basemap of this tree, WORK: build/basemap
# Needs: gmt gmt-gshhg-full python3-numpy python3-scipy python3-shapely python3-netcdf4 python3-matplotlib npm.
# Downloads without installing: ferret-datasets (Debian), es-atlas and world-atlas (npm).
set -eu
here=$(cd "$(dirname "$0")" && pwd)
out=${1:-$here/../../assets/basemap}
work=${2:-$here/../../build/basemap}
mkdir -p "$work" "$out"
out=$(cd "$out" && pwd)
work=$(cd "$work" && pwd)
cd "$work"
[ -d es ] || { npm pack --silent es-atlas@0.6.0 >/dev/null; mkdir es; tar xzf es-atlas-0.6.0.tgz -C es; }
[ -d world ] || { npm pack --silent world-atlas@2.0.2 >/dev/null; mkdir world; tar xzf world-atlas-2.0.2.tgz -C world; }
[ -f etopo5.cdf ] || {
    apt-get download ferret-datasets
    dpkg-deb --fsys-tarfile ferret-datasets_*.deb | tar xO ./usr/share/ferret-vis/data/etopo5.cdf > etopo5.tmp
    mv etopo5.tmp etopo5.cdf
}
exec /usr/bin/python3 "$here/make_basemap.py" "$work" "$out" "$here"
