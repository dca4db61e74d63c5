#!/usr/bin/env bash
# test.sh: builds everything and runs every test, on both targets.
#
#   ./test.sh           Linux and Windows (under Wine)
#   ./test.sh --quick   Linux only, without the long tests
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() { sed -n '2,5s/^# \{0,1\}//p' test.sh; }
quick=0
for argument in "$@"; do
    case "$argument" in
    --quick) quick=1 ;;
    -h | --help) usage; exit 0 ;;
    *) echo "test.sh: unknown argument '$argument'" >&2; usage >&2; exit 2 ;;
    esac
done

presets=(linux)
arguments=()
groups=(build)
room=800   # MB
if [[ $quick -eq 1 ]]; then
    arguments=(-LE slow)
else
    presets+=(windows)
    groups+=(windows)
    room=2500
fi
. scripts/workplace.sh
need_workplace test.sh "$room"

echo "-- looking for the packages this needs"
scripts/install-packages "${groups[@]}"

status=0
lines=()
passed=0 failed=0 skipped=0
for preset in "${presets[@]}"; do
    rm -f "build/$preset/test-counts"
    scripts/run-tests "$preset" "${arguments[@]}" || status=1
    if [[ -r build/$preset/test-counts ]]; then
        read -r p f s <"build/$preset/test-counts"
    else
        p=0 f=1 s=0   # the build failed
    fi
    lines+=("$preset: $p passed, $f failed, $s skipped")
    passed=$((passed + p)) failed=$((failed + f)) skipped=$((skipped + s))
done

echo
printf '%s\n' "${lines[@]}"
if [[ $skipped -gt 0 ]]; then
    echo "$passed passed, $failed failed, $skipped skipped"
else
    echo "$passed passed, $failed failed"
fi
exit $status
