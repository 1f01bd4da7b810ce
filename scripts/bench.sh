#!/usr/bin/env bash
# Builds the benchmarks in a Release build and runs them on a large demo
# shop (made once in bench/, about a minute). Extra arguments go to tpvbench.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/instalar.sh

build=${TPV_BENCH_BUILD_DIR:-build-bench}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTPV_SANITIZE=OFF -DTPV_TESTS=OFF -DTPV_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j"$(nproc)" --target tpvdemo tpvbench

mkdir -p bench
base=bench/GRANDE.db
[ -f "$base" ] || "$build/tools/tpvdemo" --size large "$base" bench/informes.db
"$build/tools/tpvbench" --base="$base" "$@"
