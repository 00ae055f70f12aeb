#!/usr/bin/env bash
# checks.sh CHECKOUT: the checks have their names, CONTRIBUTING.md tells each of them, and
# one whose command fails half way fails.
set -euo pipefail
checkout=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fault() {
    echo "FAULT: $*" >&2
    exit 1
}

# Names, functions and the page.
. "$checkout/scripts/checks.sh"
names=$("$checkout/scripts/check" --list)
[ "$(wc -w <<< "$names")" -ge 8 ] || fault "only these checks: $names"
for name in $names; do
    declare -F "check_${name//-/_}" > /dev/null || fault "$name has no function"
    grep -q "^| \`$name\` |" "$checkout/CONTRIBUTING.md" || fault "$name is not told"
done
while read -r told; do
    grep -qx "$told" <<< "$names" || fault "$told is told and is no check"
done < <(sed -n '/^## Checks/,/^## Style/s/^| `\([a-z-]*\)` |.*/\1/p' "$checkout/CONTRIBUTING.md")

# A checkout whose checks do next to nothing.
mkdir "$folder/scripts"
cp "$checkout/scripts/check" "$checkout/scripts/common.sh" "$folder/scripts"
cat > "$folder/scripts/checks.sh" << 'END'
checks=(good bad never)
further_checks=(asked-for)
check_good() { echo "good was here"; }
check_bad() { false; echo "went on after a failure"; }
check_never() { echo "never was here"; }
check_asked_for() { echo "asked for"; }
END
said=$("$folder/scripts/check" 2>&1) && fault "a failed check passes"
grep -q "good was here" <<< "$said" || fault "the first check did not run"
grep -q "== bad failed" <<< "$said" || fault "the failed check is not named"
grep -q "went on\|never was here" <<< "$said" && fault "it went on after a failure"
said=$("$folder/scripts/check" asked-for good 2>&1) || fault "checks by name fail"
grep -q "asked for" <<< "$said" || fault "a check by its name did not run"
status=0
"$folder/scripts/check" nonsense 2> /dev/null || status=$?
[ "$status" -eq 2 ] || fault "an unknown check ends with $status"
