#!/bin/sh
# compare_find.sh BUILD_FOLDER [MEGABYTES [ROUNDS]]: for each predefined search, the best time of the search of streams
# in which nothing matches, and of `pcre2grep -i -c` over the very same bytes with the same expression.
set -eu

build=$1
megabytes=${2:-400}
rounds=${3:-7}
tool=$build/tools/zorvel_search_file
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$tool" make "$folder/streams" "$megabytes"

# seconds COMMAND...: what it takes; its output, a count, must be 0.
seconds() {
    start=$(date +%s.%N)
    count=$("$@" || true)
    end=$(date +%s.%N)
    [ "$count" = 0 ] || { echo "compare_find.sh: '$*' finds '$count'" >&2; exit 1; }
    echo "$end $start" | awk '{ print $1 - $2 }'
}

printf '%-24s %12s %12s %8s\n' search 'Zorvel MB/s' 'pcre2grep' ratio
"$tool" searches | while IFS="$(printf '\t')" read -r name expression; do
    : > "$folder/ours"
    : > "$folder/theirs"
    for _ in $(seq "$rounds"); do
        seconds "$tool" search "$name" "$folder/streams" >> "$folder/ours"
        seconds pcre2grep -i -c -a -e "$expression" "$folder/streams" >> "$folder/theirs"
    done
    ours=$(sort -g "$folder/ours" | head -n 1)
    theirs=$(sort -g "$folder/theirs" | head -n 1)
    size=$(wc -c < "$folder/streams")
    echo "$size $ours $theirs" |
        awk -v name="$name" '{ printf "%-24s %12.0f %12.0f %8.2f\n", name, $1 / $2 / 1e6, $1 / $3 / 1e6, $3 / $2 }'
done
