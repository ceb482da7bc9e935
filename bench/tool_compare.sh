#!/usr/bin/env bash
# The zelstr tool on a large file beside ripgrep, GNU grep and cat: the
# corpus's text scripts (UTF-16 ones left out) repeated to SIZE_MB
# megabytes (default 1024) in one file, read once so that it is in the page
# cache; each command timed best of 3, its output written to a file in
# memory (/dev/shm where there is one, so that the disk's writing back of
# earlier outputs does not fall into later timings), then
# the ratio of zelstr's time to its peer's and zelstr's largest resident
# set (from /usr/bin/time).
#   bench/tool_compare.sh [ZELSTR] [CORPUS_DIR] [SIZE_MB]
# Needs rg (Debian: ripgrep) and /usr/bin/time (Debian: time).
set -euo pipefail
cd "$(dirname "$0")/.."
zelstr=$(realpath "${1:-build/linux/bin/zelstr}")
corpus=${2:-../shared/corpus}
size_mb=${3:-1024}
work=$(mktemp -d)
out=$work/out
if [[ -d /dev/shm && -w /dev/shm ]]; then out=$(mktemp -p /dev/shm); fi
trap 'rm -rf "$work" "$out"' EXIT

one=$work/one.sql
find "$corpus" -name '*.sql' -print0 | sort -z | while IFS= read -r -d '' f; do
  if cmp -s <(tr -d '\000' <"$f") "$f"; then cat "$f"; fi
done >"$one"
text=$work/big.sql
while (($(stat -c %s "$text" 2>/dev/null || echo 0) < size_mb * 1048576)); do cat "$one" >>"$text"; done
cat "$text" >/dev/null

best() {  # the best wall time of 3 runs, in seconds; the output goes to a file
  local b=999 t s e
  for _ in 1 2 3; do
    s=$(date +%s.%N)
    "$@" >"$out"
    e=$(date +%s.%N)
    t=$(echo "$e - $s" | bc)
    b=$(echo "if ($t < $b) $t else $b" | bc)
  done
  echo "$b"
}
rss() {  # the largest resident set of one run, in MB
  /usr/bin/time -f %M "$@" 2>&1 >"$out" | tail -n 1 | awk '{printf "%.1f", $1 / 1024}'
}

printf '%s: %s bytes\n' "$text" "$(stat -c %s "$text")"
printf '%-34s %8s  %-36s %8s %7s %8s\n' command zelstr peer time ratio "RSS MB"
row() {  # row "ZELSTR ARGS" "PEER COMMAND"
  local z p
  z=$(best bash -c "$zelstr $1 '$text'")
  p=$(best bash -c "$2 '$text'")
  printf '%-34s %8.3f  %-36s %8.3f %7.2f %8s\n' "zelstr $1" "$z" "$2" "$p" \
    "$(echo "$z / $p" | bc -l)" "$(rss bash -c "exec $zelstr $1 '$text'")"
}
row "find -c customers" "rg -F -c customers"
row "find -c zzzqqq" "rg -F -c zzzqqq"
row "find -c customers" "LC_ALL=C grep -F -c customers"
row "grep -c customers" "rg -c customers"
row "grep -c \"'[^']*'\"" "rg -c \"'[^']*'\""
row "findall customers" "rg -F -o -b customers"
row "sqlcase --upper" "$zelstr map 'a-z=A-Z'"
row "map 'a-z=A-Z'" "cat"
row "trim" "cat"
row "quote" "cat"
row "unquote" "cat"
row "replace customers clients" "rg -F --passthru -r clients customers"
