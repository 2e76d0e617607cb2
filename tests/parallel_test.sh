#!/usr/bin/env bash
# The line of the page for many machines gives what one run gives, or a status that is not 0: with a worker
# that is killed, a host that cannot be reached and one that goes away, parts without a match and none at
# all. In place of ssh stands a function of this machine, and of each host a folder of its own.
# Usage: parallel_test.sh PROGRAM PAGE
set -euo pipefail
program=$(realpath "$1")
page=$2
for tool in parallel rsync; do command -v $tool >/dev/null || exit 77; done
grep -q '^GNU parallel' <<<"$(parallel --version)" || exit 77
perl -MText::CSV -e 1 2>/dev/null || exit 77
line=$(sed -n '/^parallel --pipe/,/supplier.txt/p' "$page")
grep -q -- '--retries' <<<"$line" || { echo "$page has no line for parallel" >&2; exit 1; }
samples=$(realpath "$(dirname "$0")/../samples")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export scratch program HOME=$scratch PARALLEL_SSH=$scratch/bin/ssh PATH=$scratch/bin:$PATH
mkdir bin

# [OPTION] HOST -- COMMAND, in the shell that a login sets, whether or not the caller has one.
cat >bin/ssh <<'END'
#!/usr/bin/env bash
while [[ $1 == -* ]]; do shift; done
host=$1 && shift
[ "$1" != -- ] || shift
[ "$host" != unreachable ] && [ ! -e "$scratch/$host.gone" ] || exit 255
mkdir -p "$scratch/$host" && cd "$scratch/$host" && SHELL=$BASH exec "$BASH" -c "$*"
END
# The program on a host: dies over its part once, or takes the host along.
cat >bin/near_text <<'END'
#!/usr/bin/env bash
if [ "$(basename "$PWD")" = leaving ] || mv "$scratch/kill" "$scratch/killed" 2>/dev/null; then
    head -c 300000 | "$program" "$@"
    [ "$(basename "$PWD")" != leaving ] || touch "$scratch/leaving.gone"
    kill -KILL $$
fi
exec "$program" "$@"
END
chmod +x bin/*

mkdir samples
head -n 20 "$samples/catalogue.txt" >samples/catalogue.txt
# One part of texts like these, one of texts that find nothing, others of both with a line that is no text.
for ((i = 0; i < 250; ++i)); do sed "s/$/ $((i % 7))/" samples/catalogue.txt "$samples/supplier.txt"; done >some.txt
seq -f 'nothing like %g' 150000 >none.txt
{ cat none.txt some.txt && printf 'bad \377 text\n' && cat samples/catalogue.txt some.txt; } >mixed.txt

failed() {
    echo "FAILED: $1"
    exit 1
}
# WHAT TEXTS HOSTS LINE: as one run, or, where that may be, a status that is not 0.
expect() {
    local status=0
    cp "$2" samples/supplier.txt
    printf '%s\n' $3 >hosts
    rm -f ./*.gone
    "$program" match --part -t samples/supplier.txt -e samples/catalogue.txt -f tsv >whole 2>/dev/null
    bash -c "$4" >joined 2>errors || status=$?
    [ $status -eq 0 ] || failed "$1: status $status: $(tail -n 20 errors)"
    cmp whole joined || failed "$1"
}
touch kill
expect 'a worker killed' mixed.txt 'one two' "$line"
[ -e killed ] || failed 'no worker was killed'
expect 'a host not reachable, another that goes away' mixed.txt 'unreachable leaving one two' "$line"
[ -e leaving.gone ] || failed 'no host went away'
expect 'no match' none.txt 'one two' "$line"
expect 'no text' /dev/null one "$line"
for trouble in 'sed -i s/one/unreachable/ hosts' 'rm samples/catalogue.txt' 'line=${line/--part/--prat}'; do
    (
        cp some.txt samples/supplier.txt
        echo one >hosts
        rm -rf one
        eval "$trouble"
        ! bash -c "$line" >joined 2>errors || failed "$trouble: status 0"
    )
    head -n 20 "$samples/catalogue.txt" >samples/catalogue.txt
done

# A table of rows that span lines.
sed 's/"/""/g; s/.*/"&\n",7/' some.txt >samples/supplier.txt
printf '%s\n' one two >hosts
table='--format csv --text-column 1 --keep 2'
"$program" match --part -t samples/supplier.txt -e samples/catalogue.txt $table >whole
line=${line/--pipe/--csv --pipe}
touch kill
bash -c "${line/--format tsv/$table}" >joined 2>errors || failed "a table: $(tail -n 20 errors)"
cmp whole joined || failed 'a table'
echo "the parts give the same lines as the whole"
