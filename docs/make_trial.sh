#!/usr/bin/env bash
# Makes docs/trial-moored.html, the trial report of the sample recording, and a picture of its first
# screen. Usage: docs/make_trial.sh [PROGRAM [BROWSER]]; the browser is a Chromium.
set -euo pipefail
cd "$(dirname "$0")/.."
program=${1:-build/release/src/app/fathomline-trial}
browser=${2:-chromium}

# Against the truth that the recording was made from; see samples/README.md.
"$program" samples/moored.log --reference 58.9726,5.7315,62.55 --heading 137.25 \
  --limit "availability.share>=0.98" --limit "horizontal.reference.r95_m<=3" \
  --limit "heading.HEHDT.p95_deg<=0.3" --title "A vessel made fast" \
  --note "Ten minutes of simulated sentences, against the truth that they were made from." \
  --html docs/trial-moored.html --quiet

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work
"$browser" --headless --no-sandbox --disable-gpu --no-first-run --hide-scrollbars \
  --user-data-dir="$work" --window-size=800,1545 --screenshot="$PWD/docs/screenshots/trial.png" \
  "file://$PWD/docs/trial-moored.html" 2>/dev/null
