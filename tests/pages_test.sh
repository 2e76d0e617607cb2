#!/usr/bin/env bash
# Both languages' pages say the same: as many headings and pictures in the same order, tables with the same
# rows and numbers, the same code. What they quote of the example is in it, the slots that they name are those
# of the interface, links lead somewhere, and what they quote of the program is its answer. Usage:
# pages_test.sh FOLDER PROGRAM
set -euo pipefail
export LC_ALL=C.UTF-8
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
for page in README.md docs/*.md; do
    [[ $page != *.ru.md ]] || continue
    page=${page%.md}
    name=${page##*/}
    outline $page.md -e ':a;/^\|/s/([0-9]),([0-9]{3})/\1\2/;ta' >"$scratch/english"
    outline $page.ru.md -e ':a;/^\|/s/([0-9]) ([0-9]{3})/\1\2/;ta' -e ':b;/^\|/s/([0-9]),([0-9])/\1.\2/;tb' \
        >"$scratch/russian"
    diff "$scratch/english" "$scratch/russian" || fail "$page.md (<) and $page.ru.md (>) differ"
    [ "$(grep -c '^row' "$scratch/english")" = "$(grep -c '^|' $page.md)" ] || fail "$page.md: a table within code"
    grep -q "($name.ru.md)" $page.md && grep -q "($name.md)" $page.ru.md || fail "$page: one lacks the other"
done

quoted=$(sed -n '/^```cpp$/,/^```$/p' docs/integrating.md | sed '1d;$d')
[[ -n $quoted && $(sed 's/^    //' examples/minimal_host.cpp) == *"$quoted"* ]] ||
    fail 'docs/integrating.md quotes what examples/minimal_host.cpp lacks'

ln -s "$PWD/samples" "$scratch"
run() { (cd "$scratch" && eval "$program $*" 2>/dev/null); }
for page in README.md README.ru.md docs/*.md; do
    sed -e ':a' -e '/^\(\$ \)\?near_text .*\\$/{N;s/ *\\\n */ /;ba' -e '}' "$page" >"$scratch/page"
    sed -n '/^\$ near_text /p' "$scratch/page" >"$scratch/commands"
    [[ -s $scratch/commands || $page != README* ]] || fail "$page quotes no command"
    while read -r _ _ arguments; do
        awk -v command="\$ near_text ${arguments//\\/\\\\}" \
            '/^```/ { isIn = 0 } isIn; $0 == command { isIn = 1 }' "$scratch/page" |
            diff - <(run "$arguments") || fail "$page (<): $arguments (>)"
    done <"$scratch/commands"
    sed -n '/^```sh$/,/^```$/s/^near_text //p' "$scratch/page" >"$scratch/commands"
    while read -r arguments; do
        run "$arguments" >/dev/null || fail "$page: $arguments"
    done <"$scratch/commands"
done

# Each table of the component: where its object is, the slot, the operation. A destructor takes two slots.
awk '/^class IInit/ { object = 0 } /^class ILang/ { object = 8 } /^class Locale/ { object = 16 }
    /virtual ~/ { slot = 2; next }
    /virtual/ && slot { sub(/\(.*/, ""); print object, slot++, $NF }' host/component_base.h >"$scratch/slots"
sed -nE 's/^\| ([0-9]+) \| ([0-9]+) \| `(\w+)` \|.*/\1 \2 \3/p' docs/integrating.md | diff "$scratch/slots" - ||
    fail 'host/component_base.h (<) has other slots than docs/integrating.md (>)'

# A link leads to a file, and to a heading of it.
anchors() {
    sed -nE 's/^#+ //p' "$1" | sed -E 's/.*/\L&/; s/[^[:alnum:] _-]//g; s/ /-/g'
}
for page in *.md docs/*.md; do
    for link in $(grep -oE '\]\([^)]+\)' "$page" | sed -E 's/^\]\(//; s/\)$//'); do
        target=$(dirname "$page")/${link%%#*}
        [[ $link != '#'* ]] || target=$page
        test -e "$target" || fail "$page: no file $link"
        [[ $link != *'#'* ]] || grep -qxF -e "${link#*#}" <(anchors "$target") || fail "$page: no heading $link"
    done
done
echo "the pages say the same"
