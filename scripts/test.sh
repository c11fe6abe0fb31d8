#!/usr/bin/env bash
# Builds Orvela and passes every test: the normal build (unit, CLI and
# headless desktop tests), then the unit tests again under AddressSanitizer
# and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
jobs=$(nproc)
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build -j "$jobs"
(cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs")
cmake -S . -B build-san -DCMAKE_BUILD_TYPE=Debug -DORVELA_SANITIZE=ON -DORVELA_DESKTOP=OFF -DORVELA_BENCH=OFF >/dev/null
cmake --build build-san -j "$jobs" --target orvela_tests
(cd build-san && UBSAN_OPTIONS=print_stacktrace=1 ASAN_OPTIONS=detect_leaks=1 ./bin/orvela_tests --gtest_brief=1)
