#!/usr/bin/env bash
# Takes the pictures in docs/screenshots with the sample recording, on a screen of its own.
# Usage: docs/make_screenshots.sh [PROGRAM]
set -euo pipefail
cd "$(dirname "$0")/.."
program=${1:-build/release/src/app/fathomline}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# A copy with a short path, which the pictures show.
cp samples/voyage.log "$work/"
sed "s|@SAMPLES@|$work|" samples/sample.ini.in >"$work/sample.ini"
export HOME=$work XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work TZ=UTC

xvfb-run -a -s "-screen 0 1400x900x24" "$program" "$work/sample.ini" --screenshots "$work/pictures"
mkdir -p docs/screenshots
for name in frmMain frmStatistics-1 frmTimeSeriesGGA-1 frmSkyplot-1 frmScatter-1 frmAISTargets-1 \
  frmNMEA-1 frmSetup frmSources frmSentenceLog frmSatellites; do
  cp "$work/pictures/$name.png" docs/screenshots/
done
