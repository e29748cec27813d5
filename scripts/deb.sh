#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Packs what a build tree installs, and has the result judged: what the desktop reads, then the
# package as a whole.
# usage: deb.sh BUILD
set -euo pipefail
[ $# -eq 1 ] || { echo "usage: $0 BUILD" >&2; exit 2; }
packaging=$(cd "$(dirname "$0")/../packaging" && pwd)
cd "$1"

desktop-file-validate "$packaging/org.velmora.Host.desktop"
appstreamcli validate --no-net packaging/org.velmora.Host.metainfo.xml
rm -f ./*.deb
cpack -G DEB >cpack.log || { cat cpack.log; exit 1; }
package=$(ls "$PWD"/*.deb)
lintian --fail-on error "$package"
echo "Package: $package, $(stat -c %s "$package") bytes"
