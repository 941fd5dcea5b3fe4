#!/bin/bash
# Writes the seed corpus of the fuzz targets from the bundled example and
# every end-to-end case: the configuration texts for the scanner and the
# parse, each with its host description and screen for the compile, the
# host descriptions alone, and attribute texts cut from the unit tests'
# stored variables.  Run it again after adding an end-to-end case; the
# seeds are the files named "seed-*", so inputs that fuzzing added stay.
set -euo pipefail
cd "$(dirname "$0")/.."
corpus=fuzz/corpus

seed() {  # target name < text
  mkdir -p "$corpus/$1"
  cat > "$corpus/$1/seed-$2"
}

seed_case() {  # name configuration host screen
  for target in scanner parse; do seed "$target" "$1" < "$2"; done
  { cat "$2"; printf '\n#%%host %s\n' "$4"; cat "$3"; } | seed compile "$1"
  seed host_description "$1" < "$3"
}

seed_case example examples/site.conf examples/site.host gate
for folder in tests/e2e/*/; do
  name=$(basename "$folder")
  seed_case "$name" "$folder/input.conf" "$folder/host" "$(cat "$folder/screen")"
done

# Attribute texts: each quoted "{ ... };" or "name:type=...;" list of the
# variable store tests is a stored variable as the store reads it.
n=0
grep -ho '"[{a-z][^"]*:[a-z0-9]*=[^"]*;"' tests/support/*_test.cc | sort -u | while read -r text; do
  n=$((n + 1))
  printf '%s' "${text:1:${#text}-2}" | seed attrib "test-$n"
  printf '{ prg:utf8="iked"; name:utf8="Fuzzed"; %s enabled:unsigned32=1; };' "${text:1:${#text}-2}" |
    seed vars "test-$n"
done
