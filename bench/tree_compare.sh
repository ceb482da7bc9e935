#!/usr/bin/env bash
# zelstr grep -r over a tree of scripts beside ripgrep and GNU grep: the
# corpus's two folders copied COPIES times (default 50) into a tree, read
# once so that it is in the page cache; for each of the six code patterns,
# the lines that match counted in every file, best of 3 runs, with every
# core (zelstr's default; rg's) and with one (-j 1 for both), then the
# ratios of zelstr's time to the peers' and zelstr's scaling from 1 thread
# to all.  The counts are compared too (ripgrep's and grep's): a line of
# "differ" says which files' counts do.
#   bench/tree_compare.sh [ZELSTR] [CORPUS_DIR] [COPIES]
# Needs rg (Debian: ripgrep).
set -euo pipefail
cd "$(dirname "$0")/.."
zelstr=$(realpath "${1:-build/linux/bin/zelstr}")
corpus=$(realpath "${2:-../shared/corpus}")
copies=${3:-50}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tree=$work/tree
for ((i = 0; i < copies; i++)); do
  mkdir -p "$tree/copy$i"
  cp -r "$corpus/tsql" "$corpus/plsql" "$tree/copy$i/"
done
cat $(find "$tree" -type f) >/dev/null
echo "tree: $(find "$tree" -type f | wc -l) files, $(du -sm "$tree" | cut -f1) MB; $(nproc) processors"

best() {  # the best wall time of 3 runs, in seconds
  local b=999 t s e
  for _ in 1 2 3; do
    s=$(date +%s.%N)
    "$@" >"$work/out" 2>/dev/null || true
    e=$(date +%s.%N)
    t=$(echo "$e - $s" | bc)
    b=$(echo "if ($t < $b) $t else $b" | bc)
  done
  echo "$b"
}
ratio() { echo "scale=2; $1 / $2" | bc; }

patterns=('customers' 'SELECT|INSERT|UPDATE|DELETE' '[A-Za-z_][A-Za-z0-9_]*[ 	]*='
          "'[^']*'" '^[ 	]*(CREATE|ALTER)[ 	]+(PROCEDURE|FUNCTION|TABLE)' '[A-Za-z_]+_(ID|Id|id)')
printf '| pattern | zelstr s | rg s | grep s | /rg | /grep | zelstr -j1 s | rg -j1 s | -j1 /rg | scaling |\n'
printf '|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n'
cd "$tree"
for p in "${patterns[@]}"; do
  z=$(best "$zelstr" grep -r -c "$p")
  r=$(best rg -c --no-ignore "$p")
  g=$(LC_ALL=C best grep -r -E -c "$p")
  z1=$(best "$zelstr" grep -r -c -j 1 "$p")
  r1=$(best rg -c --no-ignore -j 1 "$p")
  printf '| `%s` | %s | %s | %s | %s | %s | %s | %s | %s | %s |\n' "$p" "$z" "$r" "$g" \
    "$(ratio "$z" "$r")" "$(ratio "$z" "$g")" "$z1" "$r1" "$(ratio "$z1" "$r1")" "$(ratio "$z1" "$z")"
  # The counts of the files where both find lines (rg leaves out files of 0).
  diff <("$zelstr" grep -r -c "$p" | grep -v ':0$' | sort) <(rg -c --no-ignore "$p" | sort) >/dev/null ||
    echo "  (differ from rg: $(diff <("$zelstr" grep -r -c "$p" | grep -v ':0$' | sort) \
      <(rg -c --no-ignore "$p" | sort) | grep -c '^[<>]') lines)"
done
