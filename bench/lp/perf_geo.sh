#!/usr/bin/env bash
# Shifted geometric mean (shift 0.1 s) of runzento's wall time over clp's, with clp's presolve
# off (dual simplex) and with clp's defaults (dual simplex), over every MPS file of a folder.
# Optionally a second runzento (a baseline) is timed too. One process at a time.
#   perf_geo.sh <runzento> <folder> [baseline runzento]
set -u
exe=$1; dir=$2; base=${3:-}
secs() { local t0 t1; t0=$(date +%s.%N); "$@" >/dev/null 2>&1; t1=$(date +%s.%N); echo "$t1 - $t0" | bc -l; }
n=0; lo=0; ld=0; lb=0
for f in "$dir"/*.mps.gz; do
  z=$(secs "$exe" -q "$f")
  co=$(secs clp "$f" -presolve off -dualSimplex)
  cd=$(secs clp "$f" -dualSimplex)
  b=$z; [ -n "$base" ] && b=$(secs "$base" -q "$f")
  lo=$(echo "$lo + l(($z + 0.1) / ($co + 0.1))" | bc -l)
  ld=$(echo "$ld + l(($z + 0.1) / ($cd + 0.1))" | bc -l)
  lb=$(echo "$lb + l(($z + 0.1) / ($b + 0.1))" | bc -l)
  n=$((n + 1))
  printf "%-12s %7.3f  clp-off %7.3f  clp %7.3f  base %7.3f\n" "$(basename "$f" .mps.gz)" "$z" "$co" "$cd" "$b"
done
printf "models %d: vs clp presolve off %.3f, vs clp default %.3f, vs baseline %.3f\n" "$n" \
  "$(echo "e($lo / $n)" | bc -l)" "$(echo "e($ld / $n)" | bc -l)" "$(echo "e($lb / $n)" | bc -l)"
