#!/usr/bin/env bash
# Iterations and wall time of runzento against clp (presolve off, dual simplex; and clp's
# defaults) on a fixed set of LPs, for the table in PERF.md. Runs one process at a time.
#   perf_set.sh <runzento> [models...]   (default: the set below; a name is looked up in
#   tests/data/netlib, then miplib3, then miplib2017)
set -u
exe=$1; shift
root=$(cd "$(dirname "$0")/../.." && pwd)
models=("$@")
[ ${#models[@]} -eq 0 ] && models=(greenbeb pilot stocfor2 maros d6cube 25fv47 fit2d qap8 scsd8 \
  degen2 bnl1 80bau3b maros-r7 air04 air03 fast0507 cap6000 nw04 danoint fixnet6 dsbmip seymour \
  mas76 qiu)
have_clp=0; command -v clp >/dev/null && have_clp=1
printf "%-10s | %7s %8s | %7s %8s %6s | %8s %6s\n" model iters secs clpit clpsecs ratio clpdef ratio
for m in "${models[@]}"; do
  f=""
  for d in netlib miplib3 miplib2017; do
    [ -f "$root/tests/data/$d/$m.mps.gz" ] && { f="$root/tests/data/$d/$m.mps.gz"; break; }
  done
  [ -z "$f" ] && continue
  t0=$(date +%s.%N); out=$("$exe" -q "$f" 2>&1); t1=$(date +%s.%N)
  it=$(sed -n 's/^Iterations \([0-9]*\) simplex.*/\1/p' <<<"$out")
  zs=$(echo "$t1 - $t0" | bc -l)
  cit=- cs=- cds=-
  if [ $have_clp = 1 ]; then
    t0=$(date +%s.%N); cout=$(clp "$f" -presolve off -dualSimplex 2>&1); t1=$(date +%s.%N)
    cit=$(sed -n 's/.* - \([0-9]*\) iterations.*/\1/p' <<<"$cout" | tail -1)
    cs=$(echo "$t1 - $t0" | bc -l)
    t0=$(date +%s.%N); clp "$f" -dualSimplex >/dev/null 2>&1; t1=$(date +%s.%N)
    cds=$(echo "$t1 - $t0" | bc -l)
  fi
  printf "%-10s | %7s %8.3f | %7s %8.3f %6.2f | %8.3f %6.2f\n" "$m" "$it" "$zs" "$cit" "$cs" \
    "$(echo "$zs / $cs" | bc -l)" "$cds" "$(echo "$zs / $cds" | bc -l)"
done
