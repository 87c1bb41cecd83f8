#!/usr/bin/env bash
# Checks the packages in a folder by lintian, and what the desktop reads of them: scripts/check-packages.sh FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
desktop-file-validate packaging/orvalis.desktop
appstreamcli validate --no-net packaging/org.orvalis.orvalis.metainfo.xml
# It is no package of Debian's archive, so no report of a wish for one is closed by it.
lintian --allow-root --fail-on error,warning --suppress-tags initial-upload-closes-no-bugs "$1"/*.deb
