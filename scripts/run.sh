#!/usr/bin/env bash
# Installs what is needed, builds, makes the demo shop and runs the till on it.
#   scripts/run.sh [GUION]
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/instalar.sh

build=${TPV_BUILD_DIR:-build}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTPV_TESTS=OFF -DTPV_BENCHMARKS=OFF >/dev/null
cmake --build "$build" -j"$(nproc)"

demo=${TPV_DEMO_DIR:-demo}
mkdir -p "$demo"
base="$demo/PERFUMERIA.db"
informes="$demo/informes.db"
"$build/tools/tpvdemo" --force "$base" "$informes"

echo
echo "Resumen de la tienda de demostración ($base):"
"$build/tools/tpvsql" "$base" \
  -e "select nombre, telefono, direccion, numdecimales from opciones" \
  -e "select count(*) as productos from productos" \
  -e "select count(*) as clientes from clientes" \
  -e "select terminal, identificador, empleado from opciones_terminal"

echo
echo "Otros programas abren la base con la extensión $build/lib/tpvjet.so:"
echo "  sqlite3 $base  y luego  .load $build/lib/tpvjet"

# Until the till has its window, a whole sale of the demo scenario (or the
# script given) runs through the scripted runner, which plays the suite's
# shell itself, and its transcript is printed.
guion=${1:-tests/guiones/demo.guion}
export TPV_SUITE_CONF="${TPV_SUITE_CONF:-$PWD/$demo/suite.conf}"
export TPV_LOG="${TPV_LOG:-$PWD/$demo/tpv.log}"
touch "$TPV_SUITE_CONF"
echo
echo "La caja con el guion $guion:"
"$build/tools/tpvguion/tpvguion" --base "$base" --informes "$informes" --papel "$demo/papel" "$guion"
