#!/usr/bin/env bash
# Cut into parts by GNU parallel, a match gives what it gives in one run. Usage: parallel_test.sh PROGRAM
set -euo pipefail
parallel --version 2>/dev/null | grep -q '^GNU parallel' || exit 77
samples=$(dirname "$0")/../samples
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
match="$1 match --texts - --entries $samples/catalogue.txt --percent 60 --format tsv --no-heading --no-numbers --jobs 1"

$match <"$samples/supplier.txt" >"$scratch/whole"
# A part without a match ends with status 1; parallel adds up the parts that did not end with 0.
parallel --will-cite --pipe --keep-order --block 1k "$match || [ \$? -eq 1 ]" \
    <"$samples/supplier.txt" >"$scratch/parts"
cmp "$scratch/whole" "$scratch/parts"
[ "$(wc -l <"$scratch/parts")" -ge "$(wc -l <"$samples/supplier.txt")" ]
echo "the parts give the same lines as the whole"
