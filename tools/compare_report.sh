#!/bin/sh
# compare_report.sh BUILD_FOLDER [ROWS [APPLICATIONS [CONTAINERS [ROUNDS]]]]: the best time of `zorvel-batch report`
# making "Registry Details" a CSV file, and of the sqlite3 shell writing the rows of the same query over the same dataset.
# They take turns. The same texts must come out, in the same order.
set -eu

build=$1
rows=${2:-200000}
applications=${3:-1000}
containers=${4:-100}
rounds=${5:-7}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/program"
cp -r "$(dirname "$0")/../program/." "$folder/program"
mkdir -p "$folder/program/TempData" "$folder/program/Databases"
"$build/tools/zorvel_make_databases" "$(dirname "$0")/../src/database/schema.sql" \
    "$folder/program/Empty_Zorvel.mdb" "$folder/program/Databases/ZorvelMaster.mdb"
dataset=$folder/program/Databases/$("$build/tools/zorvel_report_rows" "$folder/program" "$rows" "$applications" "$containers")
awk '/^query = """/ { inside = 1; next } /^"""/ { inside = 0 } inside' \
    "$folder/program/Reports/Zorvel_RegistryDetails.rpt" > "$folder/query.sql"

ours() {
    "$build/program/zorvel-batch" --folder "$folder/program" report "Registry Details" --output "$folder/ours.csv"
}
theirs() {
    sqlite3 -csv "$dataset" < "$folder/query.sql" > "$folder/theirs.csv"
}
# seconds COMMAND: what it takes.
seconds() {
    start=$(date +%s.%N)
    "$1"
    end=$(date +%s.%N)
    echo "$end $start" | awk '{ printf "%.3f\n", $1 - $2 }'
}

echo ';' >> "$folder/query.sql"
for _ in $(seq "$rounds"); do
    seconds ours >> "$folder/ours"
    seconds theirs >> "$folder/theirs"
done
echo "$rows $(sort -g "$folder/ours" | head -n 1) $(sort -g "$folder/theirs" | head -n 1)" |
    awk '{ printf "%d rows: Zorvel %.3f s, sqlite3 -csv %.3f s, ratio of speed %.2f\n", $1, $2, $3, $3 / $2 }'

# The report has a byte order mark and headings; sqlite3 also quotes values with blanks and apostrophes in them.
python3 - "$folder/ours.csv" "$folder/theirs.csv" << 'END'
import csv, itertools, sys

ours = csv.reader(open(sys.argv[1], encoding="utf-8-sig", newline=""))
theirs = csv.reader(open(sys.argv[2], encoding="utf-8", newline=""))
next(ours)
for number, (one, other) in enumerate(itertools.zip_longest(ours, theirs)):
    if one != other:
        sys.exit(f"row {number}: {one} here, {other} there")
END
