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
demo=$(cd "$demo" && pwd)
base="$demo/PERFUMERIA.db"
informes="$demo/informes.db"
# The pictures of the touch panels go to the photo folder of the till, the
# "fotos" folder beside its program.
"$build/tools/tpvdemo" --force --fotos "$build/app/fotos" "$base" "$informes"
# The demo terminal has a pole display (port 1), shown on the screen below.
"$build/tools/tpvsql" "$base" \
  -e "insert into relaciones_fijas (indice, datoa, otros) values ('VisorCAJA1', 'Perfumería La Plaza', '1')" >/dev/null

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

export TPV_SUITE_CONF="${TPV_SUITE_CONF:-$demo/suite.conf}"
export TPV_LOG="${TPV_LOG:-$demo/tpv.log}"
touch "$TPV_SUITE_CONF"

# With a script named, or without a display, a whole sale of the demo scenario
# (or the script given) runs through the scripted runner, which plays the
# suite's shell itself, and its transcript is printed.
guion_demo() {
  local guion=${1:-tests/guiones/demo.guion}
  echo
  echo "La caja con el guion $guion:"
  "$build/tools/tpvguion/tpvguion" --base "$base" --informes "$informes" --papel "$demo/papel" "$guion"
}
if [ $# -gt 0 ]; then
  guion_demo "$1"
  exit
fi

# The till in its window. It only starts under the suite's shell, so the
# stand-in for the shell runs beside it while the till is open.
export TPV_DATABASE="$base" TPV_DSN_VELMORA="$informes"
"$build/app/suite_shell" &
shell=$!
trap 'kill "$shell" 2>/dev/null || true' EXIT
echo
echo "La caja en su ventana (lo impreso queda en $demo/papel):"
mkdir -p "$demo/papel"
# The demo shop's printers save what they print in that folder.
ajuste() { grep -q "^$1 *=" "$TPV_SUITE_CONF" || echo "$1=$2" >>"$TPV_SUITE_CONF"; }
ajuste impresoras "Ticketera|Oficina"
ajuste impresora.Ticketera "carpeta:$demo/papel"
ajuste impresora.Oficina "carpeta:$demo/papel"
ajuste impresora.Oficina.driver PDF
# The drawer's port of the demo terminal: its bytes go to a file there too.
ajuste puerto./dev/usb/lp0 "$demo/papel/cajon"
# Without a real pole display, what it would show is mirrored on the screen.
ajuste visor_en_pantalla SI
set +e
"$build/app/tpv"
fin=$?
set -e
if [ "$fin" = 3 ]; then
  echo "Sin pantalla: se juega la venta de demostración con el guion."
  guion_demo
  exit
fi
exit "$fin"
