#!/bin/sh
# Exports every drawing of svg/ as PNG, at the size that it states and at twice that
# for screens of high resolution. Names on the command line export only those.
set -e
cd "$(dirname "$0")/svg"
[ $# -gt 0 ] || set -- $(find . -name '*.svg' | sort)
for svg; do
    name=${svg%.svg}
    mkdir -p "../$(dirname "$name")"
    rsvg-convert "$svg" -o "../$name.png"
    # Cursors have no second resolution; circles are drawn large and scaled down.
    case $name in *Cursor* | *Circle) continue ;; esac
    rsvg-convert --zoom 2 "$svg" -o "../$name@2x.png"
done
