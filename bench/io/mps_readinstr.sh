#!/usr/bin/env bash
# Instructions spent reading each netlib model (callgrind, deterministic): runzento -q
# --no-solve MODEL minus runzento --version, for one or two builds.
#   mps_readinstr.sh RUNZENTO [RUNZENTO2]
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
ir() {  # ir EXE ARGS...: instruction count of one run
  local exe=$1; shift
  LD_LIBRARY_PATH="$(dirname "$exe")" valgrind --tool=callgrind --callgrind-out-file=/dev/null \
    "$exe" "$@" 2>&1 >/dev/null | sed -n 's/.*refs: *//p' | tr -d ,
}
declare -A base
for e in "$@"; do base[$e]=$(ir "$e" --version); done
for f in "$root"/tests/data/netlib/*.mps.gz; do
  line="$(basename "$f" .mps.gz)"
  for e in "$@"; do line+=" $(( $(ir "$e" -q --no-solve "$f") - ${base[$e]} ))"; done
  echo "$line"
done
