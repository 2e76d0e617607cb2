#!/usr/bin/env bash
# Packs both packages, installs the .deb into a scratch root and runs the program from there.
# Usage: package_test.sh BUILD
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$1"
cpack -B "$scratch" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }

root=$scratch/root
mkdir -p "$root/var/lib/dpkg/"{info,updates}
touch "$root/var/lib/dpkg/"{status,available}
# The scratch root holds no other package, so what this one needs is looked for outside of it.
dpkg --root="$root" --force-depends --force-not-root --force-script-chrootless \
    --log="$scratch/dpkg.log" --install "$scratch"/*.deb >"$scratch/log" 2>&1 ||
    { cat "$scratch/log"; exit 1; }

program=$root/usr/bin/near_text
"$program" describe | grep -q "^library *$root/usr/lib/libNearTextComparerLin64.so$"
documents=$root/usr/share/doc/NearTextComparer
"$program" search "steel claw hammer 16 oz" --entries "$documents/samples/catalogue.txt" --percent 100 |
    grep -q "hammer claw 16 oz steel"
test -s "$documents/README.md"
if command -v help2man >/dev/null; then
    for page in near_text near_text-match; do
        grep -q '^\.SH' "$root/usr/share/man/man1/$page.1"
    done
fi

tar -xzf "$scratch"/*.tar.gz -C "$scratch"
for file in lib/libNearTextComparerLin64.so bin/near_text share/doc/NearTextComparer/README.md; do
    test -s "$(echo "$scratch"/near-text-*/)/$file" || test -s "$(echo "$scratch"/near-text-*/usr)/$file"
done
echo "both packages hold what they should"
