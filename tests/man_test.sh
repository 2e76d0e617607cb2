#!/usr/bin/env bash
# Each man page is one that groff reads without a warning, with the sections that people look for and
# every option of the command. Usage: man_test.sh PROGRAM FOLDER
set -euo pipefail
program=$1
command -v groff >/dev/null || exit 77
fail() {
    printf 'FAILED: %s\n' "$1"
    exit 1
}
count=0
for page in "$2"/near_text*.1; do
    name=$(basename "$page" .1)
    warnings=$(groff -man -ww -Tutf8 -z "$page" 2>&1)
    [ -z "$warnings" ] || fail "$name: $warnings"
    [ "$(grep -c '^\.TH ' "$page")" -eq 1 ] || fail "$name has not one title"
    for section in NAME SYNOPSIS DESCRIPTION OPTIONS 'EXIT STATUS' ENVIRONMENT EXAMPLES 'SEE ALSO'; do
        grep -qx "\.SH $section" "$page" || fail "$name lacks $section"
    done
    command=${name#near_text}
    "$program" ${command:+"${command#-}"} --help >"$page.help"
    text=$(groff -man -Tascii -P-bcu "$page")
    for option in $(grep -oE '^ +(-[a-zA-Z],)?--[a-z-]+' "$page.help" | grep -oE -e '--[a-z-]+'); do
        grep -qF -e "$option" <<<"$text" || fail "$name lacks $option"
    done
    rm "$page.help"
    count=$((count + 1))
done
[ $count -eq 7 ] || fail "$count pages"
echo "the man pages are whole"
