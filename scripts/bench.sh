#!/usr/bin/env bash
# Builds the benchmarks in a Release build and runs them on a large demo
# shop: an SQLite file made once in bench/ (about a minute) and, when
# TPV_PG_URI names a PostgreSQL server, the same shop in its database
# tpv_bench_grande (made once too), side by side. Extra arguments go to
# tpvbench (--benchmark_filter=..., --benchmark_repetitions=...).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/instalar.sh

build=${TPV_BENCH_BUILD_DIR:-build-bench}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTPV_SANITIZE=OFF -DTPV_TESTS=OFF -DTPV_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j"$(nproc)" --target tpvdemo tpvbench

mkdir -p bench
base=bench/GRANDE.db
[ -f "$base" ] || "$build/tools/tpvdemo" --size large "$base" bench/informes.db
bases=(--base="$base")

if [ -n "${TPV_PG_URI:-}" ]; then
  # The server's URI with another database: postgresql://user@host:port/DB?options
  con_base() { sed -E "s#^([a-z]+://[^/?]*)(/[^?]*)?#\1/$2#" <<<"$1"; }
  pg=$(con_base "$TPV_PG_URI" tpv_bench_grande)
  if [ "$(psql "$pg" -tAc 'select count(*) from productos' 2>/dev/null || true)" != 200000 ]; then
    "$build/tools/tpvdemo" --size large --force "$pg" "$(con_base "$TPV_PG_URI" tpv_bench_informes)"
  fi
  bases+=(--base="$pg")
fi

"$build/tools/tpvbench" "${bases[@]}" "$@"
