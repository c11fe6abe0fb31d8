#!/usr/bin/env bash
# Takes the README's picture (docs/captura.png) of a real session under a
# virtual X server: three bands of the practice scene and its ground truth
# ("verdad", with its legend), each fitted to its window, and the histogram
# of band 4. Needs a built tree (build/) and xvfb.
set -euo pipefail
cd "$(dirname "$0")/.."
escena="$(mktemp -d)"
ajustes="$(mktemp -d)"
trap 'rm -rf "$escena" "$ajustes"' EXIT
./build/bin/orvela-cli escena "$escena" >/dev/null
# A private settings folder: the picture does not depend on this machine's.
XDG_CONFIG_HOME="$ajustes" xvfb-run -a -s "-screen 0 1720x760x24" ./build/bin/orvela \
  --captura docs/captura.png \
  "$escena/tm3.ozm" --orden 32847 \
  "$escena/tm4.ozm" --orden 32847 --orden 32862 \
  "$escena/tm5.ozm" --orden 32847 \
  "$escena/verdad.ozm" --orden 32847 --orden 32822
echo "docs/captura.png"
