#!/usr/bin/env bash
# Short fuzz run of every file reader, for CI: builds the libFuzzer targets with clang and runs
# each for a bounded time on a seed corpus made from the test data. A crash, a leak or a
# sanitizer report fails the run; the input that caused it is kept under the build folder.
#   run_short.sh [seconds for the MPS reader] [seconds for each side-file reader]
#                [seconds for each text-format reader]
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
mps_secs="${1:-30}"
side_secs="${2:-6}"
text_secs="${3:-10}"
build="${ZENTO_FUZZ_BUILD:-$root/build-fuzz}"

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZENTO_FUZZ=ON -DZENTO_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target fuzz_mps fuzz_start fuzz_priorities fuzz_block fuzz_basis \
  fuzz_lp fuzz_ltx fuzz_ltx_grammar

work="$(mktemp -d -p "$( [ -w /dev/shm ] && echo /dev/shm || echo /tmp )")"
export ZENTO_FUZZ_SCRATCH="$work"
trap 'rm -rf "$work"' EXIT
artifacts="$build/fuzz-artifacts"
mkdir -p "$artifacts" "$work/mps"

# MPS seeds: the first byte picks the layout (0 automatic, 1 free, 2 fixed).
n=0
seed() {  # seed <control byte in octal> <file content on stdin>
  { printf "\\$1"; cat; } > "$work/mps/seed$n"
  n=$((n + 1))
}
for f in "$root"/tests/data/examples/*.mps "$root"/tests/data/examples/*.qps \
         "$root"/tests/instances/hostile/*.mps; do
  seed 000 < "$f"
  seed 002 < "$f"
done
for f in afiro sc50a sc50b blend adlittle forplan; do
  { zcat "$root/tests/data/netlib/$f.mps.gz" || true; } | head -c 60000 | seed 000
done
for f in p0033 flugpl egout; do
  { zcat "$root/tests/data/miplib3/$f.mps.gz" || true; } | head -c 60000 | seed 001
done

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
"$build/tests/fuzz/fuzz_mps" -max_total_time="$mps_secs" -max_len=65536 \
  -dict="$root/tests/fuzz/mps.dict" -artifact_prefix="$artifacts/mps-" -print_final_stats=1 \
  "$work/mps" 2>&1 | tail -n 12

for kind in start priorities block basis; do
  mkdir -p "$work/$kind"
  cp "$root/tests/fuzz/seeds/$kind/"* "$work/$kind/"
  "$build/tests/fuzz/fuzz_$kind" -max_total_time="$side_secs" -max_len=4096 \
    -artifact_prefix="$artifacts/$kind-" -print_final_stats=1 "$work/$kind" 2>&1 | tail -n 12
done
# Text formats: the LP files of the examples, and ZENTO files written from small models.
mkdir -p "$work/lp" "$work/ltx"
cp "$root"/tests/data/examples/*.lp "$root"/tests/instances/hostile/*.lp "$work/lp/"
cp "$root"/tests/fuzz/seeds/ltx/* "$root"/tests/instances/hostile/*.ltx "$work/ltx/"
for kind in lp ltx ltx_grammar; do
  corpus="$work/ltx"
  [ "$kind" = lp ] && corpus="$work/lp"
  "$build/tests/fuzz/fuzz_$kind" -max_total_time="$text_secs" -max_len=8192 \
    -dict="$root/tests/fuzz/text.dict" -artifact_prefix="$artifacts/$kind-" -print_final_stats=1 \
    "$corpus" 2>&1 | tail -n 12
done
echo "fuzz run finished without findings"
