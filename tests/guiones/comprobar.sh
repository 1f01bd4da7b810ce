#!/usr/bin/env bash
# Runs one scenario on a fresh small demo shop and compares its transcript
# with the expected one.
#   comprobar.sh TPVGUION TPVDEMO ESCENARIO.guion [sqlite|postgresql]
# The expected transcript is ESCENARIO.esperado; a line "# salida N" in the
# scenario gives the exit status it must end with (0 when absent), "# reloj
# dd/mm/yyyy hh:mm:ss" the clock's start, "# ajuste clave=valor" a setting. On
# PostgreSQL the shop is a new database of the server in TPV_PG_URI.
set -uo pipefail

tpvguion=$1
tpvdemo=$2
escenario=$3
motor=${4:-sqlite}
esperado="${escenario%.guion}.esperado"

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

informes="$tmp/informes.db"
if [[ $motor == postgresql ]]; then
  if [[ -z ${TPV_PG_URI:-} ]]; then
    echo "sin TPV_PG_URI: se omite"
    exit 77
  fi
  nombre="guion_$(basename "${escenario%.guion}")_$$"
  base="${TPV_PG_URI%/*}/$nombre"
else
  base="$tmp/PERFUMERIA.db"
fi

reloj=$(sed -n 's/^# reloj //p' "$escenario" | head -1)
reloj=${reloj:-23/11/2026 10:00:00}
# The shop's dates are counted from the clock's day, not from the day the test runs.
"$tpvdemo" --force --hoy "${reloj%% *}" "$base" "$informes" >"$tmp/demo.log" 2>&1 || { cat "$tmp/demo.log"; exit 1; }

export TPV_SUITE_CONF="$tmp/suite.conf" TPV_LOG="$tmp/tpv.log"
# Lines "# ajuste clave=valor" of the scenario go to the suite's settings.
sed -n 's/^# ajuste //p' "$escenario" >"$TPV_SUITE_CONF"
"$tpvguion" --base "$base" --informes "$informes" --reloj "$reloj" \
  --papel "$tmp/papel" "$escenario" >"$tmp/salida" 2>"$tmp/errores"
estado=$?

if [[ $motor == postgresql ]]; then
  psql -q "$TPV_PG_URI" -c "drop database if exists $nombre" >/dev/null 2>&1 || true
fi

# Files the run wrote under its temporary folder are named from TMP.
sed -i "s|$tmp|TMP|g" "$tmp/salida"

esperada=$(sed -n 's/^# salida //p' "$escenario" | head -1)
fallo=0
if ! diff -u "$esperado" "$tmp/salida"; then fallo=1; fi
if [[ $estado != "${esperada:-0}" ]]; then
  echo "salida $estado, se esperaba ${esperada:-0}"
  cat "$tmp/errores"
  fallo=1
fi
exit $fallo
