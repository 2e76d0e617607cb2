#!/usr/bin/env bash
# Packs everything, looks at what the packages hold and ask for, installs the .deb into a scratch root,
# runs the program from there and removes it again. Usage: package_test.sh BUILD NAME VERSION
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
name=$2 version=$3
# What is searched lies in files or variables: a pipe into "grep -q" breaks when grep has seen enough.
fail() {
    printf 'FAILED: %s\n' "$1"
    exit 1
}
cd "$1"
cpack -B "$scratch" >"$scratch/log" 2>&1 || fail "$(cat "$scratch/log")"
cd "$scratch"
sha256sum --quiet -c SHA256SUMS
[ "$(wc -l <SHA256SUMS)" -eq "$(ls -- *.deb *.rpm *.tar.gz | wc -l)" ] || fail 'SHA256SUMS lacks a package'

# The scratch root holds no other package, so what this one needs is looked for outside of it.
root=$scratch/root
mkdir -p "$root/var/lib/dpkg/"{info,updates}
touch "$root/var/lib/dpkg/"{status,available}
in_root() {
    dpkg --root="$root" --force-depends --force-not-root --force-script-chrootless \
        --log="$scratch/dpkg.log" "$@" >log 2>&1 || fail "$(cat log)"
}
deb=${name}_${version}_$(dpkg --print-architecture).deb
in_root --install "$deb"
for needed in libc6 libstdc++6; do
    grep -qF "$needed (>= " <<<"$(dpkg-deb --field "$deb" Depends)" || fail "the .deb asks for no $needed"
done
documents=usr/share/doc/$name
"$root/usr/bin/near_text" describe >described
grep -q "^library *$root/usr/lib/libNearTextComparerLin64.so$" described
grep -q "^version *$version$" described
"$root/usr/bin/near_text" search "steel claw hammer 16 oz" --entries "$root/$documents/samples/catalogue.txt" \
    --percent 100 >found
grep -q "hammer claw 16 oz steel" found
test -s "$root/$documents/README.md"
for page in near_text near_text-match; do
    test -s "$root/usr/share/man/man1/$page.1"
done
for completion in bash-completion/completions/near_text zsh/vendor-completions/_near_text \
    fish/vendor_completions.d/near_text.fish; do
    test -s "$root/usr/share/$completion"
done
in_root --purge "$name"
[ -z "$(find "$root" -path '*/usr/*' ! -type d)" ] || fail 'a file stays when the package goes'

# Elsewhere the library goes without the program, and by its own few demands.
tar -xzf "$name-$version"-*.tar.gz
alone=$(echo "$name-$version"-*/)
for link in $(sed -nE 's/.*\]\(([^):#]+).*/\1/p' "$alone/README.md"); do
    test -s "$alone/$link" || fail "README.md leads to $link, which is not there"
done
test -s "$alone/libNearTextComparerLin64.so"
# All that a host needs to be written and built.
g++ -std=c++20 -I"$alone" "$alone/examples/minimal_host.cpp" -o host -ldl
./host "$alone/libNearTextComparerLin64.so" >said
cc -std=c11 "$alone/examples/minimal_host.c" -o host_in_c -ldl
./host_in_c "$alone/libNearTextComparerLin64.so" >said_in_c
cmp said said_in_c || fail 'the two example hosts print different things'
! tar -tzf "$name-$version"-*.tar.gz | grep -v "^$name-$version-[^/]*/" || fail 'a file beside the folder'
if command -v rpm >/dev/null; then
    rpm=$name-$version-1.$(uname -m).rpm
    rpm -qpl "$rpm" >held 2>log
    grep -qx '/usr/lib/libNearTextComparerLin64.so' held
    grep -qx "/$documents/README.md" held
    ! grep -vE "^(/usr/lib/libNear|/$documents(/|\$))" held || fail 'the library brings more than it should'
    rpm -qpR "$rpm" >asked 2>log
    grep -qF 'libstdc++.so.6(GLIBCXX_3.4.21)' asked
    ! grep -E '\((GLIBC_2\.(1[89]|[2-9][0-9])|GLIBCXX_3\.4\.(2[2-9]|[3-9][0-9]))' asked ||
        fail 'the .rpm of the library asks for newer systems'
    rpm=$name-program-$version-1.$(uname -m).rpm
    rpm -qpl "$rpm" >held 2>log
    grep -qx /usr/bin/near_text held
    rpm -qpR "$rpm" >asked 2>log
    grep -qx "$name = $version" asked
fi
echo "the packages hold what they should"
