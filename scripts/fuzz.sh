#!/usr/bin/env bash
# Fuzzes the readers of the image store with libFuzzer (clang).
#   scripts/fuzz.sh [SEGUNDOS]        every target for SEGUNDOS each (default 3600),
#                                     corpus growing in build-fuzz/corpus, findings in build-fuzz/hallazgos
#   scripts/fuzz.sh --humo [CARPETA]  every target for 2000 runs from the seed corpus (the test suite's
#                                     smoke run); exits 77 (skipped) where clang is absent
set -euo pipefail
cd "$(dirname "$0")/.."
raiz=$PWD
humo=0
if [[ "${1:-}" == "--humo" ]]; then humo=1; shift; fi
arbol=${1:-$raiz/build-fuzz}
[[ $humo == 1 ]] || arbol=$raiz/build-fuzz
segundos=${1:-3600}
clangxx=$(command -v clang++-14 || command -v clang++ || true)
if [[ -z "$clangxx" ]]; then
  echo "clang no está instalado: se omiten los objetivos de fuzzing"
  exit 77
fi
lanzador=()
command -v ccache >/dev/null && lanzador=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$arbol" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER="$clangxx" "${lanzador[@]}" \
  -DORVELA_FUZZ=ON -DORVELA_DESKTOP=OFF -DORVELA_BENCH=OFF >/dev/null
objetivos=(Cabecera Paleta Leyenda Raster)
cmake --build "$arbol" -j2 --target "${objetivos[@]/#/fuzz_}" >/dev/null
export ASAN_OPTIONS=${ASAN_OPTIONS:-allocator_may_return_null=1:detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
for o in "${objetivos[@]}"; do
  semillas=$raiz/fuzz/corpus/${o,,}
  if [[ $humo == 1 ]]; then
    # New inputs go to the first folder: a scratch one, so the seeds stay as committed.
    nuevo=$(mktemp -d)
    "$arbol/bin/fuzz_$o" -runs=2000 -seed=1 -max_len=4096 -artifact_prefix="$arbol/" "$nuevo" "$semillas" 2>&1 | tail -n 1
    rm -rf "$nuevo"
  else
    mkdir -p "$arbol/corpus/${o,,}" "$arbol/hallazgos/${o,,}"
    "$arbol/bin/fuzz_$o" -max_total_time="$segundos" -max_len=4096 -print_final_stats=1 \
      -artifact_prefix="$arbol/hallazgos/${o,,}/" "$arbol/corpus/${o,,}" "$semillas" 2>&1 | tail -n 15
  fi
done
