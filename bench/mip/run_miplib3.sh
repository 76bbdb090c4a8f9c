#!/usr/bin/env bash
# MIPLIB 3 side by side: runzento (QZsolveMIP, presolve, cuts and heuristics off) against cbc
# (Debian coinor-cbc, -threads 0) with its defaults and with cuts, heuristics and preprocessing
# off. Writes a Markdown table of status, objective, nodes and wall seconds.
#
# Usage: bench/mip/run_miplib3.sh [runzento binary] [time limit seconds] [output file] [models...]
set -u
here=$(cd "$(dirname "$0")/../.." && pwd)
runzento=${1:-$here/build-rel/tools/runzento/runzento}
limit=${2:-60}
out=${3:-$here/bench/results/mip_miplib3.md}
shift 3 2>/dev/null || shift $#
data=$here/tests/data/miplib3
models=("$@")
if [ ${#models[@]} -eq 0 ]; then
  models=(p0033 p0201 p0282 lseu mod008 stein27 flugpl egout enigma bell5 gt2 misc03 rgn vpm1 pk1 dcmulti)
fi
have_cbc=0
command -v cbc > /dev/null && have_cbc=1

now() { date +%s.%N; }

run_zento() {  # prints: status obj nodes secs
  local f=$1 t0 t1 log
  t0=$(now)
  log=$(timeout $((limit + 30)) "$runzento" --quiet "$f" QZ_DPARAM_MIP_TIMLIM="$limit" \
        QZ_IPARAM_MIP_PRELEVEL=0 QZ_IPARAM_MIP_CUTLEVEL_TOP=0 QZ_IPARAM_MIP_CUTLEVEL_TREE=0 \
        QZ_IPARAM_MIP_HEULEVEL=0 2>&1)
  t1=$(now)
  local st obj nodes
  st=$(echo "$log" | awk '/^Status/ {print $2; exit}')
  obj=$(echo "$log" | awk '/^Objective/ {print $2; exit}')
  nodes=$(echo "$log" | awk '/^Search/ {print $2; exit}')
  printf '%s %s %s %.2f\n' "${st:-error}" "${obj:-n/a}" "${nodes:-n/a}" "$(echo "$t1 - $t0" | bc)"
}

run_cbc() {  # $1 file, $2 extra options; prints: status obj nodes secs
  local f=$1 extra=$2 t0 t1 log
  t0=$(now)
  log=$(cd /tmp && timeout $((limit + 30)) cbc "$f" -threads 0 -seconds "$limit" $extra -solve -quit 2>&1)
  t1=$(now)
  local st obj nodes
  st=$(echo "$log" | awk -F' - ' '/^Result/ {print $2; exit}' | awk '{print $1}')
  obj=$(echo "$log" | awk '/^Objective value:/ {print $3; exit}')
  nodes=$(echo "$log" | awk '/^Enumerated nodes:/ {print $3; exit}')
  printf '%s %s %s %.2f\n' "${st:-error}" "${obj:-n/a}" "${nodes:-n/a}" "$(echo "$t1 - $t0" | bc)"
}

{
  echo "# MIPLIB 3: zento against cbc"
  echo
  echo "Machine: $(nproc) cores, $(uname -m); time limit ${limit} s per run; wall seconds."
  echo "zento: QZsolveMIP through runzento with presolve, cuts and heuristics off (not built yet)."
  echo "cbc: $(cbc -quit 2>/dev/null | awk '/^Version/ {print $2; exit}') with -threads 0, once with defaults and once with"
  echo "-cuts off -heuristics off -preprocess off -presolve off (\"bare\")."
  echo
  echo "zento nodes: branch count (node LPs including re-solves); cbc nodes: enumerated nodes."
  echo
  echo "| model | optimum | zento status | zento obj | zento nodes | zento s | cbc nodes | cbc s | cbc bare nodes | cbc bare s |"
  echo "|---|---|---|---|---|---|---|---|---|---|"
} > "$out"

for name in "${models[@]}"; do
  f=$data/$name.mps.gz
  opt=$(awk -F, -v n="$name" '$1 == n {print $7}' "$data/MANIFEST.csv")
  read -r zs zo zn zt <<< "$(run_zento "$f")"
  cn=-; ct=-; bn=-; bt=-
  if [ $have_cbc -eq 1 ]; then
    read -r cs _ cn ct <<< "$(run_cbc "$f" "")"
    read -r bs _ bn bt <<< "$(run_cbc "$f" "-cuts off -heuristics off -preprocess off -presolve off")"
    # A run that did not prove optimality shows its time as a stop.
    [ "$cs" = "Optimal" ] || ct="stopped ${ct}"
    [ "$bs" = "Optimal" ] || bt="stopped ${bt}"
  fi
  echo "| $name | $opt | $zs | $zo | $zn | $zt | $cn | $ct | $bn | $bt |" >> "$out"
  echo "$name done" >&2
done
