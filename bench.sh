#!/usr/bin/env bash
# bench.sh: measures the library against its peers and prints a table of ratios.
#
#   ./bench.sh [--smoke] [NAME...]   all benchmarks, or those named (as in bench_NAME)
#
# A row compares one piece of work: ours / peer, in the same process and run;
# below 1.00 we are faster. --smoke runs each once, to see that it works, with
# the library that the tests use: its figures count for nothing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

arguments=()
names=()
preset=bench
options=()
for argument in "$@"; do
    case "$argument" in
    --smoke)
        arguments+=(--benchmark_repetitions=1 --benchmark_min_time=0.001)
        preset=linux
        options=(-DZK_BUILD_BENCHMARKS=ON)
        ;;
    -h | --help) sed -n '2,8s/^# \{0,1\}//p' bench.sh; exit 0 ;;
    -*) echo "bench.sh: unknown argument '$argument'" >&2; exit 2 ;;
    *) names+=("$argument") ;;
    esac
done

. scripts/workplace.sh
need_workplace bench.sh 600

echo "-- looking for the packages this needs"
scripts/install-packages build bench
echo "-- building"
{ cmake --preset "$preset" "${options[@]}" && cmake --build --preset "$preset" --target benchmarks; } >build/bench.log 2>&1 ||
    { cat build/bench.log; exit 1; }
if [[ $preset != bench ]]; then
    cmake --preset "$preset" -DZK_BUILD_BENCHMARKS=OFF >/dev/null   # the next build of tests is for tests alone
fi

if [[ ${#names[@]} -eq 0 ]]; then
    mapfile -t names < <(find "build/$preset/bin" -name 'bench_*' -type f -executable -printf '%f\n' | sed 's/^bench_//' | sort)
fi
for name in "${names[@]}"; do
    program=$(find "build/$preset/bin" -name "bench_$name" -type f -executable | head -n 1)
    [[ -n $program ]] || { echo "bench.sh: there is no benchmark named '$name'" >&2; exit 2; }
    echo
    echo "== $name"
    "$program" "${arguments[@]}"
done
