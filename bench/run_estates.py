#!/usr/bin/env python3
"""Whole-process benchmark of fw_compiler on the reference estates.

    bench/run_estates.py --binary build-rel/fw_compiler [--runs 3] [--only 10k-8,reg-100k]
        [--keep DIR] [--work DIR]

Writes each estate (the shared generator's, plus two registry-only ones that
this script writes itself), compiles it as a separate process under
/usr/bin/time, and prints one table row per estate: the median of the runs
for wall, user and system time and peak RSS, the output's size (du -sb) and
how long `cp -r` takes to copy that output, the floor that writing the
same bytes costs. --keep DIR leaves each estate's last output in DIR/NAME,
for a `diff -r` against another build's.
"""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
SHARED_BENCH = os.path.normpath(os.path.join(HERE, "..", "..", "shared", "bench"))

# name: (rules, addresses, services, interfaces) for the shared generator, or
# ("registry", addresses) for an estate of plain host addresses and no rules.
ESTATES = [
    ("1k-8", (1000, 500, 50, 8)),
    ("10k-8", (10000, 5000, 500, 8)),
    ("10k-32", (10000, 5000, 500, 32)),
    ("10k-64", (10000, 5000, 500, 64)),
    ("100k-8", (100000, 50000, 2000, 8)),
    ("reg-100k", ("registry", 100000)),
    ("reg-650k", ("registry", 650000)),
]


def write_generated(shape, conf, host, generator):
    rules, addresses, services, interfaces = shape
    subprocess.run([sys.executable, generator, "-N", str(rules), "-M", str(addresses),
                    "-S", str(services), "-K", str(interfaces), "--seed", "1",
                    "--host-out", host, "-o", conf],
                   check=True, stderr=subprocess.DEVNULL)


def write_registry(addresses, conf, host, base):
    """A screen with one interface and `addresses` plain host addresses."""
    with open(conf, "w") as out, open(base) as f:
        out.write(f.read())
        out.write('"net0" ADDRESS 10.0.0.0/16 ;\n')
        for i in range(addresses):
            out.write('"h%d" ADDRESS 10.%d.%d.%d ;\n'
                      % (i, 1 + i // 65536 % 254, i // 256 % 256, i % 256))
        out.write('fw1 SCREEN ;\neth0 INTERFACE GWY "net0" ;\n')
    with open(host, "w") as f:
        f.write("interface eth0 10.0.0.1/16\n")


def run_once(binary, conf, host, outdir):
    shutil.rmtree(outdir, ignore_errors=True)
    os.makedirs(outdir)
    timing = outdir + ".time"
    env = dict(os.environ, FERROWALL_HOST=host)
    subprocess.run(["/usr/bin/time", "-f", "%e %U %S %M", "-o", timing, binary,
                    "-s", "fw1", "-f", conf, "-o", outdir],
                   env=env, check=True, stdout=subprocess.DEVNULL)
    with open(timing) as f:
        wall, user, system, rss_kib = f.read().split()[-4:]
    os.remove(timing)
    size = int(subprocess.run(["du", "-sb", outdir], check=True, capture_output=True,
                              text=True).stdout.split()[0])
    copy = outdir + ".copy"
    start = time.perf_counter()
    subprocess.run(["cp", "-r", outdir, copy], check=True)
    copy_seconds = time.perf_counter() - start
    shutil.rmtree(copy)
    return [float(wall), float(user), float(system), int(rss_kib) / 1024.0, size, copy_seconds]


def main():
    p = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    p.add_argument("--binary", required=True, help="the fw_compiler to measure")
    p.add_argument("--runs", type=int, default=3, help="runs per estate (default 3)")
    p.add_argument("--only", help="comma-separated estate names (default: all)")
    p.add_argument("--keep", help="leave each estate's output in KEEP/NAME")
    p.add_argument("--work", help="where estates and outputs go (default: a temporary directory)")
    p.add_argument("--shared", default=SHARED_BENCH, help="the shared generator's folder")
    args = p.parse_args()

    binary = os.path.abspath(args.binary)
    generator = os.path.join(args.shared, "gen_estate.py")
    base = os.path.join(args.shared, "base.conf")
    work = args.work or tempfile.mkdtemp(prefix="fw_estates_")
    os.makedirs(work, exist_ok=True)
    wanted = set(args.only.split(",")) if args.only else None

    print("| estate | wall s | user s | sys s | peak RSS MiB | output bytes | cp -r s |")
    print("|---|---|---|---|---|---|---|")
    for name, shape in ESTATES:
        if wanted is not None and name not in wanted:
            continue
        conf = os.path.join(work, name + ".conf")
        host = os.path.join(work, name + ".host")
        if not os.path.exists(conf):
            if shape[0] == "registry":
                write_registry(shape[1], conf, host, base)
            else:
                write_generated(shape, conf, host, generator)
        outdir = os.path.join(work, name + ".out")
        runs = [run_once(binary, conf, host, outdir) for _ in range(args.runs)]
        wall, user, system, rss, size, copy = (statistics.median(c) for c in zip(*runs))
        print("| %s | %.2f | %.2f | %.2f | %.0f | %d | %.2f |"
              % (name, wall, user, system, rss, size, copy), flush=True)
        if args.keep:
            kept = os.path.join(args.keep, name)
            shutil.rmtree(kept, ignore_errors=True)
            os.makedirs(args.keep, exist_ok=True)
            shutil.move(outdir, kept)
        else:
            shutil.rmtree(outdir)
    if not args.work:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
