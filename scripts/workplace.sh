# workplace.sh: sourced by the commands that build. Says in clear words why nothing can be built here.
#
#   need_workplace demo.sh 400     # build/ must take 400 MB more

need_workplace() {
    local command=$1 megabytes=$2 free
    if ! mkdir -p build 2>/dev/null || ! touch build/.writable 2>/dev/null; then
        if [[ $(df --output=avail . | tail -n 1) -eq 0 ]]; then
            echo "$command: the disk that holds $PWD is full" >&2
        else
            echo "$command: $PWD/build cannot be written to; copy the sources to a folder of your own" >&2
        fi
        exit 1
    fi
    rm -f build/.writable
    free=$(df --output=avail --block-size=1M build | tail -n 1 | tr -d ' ')
    # What an earlier build holds already need not be there again.
    local held
    held=$(du -sm build 2>/dev/null | cut -f 1)
    if [[ $((free + held)) -lt $megabytes ]]; then
        echo "$command: building takes about $megabytes MB, and the disk that holds $PWD has $free MB left" >&2
        exit 1
    fi
}
