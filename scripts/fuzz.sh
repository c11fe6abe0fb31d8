#!/usr/bin/env bash
# Fuzzes the readers of the program's files with libFuzzer (clang).
#   scripts/fuzz.sh [SEGUNDOS [OBJETIVO...]]  each target (default: all) for SEGUNDOS (default 3600) or
#                                             EJECUCIONES runs when that is set, whichever comes first, at
#                                             the lowest priority; corpus growing in build-fuzz/corpus,
#                                             findings in build-fuzz/hallazgos, the closing figures in
#                                             build-fuzz/informe-OBJETIVO.txt
#   scripts/fuzz.sh --humo [CARPETA]          every target for 2000 runs from the seed corpus (the test
#                                             suite's smoke run); exits 77 (skipped) where clang is absent
# Targets: Cabecera Paleta Leyenda Raster Clase Medias Puntos Metadatos.
set -euo pipefail
cd "$(dirname "$0")/.."
raiz=$PWD
humo=0
if [[ "${1:-}" == "--humo" ]]; then humo=1; shift; fi
todos=(Cabecera Paleta Leyenda Raster Clase Medias Puntos Metadatos)
if [[ $humo == 1 ]]; then
  arbol=${1:-$raiz/build-fuzz}
  objetivos=("${todos[@]}")
else
  arbol=$raiz/build-fuzz
  segundos=${1:-3600}
  shift || true
  objetivos=("$@")
  [[ ${#objetivos[@]} -gt 0 ]] || objetivos=("${todos[@]}")
fi
clangxx=$(command -v clang++-14 || command -v clang++ || true)
if [[ -z "$clangxx" ]]; then
  echo "clang no está instalado: se omiten los objetivos de fuzzing"
  exit 77
fi
lanzador=()
command -v ccache >/dev/null && lanzador=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$arbol" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER="$clangxx" "${lanzador[@]}" \
  -DORVELA_FUZZ=ON -DORVELA_DESKTOP=OFF -DORVELA_BENCH=OFF >/dev/null
cmake --build "$arbol" -j2 --target "${objetivos[@]/#/fuzz_}" >/dev/null
export ASAN_OPTIONS=${ASAN_OPTIONS:-allocator_may_return_null=1:detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
# Seeds: real files (the Landsat headers and metadata) and files the program
# writes (palettes, legends, class files, control points, pairs).
for o in "${objetivos[@]}"; do
  largo=4096
  [[ $o == Metadatos ]] && largo=8192  # a real metadata file is about 5 kB
  semillas=$raiz/fuzz/corpus/${o,,}
  if [[ $humo == 1 ]]; then
    # New inputs go to the first folder: a scratch one, so the seeds stay as committed.
    nuevo=$(mktemp -d)
    "$arbol/bin/fuzz_$o" -runs=2000 -seed=1 -max_len=$largo -artifact_prefix="$arbol/" "$nuevo" "$semillas" 2>&1 | tail -n 1
    rm -rf "$nuevo"
  else
    mkdir -p "$arbol/corpus/${o,,}" "$arbol/hallazgos/${o,,}"
    nice -n 19 "$arbol/bin/fuzz_$o" -max_total_time="$segundos" -runs="${EJECUCIONES:--1}" -max_len=$largo \
      -print_final_stats=1 -artifact_prefix="$arbol/hallazgos/${o,,}/" "$arbol/corpus/${o,,}" "$semillas" \
      > "$arbol/informe-$o.txt" 2>&1 || true
    grep -E "^(stat::number_of_executed_units|stat::average_exec_per_sec)|ERROR|SUMMARY|Test unit written" \
      "$arbol/informe-$o.txt" | sed "s/^/$o: /"
  fi
done
