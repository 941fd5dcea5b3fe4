#!/bin/sh
# Renders each manual page given with groff and with man, and fails when
# either has anything to say; exits 77 (skipped) when neither is installed.
status=77
for page in "$@"; do
  for renderer in groff man; do
    command -v "$renderer" >/dev/null || continue
    [ "$status" = 77 ] && status=0
    if [ "$renderer" = groff ]; then
      warnings=$(groff -man -ww -z "$page" 2>&1)
    else
      warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null)
    fi
    if [ -n "$warnings" ]; then
      echo "$renderer on $page:"
      echo "$warnings"
      status=1
    fi
  done
done
[ "$status" = 77 ] && echo "neither groff nor man is installed: not checked"
exit "$status"
