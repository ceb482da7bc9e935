#!/usr/bin/env bash
# zelstr grep -F -c -f WORDS beside GNU grep -F (LC_ALL=C) and ripgrep -F on
# the SQL corpus: the corpus's text scripts (UTF-16 ones left out) repeated
# 8 times into one file (about 17 MB, in the page cache), with lists of 8,
# 64 and 1000 identifiers taken from it (every k-th of its distinct ones)
# and as many absent ones; best of 5 runs each, then the ratios of zelstr's
# time to each peer's, and the three counts (which must agree).
#   bench/grep_words_compare.sh [ZELSTR] [CORPUS_DIR]
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
    if cmp -s <(tr -d '\000' <"$f") "$f"; then cat "$f"; fi
  done
done >"$text"
LC_ALL=C grep -o -E '[A-Za-z_][A-Za-z0-9_]{2,}' "$text" | LC_ALL=C sort -u >"$work/identifiers"
total=$(wc -l <"$work/identifiers")

best() {  # the best wall time of 5 runs, in seconds
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

printf '%s: %s bytes, %s distinct identifiers\n' "$text" "$(stat -c %s "$text")" "$total"
printf '%-8s %8s %8s %8s %7s %7s  %s\n' words zelstr grep rg /grep /rg counts
for n in 8 64 1000; do
  words=$work/words.$n
  awk -v step=$((total / n)) 'NR % step == 0' "$work/identifiers" | head -n "$n" >"$words"
  sed 's/$/_zq9/' "$words" >>"$words.absent" && cat "$words.absent" >>"$words"
  counts="$("$zelstr" grep -F -c -f "$words" "$text") $(LC_ALL=C grep -F -c -f "$words" "$text") $(rg -F -c --no-ignore -f "$words" "$text")"
  z=$(best "$zelstr" grep -F -c -f "$words" "$text")
  g=$(best env LC_ALL=C grep -F -c -f "$words" "$text")
  r=$(best rg -F -c --no-ignore -f "$words" "$text")
  printf '%-8s %8.3f %8.3f %8.3f %7.2f %7.2f  %s\n' "$((2 * n))" "$z" "$g" "$r" \
    "$(echo "$z / $g" | bc -l)" "$(echo "$z / $r" | bc -l)" "$counts"
done
