#!/usr/bin/env bash
# Installs what is needed, builds Fenwave in release mode and starts the server on
# 127.0.0.1:12000 (Ctrl-C, then one more connection, or a shutdown message, ends it).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build/release -j"$(nproc)"
exec ./build/release/LibServerMain "$@"
