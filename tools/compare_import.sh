#!/bin/sh
# compare_import.sh BUILD_FOLDER [ROWS [APPLICATIONS]]: times the import of a made-up run, and then the sqlite3 shell's
# .import of the very same rows into a fresh copy of the template, with the same tables and indexes.
set -eu

build=$1
rows=${2:-1000000}
applications=${3:-1000}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/TempData" "$folder/Databases" "$folder/csv"
"$build/tools/zorvel_make_databases" "$(dirname "$0")/../src/database/schema.sql" \
    "$folder/Empty_Zorvel.mdb" "$folder/Databases/ZorvelMaster.mdb"

echo "import of $rows rows and $applications applications:"
"$build/tools/zorvel_import_rows" "$folder" "$rows" "$applications"

dataset=$(ls "$folder"/Databases/Zorvel_*.MDB)
tables=$(sqlite3 "$dataset" "SELECT name FROM sqlite_master WHERE type = 'table'
    AND name NOT IN ('Zorvel_Settings', 'Zorvel_Resolutions') ORDER BY rowid")
cp "$folder/Empty_Zorvel.mdb" "$folder/shell.mdb"
echo ".mode csv" > "$folder/import.sql"
for table in $tables; do
    sqlite3 -csv "$dataset" "SELECT * FROM $table ORDER BY rowid" > "$folder/csv/$table"
    echo ".import '$folder/csv/$table' $table" >> "$folder/import.sql"
done
echo "sqlite3 .import of the same rows:"
start=$(date +%s.%N)
sqlite3 "$folder/shell.mdb" < "$folder/import.sql"
end=$(date +%s.%N)
echo "$end $start" | awk '{ printf "%.2f seconds\n", $1 - $2 }'

for table in $tables; do
    ours=$(sqlite3 "$dataset" "SELECT count(*) FROM $table")
    theirs=$(sqlite3 "$folder/shell.mdb" "SELECT count(*) FROM $table")
    [ "$ours" = "$theirs" ] || { echo "$table: $ours rows here, $theirs there" >&2; exit 1; }
done
echo "integrity: $(sqlite3 "$dataset" 'PRAGMA integrity_check')"
