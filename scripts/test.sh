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
# The compiler's cache makes a second run, even from another checkout, rebuild
# only what changed: paths are taken relative to the checkout.
export CCACHE_BASEDIR="$raiz"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Debug -DTPV_SANITIZE=ON -DTPV_BENCHMARKS=ON \
  -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache >/dev/null
cmake --build "$build" -j"$(nproc)"

pgdir=""
xvfb=""
limpiar() {
  [ -n "$pgdir" ] && "$raiz/scripts/pg_cluster.sh" stop "$pgdir"
  [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
  return 0
}
trap limpiar EXIT

# The windows' tests draw on one virtual display started here for the whole
# run (without one they fall back to Qt's offscreen platform).
if [ -z "${DISPLAY:-}" ] && command -v Xvfb >/dev/null; then
  numero=$(mktemp /tmp/tpv-xvfb.XXXXXX)
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$numero" >/dev/null 2>&1 &
  xvfb=$!
  for _ in $(seq 100); do [ -s "$numero" ] && break; sleep 0.05; done
  if [ -s "$numero" ]; then export DISPLAY=":$(head -n1 "$numero")"; fi
  rm -f "$numero"
fi

if [ -z "${TPV_PG_URI:-}" ]; then
  pgdir=$(mktemp -d /tmp/tpv-pg.XXXXXX)
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
# The display is no longer needed.
if [ -n "$xvfb" ]; then kill "$xvfb" 2>/dev/null || true; xvfb=""; fi

# The fuzz targets of the data layer (tests/fuzz): their checked-in cases ran
# above with the tests; with clang's libFuzzer each also runs for a short,
# bounded while (TPV_FUZZ_SEGUNDOS each, 10 by default; 0 skips them). Only
# the data layer and the runtime are built again, instrumented.
cd "$raiz"
segundos=${TPV_FUZZ_SEGUNDOS:-10}
if [ "$segundos" = 0 ]; then
  exit 0
elif ! command -v clang++ >/dev/null || ! echo 'extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }' |
    clang++ -x c++ -fsanitize=fuzzer - -o /dev/null 2>/dev/null; then
  echo "AVISO: sin clang ni libFuzzer: de los objetivos de fuzzing solo se han repetido sus casos." >&2
  exit 0
fi
fuzz=${TPV_FUZZ_BUILD_DIR:-build-fuzz}
CC=clang CXX=clang++ cmake -S tests/fuzz -B "$fuzz" >/dev/null
cmake --build "$fuzz" -j"$(nproc)"
nuevos=$(mktemp -d /tmp/tpv-fuzz.XXXXXX)
trap 'rm -rf "$nuevos"; [ -z "$pgdir" ] || "$raiz/scripts/pg_cluster.sh" stop "$pgdir"' EXIT
mkdir -p "$fuzz/hallazgos"
for objetivo in tests/fuzz/*_fuzz.cpp; do
  nombre=$(basename "$objetivo" .cpp)
  mkdir -p "$nuevos/$nombre"
  # What it finds is left in $fuzz/hallazgos, to be added to the cases once mended.
  if "$fuzz/$nombre" -max_total_time="$segundos" -timeout=10 -rss_limit_mb=2048 -max_len=4096 \
      -dict=tests/fuzz/jet.dict -artifact_prefix="$fuzz/hallazgos/$nombre-" -print_final_stats=1 \
      "$nuevos/$nombre" "tests/fuzz/corpus/${nombre%_fuzz}" >"$nuevos/$nombre.log" 2>&1; then
    echo "$nombre: $(grep -E '^Done' "$nuevos/$nombre.log")"
  else
    tail -n 40 "$nuevos/$nombre.log" >&2
    echo "ERROR: $nombre ha encontrado un fallo (en $fuzz/hallazgos)" >&2
    exit 1
  fi
done
