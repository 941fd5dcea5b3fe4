#!/bin/sh
# install_test.sh CMAKE BUILD WORK EXAMPLES FW_COMPILER FW_CONFIG
# Installs BUILD into a prefix below WORK, checks that the commands, the
# manual pages and the example are there, and runs the installed commands
# on the installed example: they must write what the build tree's commands
# write for the example of the source tree.
set -eu
cmake=$1 build=$2 work=$3 examples=$4 built_compiler=$5 built_config=$6
prefix=$work/prefix
installed=$prefix/share/doc/fw-compiler/examples
rm -rf "$work"
mkdir -p "$work/built" "$work/installed"
"$cmake" --install "$build" --prefix "$prefix" >/dev/null
for file in bin/fw_compiler bin/fw_config share/man/man1/fw_compiler.1.gz share/man/man1/fw_config.1.gz \
    share/man/man5/fw-host.5.gz share/doc/fw-compiler/examples/README; do
  [ -s "$prefix/$file" ] || { echo "not installed: $file"; exit 1; }
done

# As the installed README tells: from the examples directory, host
# description and configuration named relative to it.
(cd "$installed" && FERROWALL_HOST=site.host "$prefix/bin/fw_compiler" -s gate -o "$work/installed" <site.conf)
FERROWALL_HOST="$examples/site.host" "$built_compiler" -s gate -o "$work/built" <"$examples/site.conf"
diff -r "$work/built" "$work/installed"

(cd "$installed" && "$prefix/bin/fw_config" print <site.conf) >"$work/installed.print"
"$built_config" print <"$examples/site.conf" >"$work/built.print"
[ -s "$work/installed.print" ] && cmp "$work/built.print" "$work/installed.print"
echo "installed commands, manual pages and example: as built"
