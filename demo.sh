#!/usr/bin/env bash
# demo.sh: builds the library and the example host, generates C++ from the sample
# class diagrams into build/demo and compiles every generated file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

case "${1:-}" in
"") ;;
-h | --help) sed -n '2,3s/^# \{0,1\}//p' demo.sh; exit 0 ;;
*) echo "demo.sh: unknown argument '$1'" >&2; exit 2 ;;
esac

. scripts/workplace.sh
need_workplace demo.sh 400

started=$SECONDS
log=build/demo.log

fail() {   # fail WHAT: shows the last words of the step that failed
    echo "demo.sh: $1 failed; its last words:" >&2
    tail -n 30 "$log" >&2
    exit 1
}

echo "-- looking for the packages this needs"
scripts/install-packages build

preset=linux-release
if [[ -e build/linux/bin/modelgen ]]; then
    preset=linux   # the tests' build is there: little or nothing is left to compile
fi
echo "-- building the library and modelgen (preset $preset)"
{ cmake --preset "$preset" && cmake --build --preset "$preset" --target modelgen; } >"$log" 2>&1 ||
    fail "building"
modelgen=build/$preset/bin/modelgen

models=(examples/models/*.puml)
rm -rf build/demo
echo "-- generating C++ from ${#models[@]} diagrams: $(basename -a "${models[@]}" | tr '\n' ' ')"
"$modelgen" --out build/demo "${models[@]}" >"$log" 2>&1 || fail "generating"
sed 's/^/   /' "$log"

cd build/demo
log=../demo.log
mapfile -t headers < <(find . -name '*.h' | sort)
mapfile -t sources < <(find . -name '*.cpp' | sort)
compiler=(g++)
if command -v ccache >/dev/null 2>&1; then
    compiler=(ccache g++)
fi
options=(-std=c++17 -Wall -Wextra -Werror -I.)
echo "-- compiling ${#sources[@]} sources and ${#headers[@]} headers (g++ ${options[*]})"
# A source includes its own header first; a header without a source is compiled by itself.
{
    for source in "${sources[@]}"; do
        printf '%s\0' -c "$source" -o "${source%.cpp}.o"
    done | xargs -0 -r -n 4 -P "$(nproc)" "${compiler[@]}" "${options[@]}"
    for header in "${headers[@]}"; do
        [[ -e ${header%.h}.cpp ]] || printf '#include "%s"\n' "$header"
    done >alone.cpp
    "${compiler[@]}" "${options[@]}" -c alone.cpp -o alone.o
} >"$log" 2>&1 || fail "compiling"
objects=$(find . -name '*.o' ! -name alone.o | wc -l)
[[ $objects -eq ${#sources[@]} ]] || fail "compiling"

lines=$(cat "${headers[@]}" "${sources[@]}" | wc -l)
echo "-- done: $((${#headers[@]} + ${#sources[@]})) files, $lines lines, all compile without a warning" \
    "($((SECONDS - started)) s); they are in build/demo"
