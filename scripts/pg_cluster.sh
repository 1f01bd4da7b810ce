#!/usr/bin/env bash
# A throwaway PostgreSQL cluster on loopback for the tests.
#   pg_cluster.sh start DIR PORT   -> prints the admin URI
#   pg_cluster.sh stop DIR
set -euo pipefail

accion=${1:?start|stop}
dir=${2:?carpeta}
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
[ -n "$bin" ] || { echo "PostgreSQL no está instalado" >&2; exit 1; }

como_postgres() {
  if [ "$(id -u)" -eq 0 ]; then runuser -u postgres -- "$@"; else "$@"; fi
}

case "$accion" in
  start)
    port=${3:?puerto}
    mkdir -p "$dir"
    [ "$(id -u)" -eq 0 ] && chown postgres "$dir"
    como_postgres "$bin/initdb" -D "$dir/data" -U postgres -A trust -E UTF8 --locale=C.UTF-8 >"$dir/initdb.log" 2>&1
    como_postgres "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w \
      -o "-c listen_addresses=127.0.0.1 -p $port -k $dir -c fsync=off -c synchronous_commit=off -c full_page_writes=off" \
      start >/dev/null
    echo "postgresql://postgres@127.0.0.1:$port/postgres"
    ;;
  stop)
    [ -d "$dir/data" ] && como_postgres "$bin/pg_ctl" -D "$dir/data" -m immediate stop >/dev/null 2>&1 || true
    rm -rf "$dir"
    ;;
  *) echo "uso: $0 start DIR PORT | stop DIR" >&2; exit 2 ;;
esac
