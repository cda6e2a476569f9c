#!/usr/bin/env bash
# Runs one fuzz target with libFuzzer for a while: scripts/fuzz.sh TARGET SECONDS
# TARGET is a name of fuzz/targets.def (cor, lxn, raw, ...). The target is built with clang,
# AddressSanitizer and UndefinedBehaviorSanitizer into build-fuzz/. New inputs go to
# build-fuzz/corpus/TARGET; a crash is written to fuzz/crashes/TARGET/, where the test command
# replays it from then on.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -ne 2 ]; then
  echo "usage: scripts/fuzz.sh TARGET SECONDS" >&2
  exit 2
fi
target=$1
seconds=$2
if ! grep -q "^FUZZ_TARGET($target," fuzz/targets.def; then
  echo "no fuzz target '$target'; the targets are:" >&2
  sed -n 's/^FUZZ_TARGET(\([a-z0-9_]*\),.*/  \1/p' fuzz/targets.def >&2
  exit 2
fi
clang=$(command -v clang++-14 || command -v clang++ || true)
if [ -z "$clang" ]; then
  echo "libFuzzer needs clang (scripts/install-deps.sh installs it)" >&2
  exit 2
fi
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -g1" \
  -DCMAKE_CXX_COMPILER="$clang" -DTESSEL_BUILD_DESKTOP=OFF -DTESSEL_SANITIZE=ON -DTESSEL_LIBFUZZER=ON > /dev/null
cmake --build build-fuzz --target "fuzz-$target"

corpus=build-fuzz/corpus/$target
crashes=fuzz/crashes/$target
mkdir -p "$corpus" "$crashes"
seeds=()
for folder in "build-fuzz/fuzz/seeds/$target" "fuzz/corpus/$target" "$crashes"; do
  [ -d "$folder" ] && seeds+=("$folder")
done
# Inputs up to 16 KiB: the full-size job's files seed the corpus but would slow every run.
exec "build-fuzz/fuzz/fuzz-$target" "$corpus" "${seeds[@]}" -max_total_time="$seconds" -max_len=16384 \
  -timeout=10 -rss_limit_mb=4096 -artifact_prefix="$crashes/" -print_final_stats=1
