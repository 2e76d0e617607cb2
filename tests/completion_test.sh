#!/usr/bin/env bash
# Each shell takes its completions, and two of them are asked what they complete. Usage:
# completion_test.sh FOLDER
set -euo pipefail
cd "$1"
command -v zsh >/dev/null && command -v fish >/dev/null || exit 77
zsh -n _near_text
fish --no-execute near_text.fish
. ./near_text.bash
in_bash() {
    read -ra COMP_WORDS <<<"$1"
    [[ $1 != *' ' ]] || COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) _near_text
    printf '%s\n' "${COMPREPLY[@]}"
}
# A newer fish tells too what has the word's letters in it.
in_fish() {
    fish --private -c 'source near_text.fish; complete -C $argv' "$1" | cut -f 1 | sed -n "/^${1##* }/p"
}
touch _near_text_file
trap 'rm _near_text_file' EXIT
while IFS='|' read -r line completed; do
    for shell in bash fish; do
        found=$("in_$shell" "$line" | sort -u | xargs)
        [ "$found" = "$completed" ] || {
            echo "FAILED: $shell completes '$line' with $found"
            exit 1
        }
    done
done <<'END'
near_text du|duplicates
near_text match --entry-d|--entry-delimiter
near_text match --texts _near_text_f|_near_text_file
near_text duplicates _near_text_f|_near_text_file
near_text match --format t|text tsv
near_text compare --color a|always auto
near_text match --percent |
near_text --library lib.so help sw|sweep
END
echo "the shells complete"
