#!/usr/bin/env bash
# Installs what is needed, builds, makes the demo shop and runs the till on it.
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

# The till only starts under the suite's shell: a stand-in plays its part here.
export TPV_DATABASE="$PWD/$base"
export TPV_DSN_VELMORA="$PWD/$informes"
export TPV_SUITE_CONF="${TPV_SUITE_CONF:-$PWD/$demo/suite.conf}"
touch "$TPV_SUITE_CONF"
"$build/app/suite_shell" &
shell=$!
trap 'kill $shell 2>/dev/null; wait $shell 2>/dev/null || true' EXIT
sleep 0.2
echo
echo "Arrancando el TPV sobre la tienda de demostración:"
"$build/app/tpv" "$@"
