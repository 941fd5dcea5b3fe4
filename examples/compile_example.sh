#!/bin/sh
# Builds fw_compiler and compiles the bundled example for the screen "gate"
# into example-output/, then lists what was written.
set -u
cd "$(dirname "$0")/.."
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null && cmake --build build -j"$(nproc)" --target fw_compiler >/dev/null || exit 1
rm -rf example-output && mkdir example-output
FERROWALL_HOST="$PWD/examples/site.host" ./build/fw_compiler -s gate -f "$PWD/examples/site.conf" -o example-output
status=$?
echo "fw_compiler exit status: $status"
echo "written to example-output/:"
ls example-output
exit $status
