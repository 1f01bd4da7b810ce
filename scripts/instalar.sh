#!/usr/bin/env bash
# Installs what tpv needs to build, test and run, from Debian's packages.
# Does nothing when everything is already there.
set -euo pipefail

paquetes=(
  build-essential cmake pkg-config ccache
  libsqlite3-dev sqlite3
  libpq-dev postgresql postgresql-contrib
  libgtest-dev libgmock-dev libbenchmark-dev
  libcups2-dev libcairo2-dev libpango1.0-dev poppler-utils
  clang libclang-rt-14-dev
  qt6-base-dev xvfb xauth fonts-dejavu-core
)

faltan=()
for p in "${paquetes[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || faltan+=("$p")
done

if [ ${#faltan[@]} -gt 0 ]; then
  echo "Instalando: ${faltan[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $sudo_cmd apt-get update -q
  $sudo_cmd apt-get install -y -q --no-install-recommends "${faltan[@]}"
fi
