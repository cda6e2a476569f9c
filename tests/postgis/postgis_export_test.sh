#!/usr/bin/env bash
# tessel-batch export and export-region into a private PostGIS cluster, read back with psql:
# the counts of every table per township, the system, valid geometries, the spatial and township
# indexes, the replace on re-export, two exports at once into tables not yet made, a region with
# townships that fail, and the bad inputs (a wrong password, a missing database, the server going
# away in the middle), after which every township holds what it held before.
#
#   private_cluster.sh postgis_export_test.sh TESSEL-BATCH SAMPLES WORK
set -euo pipefail
batch=$1 samples=$2 work=$3
job=T12NR04E
layers=(points network_lines chains record_lines parcels parcel_rings raw_polygons)

failures=0
fail() { echo "FAIL: $*" >&2; failures=$((failures + 1)); }
check() { # check DESCRIPTION EXPECTED ACTUAL
  if [ "$2" == "$3" ]; then echo "ok: $1"; else fail "$1: expected [$2], got [$3]"; fi
}
q() { psql -X -q -t -A -v ON_ERROR_STOP=1 "$@"; }

rm -rf "$work"
mkdir -p "$work/tool" "$work/job" "$work/region"
cp "$samples/$job".* "$work/job/"
target="PG:dbname=$PGDATABASE"

# One job, twice: the counts printed are the rows of each table, once.
"$batch" export "$work/job/$job.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > "$work/first.txt"
"$batch" export "$work/job/$job.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > "$work/second.txt"
check "a re-export prints the same counts" "$(cat "$work/first.txt")" "$(cat "$work/second.txt")"
declare -A expected
for layer in "${layers[@]}"; do
  expected[$layer]=$(sed -n "s/^$layer: //p" "$work/first.txt")
  [ -n "${expected[$layer]}" ] && [ "${expected[$layer]}" -gt 0 ] || fail "the sample has no $layer"
  check "$layer holds the job once after two exports" "$job|${expected[$layer]}" \
    "$(q -c "SELECT township, count(*) FROM $layer GROUP BY township")"
  check "$layer is in EPSG:3435" "3435" "$(q -c "SELECT Find_SRID('public', '$layer', 'geom')")"
  check "$layer's geometries are valid" "0" "$(q -c "SELECT count(*) FROM $layer WHERE NOT ST_IsValid(geom)")"
  check "$layer has a spatial index and one on the township" "1|1" "$(q -c "SELECT
      count(*) FILTER (WHERE indexdef LIKE '%USING gist (geom)%'), count(*) FILTER (WHERE indexdef LIKE '%(township)%')
      FROM pg_indexes WHERE tablename = '$layer'")"
done

# A region of 21 townships, each a copy of the sample under its own name.
listing=""
for n in $(seq -w 1 21); do
  for f in "$work/job/$job".*; do cp "$f" "$work/region/TWP$n.${f##*.}"; done
  listing+="TWP$n"$'\r\n'
done
printf '%s' "$listing" > "$work/region/COUNTY.how"
cp "$work/job/$job.def" "$work/region/COUNTY.def"
"$batch" export-region "$work/region/COUNTY.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > "$work/region.txt" ||
  fail "export-region of 21 townships ended with $?"
check "a progress line for each township" "21" "$(grep -c '^\[[0-9]*/21\] TWP[0-9]*: [0-9]* features$' "$work/region.txt")"
check "the summary" "21 of 21 townships exported" "$(tail -1 "$work/region.txt" | sed 's/,.*//')"
for layer in "${layers[@]}"; do
  check "$layer holds each of the 21 townships whole" "21|${expected[$layer]}|${expected[$layer]}" \
    "$(q -c "SELECT count(*), min(n), max(n) FROM (SELECT count(*) AS n FROM $layer WHERE township LIKE 'TWP%' GROUP BY township) t")"
done

# A region into a database without tables: its tables get their spatial index once its rows are in.
q -d postgres -c "CREATE DATABASE regionfresh"
q -d regionfresh -c "CREATE EXTENSION postgis"
"$batch" export-region "$work/region/COUNTY.def" "PG:dbname=regionfresh" --crs EPSG:3435 --tool-folder "$work/tool" \
  > "$work/fresh.txt" || fail "export-region into a fresh database ended with $?"
for layer in "${layers[@]}"; do
  check "$layer of a region made anew has a spatial index and one on the township" "1|1|21" "$(q -d regionfresh -c "SELECT
      count(*) FILTER (WHERE indexdef LIKE '%USING gist (geom)%'), count(*) FILTER (WHERE indexdef LIKE '%(township)%'),
      (SELECT count(DISTINCT township) FROM $layer) FROM pg_indexes WHERE tablename = '$layer'")"
done

# A township whose folder is missing and one whose file cannot be read: told, and the others go on.
printf 'TWP01\r\nNOREL\r\n%s/gone/TWP99\r\nTWP02\r\n' "$work" > "$work/region/BROKEN.how"
cp "$work/job/$job.def" "$work/region/BROKEN.def"
rm "$work/region/TWP02.COR" && mkdir "$work/region/TWP02.COR"
set +e
"$batch" export-region "$work/region/BROKEN.def" "$target" --tool-folder "$work/tool" > "$work/broken.txt" 2>&1
code=$?
set -e
[ "$code" -ne 0 ] || fail "export-region with failed townships ended with 0"
check "the missing township is told" "1" "$(grep -c '^\[2/3\] TWP99: FAILED: no such job definition' "$work/broken.txt")"
check "the unreadable township is told" "1" "$(grep -c '^\[3/3\] TWP02: FAILED: ' "$work/broken.txt")"
check "the others are exported" "1 of 3 townships exported" "$(tail -1 "$work/broken.txt" | sed 's/,.*//')"
check "the unreadable township keeps its rows" "${expected[points]}" "$(q -c "SELECT count(*) FROM points WHERE township = 'TWP02'")"
rmdir "$work/region/TWP02.COR" && cp "$work/job/$job.COR" "$work/region/TWP02.COR"

# Two townships at once into a database whose tables are not made yet, three times over.
for round in 1 2 3; do
  q -d postgres -c "CREATE DATABASE fresh$round"
  q -d "fresh$round" -c "CREATE EXTENSION postgis"
  "$batch" export "$work/region/TWP01.def" "PG:dbname=fresh$round" --tool-folder "$work/tool" > /dev/null 2> "$work/a.err" &
  a=$!
  "$batch" export "$work/region/TWP03.def" "PG:dbname=fresh$round" --tool-folder "$work/tool" > /dev/null 2> "$work/b.err" &
  b=$!
  wait $a || fail "round $round: the first of two exports at once failed: $(cat "$work/a.err")"
  wait $b || fail "round $round: the second of two exports at once failed: $(cat "$work/b.err")"
  check "round $round: both townships land" "TWP01|${expected[chains]}
TWP03|${expected[chains]}" "$(q -d "fresh$round" -c "SELECT township, count(*) FROM chains GROUP BY 1 ORDER BY 1")"
done

# One township twice at once: the second replaces the first, never two copies. A session holding
# a table keeps the first export waiting in the middle until the second has started too.
waiting() { q -c "SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'"; }
until_waiting() { for _ in $(seq 1 100); do [ "$(waiting)" -ge "$1" ] && return; sleep 0.1; done; }
psql -X -q -c "BEGIN" -c "LOCK TABLE parcels IN ACCESS EXCLUSIVE MODE" -c "SELECT pg_sleep(3)" > /dev/null 2>&1 &
holder=$!
until_waiting 0
sleep 0.5
"$batch" export "$work/region/TWP04.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > /dev/null &
a=$!
until_waiting 1
"$batch" export "$work/region/TWP04.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > /dev/null &
b=$!
until_waiting 2
check "two exports of one township wait" "2" "$(waiting)"
wait $holder
wait $a || fail "the first of two exports of TWP04 failed"
wait $b || fail "the second of two exports of TWP04 failed"
check "one township exported twice at once is there once" "${expected[points]}" \
  "$(q -c "SELECT count(*) FROM points WHERE township = 'TWP04'")"

# A marker in a row of TWP05: an export that commits replaces it; one that fails leaves it.
q -c "UPDATE points SET point_id = 'MARKER' WHERE fid = (SELECT min(fid) FROM points WHERE township = 'TWP05')"
marker() { q -c "SELECT count(*) FROM points WHERE township = 'TWP05' AND point_id = 'MARKER'"; }
state() { q -c "SELECT string_agg(n::text, ',' ORDER BY t) FROM (SELECT township t, count(*) n FROM parcels GROUP BY 1) s"; }
before=$(state)

one_line_error() { # one_line_error DESCRIPTION PATTERN TARGET [OPTIONS...]
  set +e
  "$batch" export "$work/region/TWP05.def" "$3" "${@:4}" --tool-folder "$work/tool" > /dev/null 2> "$work/err.txt"
  local code=$?
  set -e
  [ "$code" -ne 0 ] || fail "$1: the export ended with 0"
  check "$1: one line" "1" "$(wc -l < "$work/err.txt")"
  grep -q -- "$2" "$work/err.txt" || fail "$1: the error [$(cat "$work/err.txt")] does not say [$2]"
  grep -q "$TESSEL_PG_PASSWORD\|secret-wrong" "$work/err.txt" && fail "$1: the error shows a password"
  check "$1: TWP05 keeps its rows" "1" "$(marker)"
}
one_line_error "a wrong password" 'password=\*\*\*\*\*\*\*\* *: password authentication failed for user "tessel"' \
  "PG:dbname=$PGDATABASE password=secret-wrong"
one_line_error "a database that does not exist" 'database "nowhere" does not exist' "PG:dbname=nowhere"
# A table changed behind Tessel's back fails the export after the tables before it were replaced.
q -c "ALTER TABLE parcel_rings RENAME COLUMN parcel TO lot"
one_line_error "a table without a column" "TWP05 was not written, the table parcel_rings has no column parcel" \
  "$target" --crs EPSG:3435
q -c "ALTER TABLE parcel_rings RENAME COLUMN lot TO parcel"

# The server goes away while the export waits for a table another session holds.
psql -X -q -c "BEGIN" -c "LOCK TABLE parcels IN ACCESS EXCLUSIVE MODE" -c "SELECT pg_sleep(120)" > /dev/null 2>&1 &
holder=$!
set +e
"$batch" export "$work/region/TWP05.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > /dev/null 2> "$work/err.txt" &
exporter=$!
for _ in $(seq 1 100); do
  [ "$(q -c "SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'")" -ge 1 ] && break
  sleep 0.1
done
check "the export waits in the middle, points already replaced in its transaction" "1" \
  "$(q -c "SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'")"
"$TESSEL_PG_SERVER" stop > /dev/null
wait $exporter
code=$?
wait $holder
set -e
[ "$code" -ne 0 ] || fail "the export ended with 0 though the server went away"
check "the server gone: one line" "1" "$(wc -l < "$work/err.txt")"
grep -q "TWP05 was not written" "$work/err.txt" || fail "the server gone: the error [$(cat "$work/err.txt")] does not say so"
"$TESSEL_PG_SERVER" start > /dev/null
check "the server gone: TWP05 keeps its rows" "1" "$(marker)"
check "the server gone: every township as before" "$before" "$(state)"

# A township in another system is refused: its rows would land in the wrong place.
one_line_error "another system" "TWP05 was not written, the table points is in NAD83 / Illinois East (ftUS), not in" \
  "$target" --crs EPSG:26916

# And a good export replaces the marker.
"$batch" export "$work/region/TWP05.def" "$target" --crs EPSG:3435 --tool-folder "$work/tool" > /dev/null
check "a committed export replaces the township" "0" "$(marker)"

[ "$failures" -eq 0 ] || { echo "$failures checks failed" >&2; exit 1; }
echo "every check passed"
