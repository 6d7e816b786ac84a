#!/bin/sh
# Regenerates the Moon reference data under data/ from the Swiss Ephemeris.
# Needs: apt-get install -y libswe-dev swe-basic-data
set -e
here=$(cd "$(dirname "$0")" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
cc -O2 -o "$tmp/moon_swe" "$here/moon_swe.c" -I/usr/include/libswe -lswe -lm
"$tmp/moon_swe" lbr > "$here/data/moon_swe_lbr.txt"
"$tmp/moon_swe" apparent > "$here/data/moon_swe_apparent.txt"
"$tmp/moon_swe" apparent de "$here/../data" > "$here/data/moon_swe_apparent_de.txt"
"$tmp/moon_swe" phases > "$here/data/moon_swe_phases.txt"
"$tmp/moon_swe" ancient > "$here/data/moon_swe_phases_ancient.txt"

# Librations: needs node and the npm registry (package "astronomia").
npm install --silent --no-save --prefix "$tmp/npm" astronomia@4.2.0 >/dev/null 2>&1
NODE_PATH="$tmp/npm/node_modules" node "$here/moon_libration_astronomia.cjs" > "$here/data/moon_libration_astronomia.txt"
