#!/usr/bin/env bash
# The program tells of memory that runs out, wherever it does. Usage: memory_test.sh PROGRAM FAILING_MEMORY
set -euo pipefail
program=$1
failing_memory=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
printf 'red ball\nblue cup\nball red\n' >texts
printf 'ball red\nred ball of steel\ngreen tea\n' >entries
try() {
    printf '== %s, from %s on\n' "$*" "$first"
    FIRST_TO_FAIL=$first LAST_TO_FAIL=$last LD_PRELOAD=$failing_memory "$program" "$@" | tee report
}

# In portions, since each trial begins with the first of its portion.
count=500
for ((first = 0; count == 500; first += count)); do
    last=$((first + 499))
    try --help
    count=$(sed -n 's/ failed once.*//p' report)
done
# Making the parser, which takes most of that, is the same for each command.
first=$((first * 9 / 10))
last=1000000
try search 'red ball' --entries entries --explain
try duplicates --jobs 1 texts
try duplicates --groups --jobs 1 texts
try sweep --texts texts --entries entries --jobs 1 --percent 80,60
try match --texts texts --entries entries --jobs 1
grep -q ' once: .* [1-9][0-9]* where a thread began' report
