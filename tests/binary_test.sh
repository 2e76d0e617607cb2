#!/usr/bin/env bash
# Holds the built library to what other code in the host's process may see of it.
# Usage: binary_test.sh LIBRARY
set -euo pipefail
library=$1
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

[ "$failures" -eq 0 ] && echo "the binary is as it must be"
