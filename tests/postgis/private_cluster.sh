#!/usr/bin/env bash
# Runs a command against a private PostgreSQL 15 cluster with PostGIS: initdb into a temporary
# folder, the server on a Unix socket in that folder only (no TCP), a database with the postgis
# extension, and the cluster stopped and removed when the command ends, however it ends.
#
#   private_cluster.sh COMMAND [ARGS...]
#
# The command sees PGHOST, PGPORT, PGUSER, PGDATABASE and PGPASSFILE (a .pgpass holding the
# password of PGUSER, which the server asks for), TESSEL_PG_PASSWORD, and TESSEL_PG_SERVER, a
# command that stops (`stop`, at once, as a crash would) and starts (`start`) the server again.
# The server refuses a wrong password. A cluster that cannot be started fails the run.
set -euo pipefail

bin=${TESSEL_PG_BIN:-/usr/lib/postgresql/15/bin}
for tool in initdb pg_ctl psql; do
  if [ ! -x "$bin/$tool" ]; then
    echo "private_cluster.sh: $bin/$tool is missing; scripts/install-deps.sh installs PostgreSQL 15" >&2
    exit 1
  fi
done

dir=$(mktemp -d "${TMPDIR:-/tmp}/tessel-pg.XXXXXX")
chmod 755 "$dir"
# initdb and the server refuse to run as root: as root they run as the postgres account.
as=()
if [ "$(id -u)" -eq 0 ]; then
  as=(runuser -u postgres --)
  chown postgres "$dir"
fi
stop() {
  "${as[@]}" "$bin/pg_ctl" -D "$dir/data" -m immediate stop > /dev/null 2>&1 || true
  rm -rf "$dir"
}
trap stop EXIT

password=tessel-$RANDOM$RANDOM
printf '%s\n' "$password" > "$dir/pwfile"
[ ${#as[@]} -eq 0 ] || chown postgres "$dir/pwfile"
"${as[@]}" "$bin/initdb" -D "$dir/data" -U tessel --pwfile="$dir/pwfile" -A scram-sha-256 -E UTF8 --no-locale \
  > "$dir/initdb.log" 2>&1 || { cat "$dir/initdb.log" >&2; echo "private_cluster.sh: initdb failed" >&2; exit 1; }
rm -f "$dir/pwfile"
port=$((20000 + RANDOM % 20000))
# $TESSEL_PG_SERVER start|stop: the command's way to take the server away and bring it back.
cat > "$dir/server" <<SERVER
#!/usr/bin/env bash
case "\$1" in
  start) exec ${as[*]} "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -t 60 \\
           -o "-c listen_addresses='' -c unix_socket_directories='$dir' -p $port -c fsync=off -c full_page_writes=off" start ;;
  stop) exec ${as[*]} "$bin/pg_ctl" -D "$dir/data" -m immediate -w stop ;;
esac
SERVER
chmod 755 "$dir/server"
"$dir/server" start > /dev/null || { cat "$dir/server.log" >&2; echo "private_cluster.sh: the server did not start" >&2; exit 1; }

export PATH=$bin:$PATH PGHOST=$dir PGPORT=$port PGUSER=tessel PGDATABASE=tessel_test PGPASSFILE=$dir/pgpass
export TESSEL_PG_PASSWORD=$password TESSEL_PG_SERVER=$dir/server
printf '*:*:*:tessel:%s\n' "$password" > "$PGPASSFILE"
chmod 600 "$PGPASSFILE"
"$bin/psql" -q -v ON_ERROR_STOP=1 -d postgres -c "CREATE DATABASE tessel_test" > /dev/null
"$bin/psql" -q -v ON_ERROR_STOP=1 -c "CREATE EXTENSION postgis" > /dev/null ||
  { echo "private_cluster.sh: CREATE EXTENSION postgis failed; scripts/install-deps.sh installs PostGIS 3" >&2; exit 1; }
"$@"
