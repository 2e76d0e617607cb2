#!/usr/bin/env bash
# Holds the built library to what other code in the host's process may see of it, to what it may ask of
# a system, to how it is hardened and to what it says of itself.
# Usage: binary_test.sh LIBRARY NOTE COMPILE_COMMANDS [FLAG ...]
# NOTE is empty where the linker writes none. Each FLAG hardens.
set -euo pipefail
library=$1 note=$2 commands=$3
shift 3
failures=0
expect() {  # what, expected, actual
    if [ "$2" != "$3" ]; then
        printf 'FAILED: %s\n--- expected\n%s\n--- found\n%s\n' "$1" "$2" "$3"
        failures=$((failures + 1))
    fi
}
dynamic=$(readelf -dW "$library")

expect 'soname' 'libNearTextComparerLin64.so' \
    "$(sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p' <<<"$dynamic")"
expect 'needed libraries beyond the standard ones' '' \
    "$(sed -n 's/.*NEEDED.*\[\(.*\)\]/\1/p' <<<"$dynamic" |
        grep -vxE 'lib(stdc\+\+|m|gcc_s|c)\.so\.[0-9]+' || true)"

texts='std::vector<std::__cxx11::basic_string<unsigned short, std::char_traits<unsigned short>, std::allocator<unsigned short> >, std::allocator<std::__cxx11::basic_string<unsigned short, std::char_traits<unsigned short>, std::allocator<unsigned short> > > >'
expected="DamerauLevenshteinDistance::DamerauLevenshteinDistance()
DamerauLevenshteinDistance::compareStrings(unsigned short const*, unsigned long, unsigned long, unsigned short const*, unsigned long, unsigned long, unsigned long)
DamerauLevenshteinDistance::serchDuplicates(std::vector<unsigned long, std::allocator<unsigned long> >&, unsigned short const*, unsigned long, $texts const&, unsigned long, unsigned long, unsigned long, $texts const&)
DestroyObject
GetClassNames
GetClassObject
NearTextComparer::split(unsigned short const*, unsigned short, $texts&)
SetPlatformCapabilities"
expect 'defined dynamic symbols' "$expected" \
    "$(nm -DC --defined-only "$library" | cut -d' ' -f3- | LC_ALL=C sort -u)"
expect 'symbols of the binding "unique"' '' "$(nm -D --defined-only "$library" | grep ' u ' || true)"

# Code that runs at load or unload: one entry each, the compiler's own, and no function of ours that
# the compiler made to set up static objects.
for array in INIT FINI; do
    expect "bytes of the ${array}_ARRAY" '8' \
        "$(sed -n "s/.*${array}_ARRAYSZ) *\([0-9]*\) .*/\1/p" <<<"$dynamic")"
done
expect 'initialisers of static objects' '' "$(nm -C "$library" 2>/dev/null |
    grep -E '_GLOBAL__sub_I|__static_initialization|ios_base::Init' || true)"
expect 'PREINIT_ARRAY' '' "$(grep PREINIT <<<"$dynamic" || true)"

# The oldest systems that it loads on: glibc 2.17, and g++ 5 for the C++ runtime.
declare -A ceilings=([GLIBC]=2.17 [GLIBCXX]=3.4.21 [CXXABI]=1.3.9 [GCC]=4.8.0)
asks_for_more=
while read -r version; do
    ceiling=${ceilings[${version%_*}]:-0}
    newer=$(printf '%s\n' "$ceiling" "${version##*_}" | sort -V | tail -n 1)
    [ "$newer" = "$ceiling" ] ||
        asks_for_more+=$'\n'$(nm -DC --with-symbol-versions "$library" | grep -F "@$version" || echo "$version")
done < <(readelf -VW "$library" | sed -n '/version_r/,$s/.*Name: \([^ ]*\).*/\1/p' | sort -u)
expect 'symbols of newer systems' '' "$asks_for_more"

segments=$(readelf -lW "$library")
expect 'bound and sealed when loaded' 'RELRO NOW' \
    "$(grep -o RELRO <<<"$segments" | head -n 1) $(grep -ow NOW <<<"$dynamic" | head -n 1)"
expect 'flags of the stack' 'RW' "$(awk '$1 == "GNU_STACK" { print $(NF - 1) }' <<<"$segments")"
notes=$(readelf -nW "$library")
expect 'build id' 1 "$(grep -c 'Build ID: [0-9a-f]\{40\}$' <<<"$notes")"
[ -z "$note" ] || expect 'note of its version' 1 "$(grep -cF "Packaging Metadata: $note" <<<"$notes")"

sources=$(grep '"command".*\(near_text_objects\|NearTextComparerLin64\)\.dir' "$commands")
for flag in "$@"; do
    case $flag in
    -fstack-protector-strong)
        expect 'stack protector' 1 "$(nm -D --undefined-only "$library" | grep -c ' __stack_chk_fail')" ;;
    -fcf-protection)
        # The file as a whole bears the mark only where the system's own start files do.
        expect 'mark where a call arrives' 1 "$(objdump -d --disassemble=GetClassObject "$library" |
            grep -A 1 '<GetClassObject>:' | grep -c endbr)" ;;
    esac
    # The others leave no mark that is always there.
    expect "sources compiled without $flag" '' \
        "$(grep -vF -e " $flag " <<<"$sources" | grep -o '[^/]*\.cpp",$' || true)"
done

[ "$failures" -eq 0 ] && echo "the binary is as it must be"
