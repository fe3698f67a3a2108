#!/bin/sh
# compare_findings.sh BUILD_FOLDER [ROWS [APPLICATIONS [CONTAINERS [ROUNDS]]]]: the best time of `zorvel-batch findings
# --format csv`, and of the sqlite3 shell writing the rows of the same join. They take turns. The same findings must come
# out; sqlite3 does not order them.
set -eu

build=$1
rows=${2:-1000000}
applications=${3:-5000}
containers=${4:-100}
rounds=${5:-5}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/program"
cp -r "$(dirname "$0")/../program/." "$folder/program"
mkdir -p "$folder/program/TempData" "$folder/program/Databases"
"$build/tools/zorvel_make_databases" "$(dirname "$0")/../src/database/schema.sql" \
    "$folder/program/Empty_Zorvel.mdb" "$folder/program/Databases/ZorvelMaster.mdb"
dataset=$folder/program/Databases/$("$build/tools/zorvel_report_rows" "$folder/program" "$rows" "$applications" \
    "$containers" findings)
cat > "$folder/query.sql" << 'END'
WITH Reach AS (SELECT AppUniqueRef, COUNT(DISTINCT FullUserID) AS Users FROM Zorvel_Associations GROUP BY AppUniqueRef)
SELECT Severity, IssueCode, IssueShortDesc, AppName||'.'||AppOU, EntryType, TargetFile, SourceFile, Users
FROM Zorvel_Issues JOIN Zorvel_Apps USING (AppUniqueRef) JOIN Zorvel_Resolutions USING (IssueCode)
JOIN Reach USING (AppUniqueRef);
END

ours() {
    "$build/program/zorvel-batch" --folder "$folder/program" findings --format csv --output "$folder/ours.csv"
}
theirs() {
    sqlite3 -csv "$dataset" < "$folder/query.sql" > "$folder/theirs.csv"
}
seconds() {
    start=$(date +%s.%N)
    "$1"
    end=$(date +%s.%N)
    echo "$end $start" | awk '{ printf "%.3f\n", $1 - $2 }'
}
for _ in $(seq "$rounds"); do
    seconds ours >> "$folder/ours"
    seconds theirs >> "$folder/theirs"
done
echo "$rows $(sort -g "$folder/ours" | head -n 1) $(sort -g "$folder/theirs" | head -n 1)" |
    awk '{ printf "%d findings: Zorvel %.3f s, sqlite3 -csv %.3f s, ratio of speed %.2f\n", $1, $2, $3, $3 / $2 }'

python3 - "$folder/ours.csv" "$folder/theirs.csv" << 'END'
import csv, sys

ours = csv.reader(open(sys.argv[1], encoding="utf-8-sig", newline=""))
next(ours)
ours = sorted(row[:7] + row[8:9] for row in ours)
if ours != sorted(csv.reader(open(sys.argv[2], encoding="utf-8", newline=""))):
    sys.exit("the findings differ")
END
