#!/usr/bin/env bash
# Sets up the machine, builds the library and its command-line program, and runs the
# main job: draws the catalogues of the built-in line types and point symbols and the
# sample road plan into out/ as PNG images.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup.sh
bash scripts/build.sh build
./build/tools/vantrel1 version
mkdir -p out
./build/tools/vantrel1 catalogue out/catalogue.png
./build/tools/vantrel1 catalogue out/symbols.png --sheet symbols
./build/tools/vantrel1 render examples/road-plan.geojson out/road-plan.png
echo "The images are $root/out/catalogue.png (every line style), $root/out/symbols.png (every point symbol)"
echo "and $root/out/road-plan.png (the sample road plan)."
