#!/usr/bin/env bash
# zelstr grep -c beside GNU grep -E (LC_ALL=C) and ripgrep on the SQL corpus:
# the corpus's text scripts (UTF-16 ones left out) repeated 8 times into one
# file (about 17 MB, in the page cache), each pattern counted by the three
# tools, best of 5 runs each, then the ratios of zelstr's time to each peer.
#   bench/grep_compare.sh [ZELSTR] [CORPUS_DIR]
# Needs grep and rg (Debian: ripgrep) on the PATH.
set -euo pipefail
cd "$(dirname "$0")/.."
zelstr=${1:-build/linux/bin/zelstr}
corpus=${2:-../shared/corpus}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

text=$work/corpus.sql
for i in 1 2 3 4 5 6 7 8; do
  find "$corpus" -name '*.sql' -print0 | sort -z | while IFS= read -r -d '' f; do
    # A file with a zero byte (UTF-16) is left out.
    if cmp -s <(tr -d '\000' <"$f") "$f"; then cat "$f"; fi
  done
done >"$text"

tab=$'\t'
patterns=(
  "customers"
  "SELECT|INSERT|UPDATE|DELETE"
  "[A-Za-z_][A-Za-z0-9_]*[ ${tab}]*="
  "'[^']*'"
  "^[ ${tab}]*(CREATE|ALTER)[ ${tab}]+(PROCEDURE|FUNCTION|TABLE)"
  "[A-Za-z_]+_(ID|Id|id)"
)

# best COMMAND...: the best wall time of 5 runs, in seconds.
best() {
  local b=999 t s e
  for _ in 1 2 3 4 5; do
    s=$(date +%s.%N)
    "$@" >"$work/out"  # not /dev/null: GNU grep stops at the first match then
    e=$(date +%s.%N)
    t=$(echo "$e - $s" | bc)
    b=$(echo "if ($t < $b) $t else $b" | bc)
  done
  echo "$b"
}

printf '%s: %s bytes\n' "$text" "$(stat -c %s "$text")"
printf '%-60s %8s %8s %8s %7s %7s  %s\n' pattern zelstr grep rg /grep /rg counts
for p in "${patterns[@]}"; do
  counts="$("$zelstr" grep -c "$p" "$text") $(LC_ALL=C grep -E -c "$p" "$text") $(rg -c --no-ignore "$p" "$text")"
  z=$(best "$zelstr" grep -c "$p" "$text")
  g=$(best env LC_ALL=C grep -E -c "$p" "$text")
  r=$(best rg -c --no-ignore "$p" "$text")
  printf '%-60s %8.3f %8.3f %8.3f %7.2f %7.2f  %s\n' "$p" "$z" "$g" "$r" \
    "$(echo "$z / $g" | bc -l)" "$(echo "$z / $r" | bc -l)" "$counts"
done
