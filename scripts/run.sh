#!/usr/bin/env bash
# Builds Orvela, writes the practice scene to ~/Orvela/escena the first time,
# and starts the desktop application with one of its bands open.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build -j "$(nproc)" --target orvela orvela-cli orvela_datos
escena="${ORVELA_ESCENA:-$HOME/Orvela/escena}"
[ -f "$escena/tm4.ozm" ] || ./build/bin/orvela-cli escena "$escena"
exec ./build/bin/orvela "$escena/tm4.ozm"
