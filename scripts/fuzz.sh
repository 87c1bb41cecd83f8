#!/usr/bin/env bash
# Fuzzes each target for FUZZ_SECONDS (30), two at a time, and fails on any find: scripts/fuzz.sh [TARGET...]
# A find is kept in tests/fuzz/finds/TARGET, where every run of the tests replays it; what was learned is kept in
# build/fuzz/corpus/TARGET for the next time.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${FUZZ_SECONDS:-30}
at_a_time=2
scripts/build.sh fuzz

targets=("$@")
((${#targets[@]})) || mapfile -t targets < <(cd tests/fuzz && printf '%s\n' *_fuzz.cpp | sed 's/_fuzz.cpp$//')
out=build/fuzz
export ASAN_OPTIONS=detect_stack_use_after_return=0
export UBSAN_OPTIONS=print_stacktrace=1
declare -A name_of=() # by process
trap 'kill "${!name_of[@]}" 2>/dev/null || true' EXIT

start() { # TARGET
  local corpus=$out/corpus/$1 finds=tests/fuzz/finds/$1 dictionary=tests/fuzz/$1.dict
  local options=(-max_total_time="$seconds" -timeout=60 -rss_limit_mb=2048 -malloc_limit_mb=512 -report_slow_units=61
    -print_final_stats=1 -artifact_prefix="$finds/")
  [[ -f $dictionary ]] && options+=(-dict="$dictionary")
  mkdir -p "$corpus" "$finds"
  # It ends by itself; the second limit is for one that hangs where it does not watch itself.
  timeout --kill-after=10 $((seconds * 2 + 120)) "$out/bin/fuzz_$1" "${options[@]}" "$corpus" "tests/fuzz/seeds/$1" \
    "$finds" >"$out/$1.log" 2>&1 &
  name_of[$!]=$1
}

failed=()
finish_one() {
  local ended code=0 name
  wait -n -p ended "${!name_of[@]}" || code=$?
  name=${name_of[$ended]}
  unset "name_of[$ended]"
  rmdir "tests/fuzz/finds/$name" 2>/dev/null || true # nothing was found
  local log=$out/$name.log
  local runs coverage
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  coverage=$(grep -oE 'cov: [0-9]+ ft: [0-9]+ corp: [0-9]+' "$log" | tail -n 1 || true)
  printf '%-10s %s runs, %s\n' "$name" "${runs:-?}" "${coverage:-nothing covered}"
  ((code == 0)) && return
  failed+=("$name")
  echo "$name died ($code); the end of $log:"
  grep -vE '^#[0-9]+\s+(NEW|REDUCE|pulse)' "$log" | tail -n 40
}

for target in "${targets[@]}"; do
  ((${#name_of[@]} < at_a_time)) || finish_one
  start "$target"
done
while ((${#name_of[@]})); do finish_one; done
((${#failed[@]} == 0)) || {
  echo "Finds in: ${failed[*]}. Mend them and commit what is in tests/fuzz/finds with the mend." >&2
  exit 1
}
