#!/usr/bin/env bash
# Installs what is needed, builds with AddressSanitizer and
# UndefinedBehaviorSanitizer, and runs every test on SQLite and on a
# throwaway PostgreSQL server.
set -euo pipefail
cd "$(dirname "$0")/.."
raiz=$PWD

scripts/instalar.sh

build=${TPV_BUILD_DIR:-build-test}
# The benchmarks are built here too, so that they keep compiling; they are
# run by scripts/bench.sh on a Release build, never here.
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Debug -DTPV_SANITIZE=ON -DTPV_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j"$(nproc)"

pgdir=""
if [ -z "${TPV_PG_URI:-}" ]; then
  pgdir=$(mktemp -d /tmp/tpv-pg.XXXXXX)
  trap '"$raiz/scripts/pg_cluster.sh" stop "$pgdir"' EXIT
  port=$((20000 + RANDOM % 20000))
  if uri=$(scripts/pg_cluster.sh start "$pgdir" "$port"); then
    export TPV_PG_URI="$uri"
  else
    echo "AVISO: no se pudo arrancar PostgreSQL; sus pruebas se saltarán (o fallarán en CI)." >&2
    cat "$pgdir"/*.log >&2 || true
  fi
fi

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
cd "$build"
ctest --output-on-failure -j"$(nproc)"
