#!/usr/bin/env bash
# Installs what is needed, then builds and runs the whole test suite three times: plainly,
# under AddressSanitizer and UndefinedBehaviorSanitizer, and under ThreadSanitizer. The
# server that tests start is built in the same tree, so it runs under the same sanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
jobs="$(nproc)"

run_suite() {
    local dir="$1"; shift
    cmake -S . -B "$dir" -DFENWAVE_BENCH=OFF "$@" >/dev/null
    cmake --build "$dir" -j"$jobs"
    ctest --test-dir "$dir" --output-on-failure -j"$jobs"
}

run_suite build/tests -DCMAKE_BUILD_TYPE=RelWithDebInfo
ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1 \
    run_suite build/sanitize -DCMAKE_BUILD_TYPE=Debug -DFENWAVE_SANITIZE=ON
TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" \
    run_suite build/tsan -DCMAKE_BUILD_TYPE=Debug -DFENWAVE_TSAN=ON
