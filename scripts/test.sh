#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test; then builds the headless libraries, their
# tests and the fuzz targets with AddressSanitizer and UndefinedBehaviorSanitizer into build-san/
# and runs them there, replaying the fuzz corpus and every past crash. Any sanitizer report fails
# the run. Last, the headless code is built for Windows and its tests run under Wine
# (scripts/test-windows.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j2

# The Debian package: its files, lintian, and its own tessel-batch on its sample job.
scripts/package.sh --check

# The sanitizer build: headless only, lightly optimised to keep its build short.
compiler=$(command -v clang++-14 || command -v clang++ || command -v g++)
cmake -S . -B build-san -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -g1" \
  -DCMAKE_CXX_COMPILER="$compiler" -DTESSEL_BUILD_DESKTOP=OFF -DTESSEL_SANITIZE=ON > /dev/null
cmake --build build-san
export ASAN_OPTIONS=halt_on_error=1:detect_leaks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
ctest --test-dir build-san --output-on-failure -j2

scripts/test-windows.sh
