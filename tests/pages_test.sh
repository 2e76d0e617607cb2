#!/usr/bin/env bash
# Both languages' pages say the same: as many headings and pictures in the same order, tables with the same
# rows and numbers, the same code; the host that they quote is the example, and what they quote of the program
# is its answer. Usage: pages_test.sh FOLDER PROGRAM
set -euo pipefail
program=$2
cd "$1"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() {
    printf 'FAILED: %s\n' "$1"
    exit 1
}
# A page's structure, a line for each thing. The arguments of sed write numbers in one way.
outline() {
    sed -E -e '/^\|/s/`[^`]*`//g' "${@:2}" "$1" | awk '
        /^```/ { isCode = !isCode; if (isCode) kind = $0; print "code " $0; next }
        isCode { sub(/ *# .*/, ""); if (kind != "```text") print; next }
        /^#+ / { print "heading " $1 }
        /^!\[/ { sub(/.*\]\(/, ""); print "picture " $0 }
        /^\|/ {
            row = "row"
            for (columns = gsub(/\|/, "|"); match($0, /[0-9]+(\.[0-9]+)*/); $0 = substr($0, RSTART + RLENGTH))
                row = row " " substr($0, RSTART, RLENGTH)
            print row " in " columns
        }'
}
outline README.md -e ':a;/^\|/s/([0-9]),([0-9]{3})/\1\2/;ta' >"$scratch/english"
outline README.ru.md -e ':a;/^\|/s/([0-9]) ([0-9]{3})/\1\2/;ta' -e ':b;/^\|/s/([0-9]),([0-9])/\1.\2/;tb' \
    >"$scratch/russian"
diff "$scratch/english" "$scratch/russian" || fail 'README.md (<) and README.ru.md (>) differ'
[ "$(grep -c '^row' "$scratch/english")" -gt 50 ] || fail 'the outline lacks the tables'
grep -q '(README.ru.md)' README.md && grep -q '(README.md)' README.ru.md || fail 'a page lacks the other'

sed -n '/^```cpp$/,/^```$/p' README.md | sed '1d;$d' | diff - examples/minimal_host.cpp ||
    fail 'README.md (<) does not quote examples/minimal_host.cpp (>)'

for page in README.md README.ru.md; do
    grep '^\$ near_text ' "$page" >"$scratch/commands" || fail "$page quotes no command"
    while read -r _ _ arguments; do
        awk -v command="\$ near_text $arguments" '/^```/ { isIn = 0 } isIn; $0 == command { isIn = 1 }' "$page" |
            diff - <(eval "$program $arguments" 2>/dev/null) || fail "$page (<): $arguments (>)"
    done <"$scratch/commands"
done

# A link leads to a file, or to a heading.
for page in README.md README.ru.md CONTRIBUTING.md; do
    sed -nE 's/^#+ //p' "$page" | sed -E 's/.*/\L&/; s/[^[:alnum:] _-]//g; s/ /-/g; s/^/#/' >"$scratch/anchors"
    for link in $(grep -oE '\]\([^)]+\)' "$page" | sed -E 's/^\]\(//; s/\)$//'); do
        case $link in
        '#'*) grep -qxF -e "$link" "$scratch/anchors" || fail "$page: no heading $link" ;;
        *) test -e "${link%%#*}" || fail "$page: no file $link" ;;
        esac
    done
done
echo "the pages say the same"
