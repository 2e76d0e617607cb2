# Lists of real lines, and the same mistyped. Sourced, not run.
export LC_ALL=C

# Every line once, in a random order that is the same each time.
shuffled() {
    awk '!seen[$0]++' | awk 'BEGIN { srand(7) } { printf "%.9f\t%s\n", rand(), $0 }' | sort | cut -f 2-
}
# FILE: the names and first lines of Debian's packages; made up where there is no list of packages.
make_lines() {
    { apt-cache dumpavail 2>/dev/null || true; } |
        awk '/^Package: / { name = $2 }
             /^Description(-en)?: / { sub(/^[^:]*: /, ""); print name " " $0 }' | shuffled >"$1"
    if [ "$(wc -l <"$1")" -lt 30000 ]; then
        echo "There is no list of packages; the lists are made up."
        awk 'BEGIN {
            srand(1)
            for (i = 0; i < 60000; ++i) {
                line = ""
                for (words = 4 + int(rand() * 9); words > 0; --words) {
                    word = ""
                    for (syllables = 1 + int(rand() * 4); syllables > 0; --syllables)
                        word = word substr("bdfgklmnprstvz", 1 + int(rand() * 14), 1) \
                            substr("aeiouy", 1 + int(rand() * 6), 1)
                    line = line (line == "" ? "" : " ") word
                }
                print line
            }
        }' >"$1"
    fi
}

# COUNT: that many of the lines of standard input. When they run out, names are joined to the descriptions of
# others.
entries() {
    awk -v wanted="$1" '
        { name[NR] = $1; sub(/^[^ ]* /, ""); description[NR] = $0 }
        END {
            for (round = 0; count < wanted; ++round)
                for (i = 1; i <= NR && count++ < wanted; ++i)
                    print name[i] " " description[(i + round * 7919) % NR + 1]
        }'
}
# COUNT: that many random lines of standard input, each with one to four typing errors.
mistyped() {
    awk -v wanted="$1" '
        function below(n) { return int(rand() * n) }
        { line[NR] = $0 }
        END {
            srand(3)
            for (i = 0; i < wanted; ++i) {
                text = line[1 + below(NR)]
                for (slips = 1 + below(4); slips > 0; --slips) {
                    at = 1 + below(length(text))
                    if (substr(text, at, 1) !~ /[ -~]/) continue  # part of a character
                    key = substr("abcdefghijklmnopqrstuvwxyz", 1 + below(26), 1)
                    kind = below(3)
                    text = substr(text, 1, at - 1) (kind > 0 ? key : "") substr(text, at + (kind < 2))
                }
                print text
            }
        }'
}
