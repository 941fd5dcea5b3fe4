#!/bin/sh
# Times fw_config shadowed on the synthetic estate of 10,000 rules and
# 10,000 packets through fw_config query, each against the compile alone
# (fw_config check), which both include.  Not a test: it prints times.
#
#   bench/query_shadowed.sh [build directory]     (default: build)
set -eu
cd "$(dirname "$0")/.."
build=${1:-build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
python3 /work/shared/bench/gen_estate.py -N 10000 -M 5000 -S 500 -K 8 --seed 1 \
  --host-out "$work/e.host" -o "$work/e.conf"
# Packets from each interface's network to addresses all over the estate,
# on the ports of the estate's services and others.
python3 - "$work/packets" <<'PY'
import random, sys
rng = random.Random(1)
with open(sys.argv[1], "w") as out:
    for _ in range(10000):
        i, j = rng.randrange(8), rng.randrange(8)
        proto = "tcp" if rng.random() < 0.7 else "udp"
        out.write("eth%d %s 10.%d.%d.%d:%d 10.%d.%d.%d:%d\n" % (
            i, proto, i, rng.randrange(4), rng.randrange(1, 255), rng.randrange(1024, 65536),
            j, rng.randrange(4), rng.randrange(1, 255), rng.randrange(1, 65536)))
PY
export FERROWALL_HOST="$work/e.host"
config="$build/fw_config"
elapsed() {
  start=$(date +%s.%N)
  "$@" > "$work/out" || { echo "failed: $*" >&2; exit 1; }
  end=$(date +%s.%N)
  echo "$start $end" | awk '{ printf "%.2f s", $2 - $1 }'
}
echo "check (compile only):     $(elapsed "$config" check -s fw1 -f "$work/e.conf")"
echo "shadowed, 10,000 rules:   $(elapsed "$config" shadowed -s fw1 -f "$work/e.conf")  ($(grep -c '^rule' "$work/out") shadowed)"
echo "query, 10,000 packets:    $(elapsed "$config" query -s fw1 -f "$work/e.conf" - < "$work/packets")  ($(grep -c 'by default' "$work/out") by default)"
