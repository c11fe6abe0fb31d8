#!/usr/bin/env bash
# Installs the Debian 12 packages that Orvela builds and runs with, when any is missing.
set -euo pipefail
paquetes=(g++ cmake make qt6-base-dev qt6-base-dev-tools libgl-dev libtbb-dev libpng-dev libeigen3-dev qt6-translations-l10n libgtest-dev libbenchmark-dev xvfb xauth)
faltan=()
for p in "${paquetes[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || faltan+=("$p")
done
if [ ${#faltan[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${faltan[@]}"
fi
