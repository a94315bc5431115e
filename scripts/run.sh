#!/usr/bin/env bash
# Installs what is needed, builds Fenwave in release mode, starts a fresh server, sends it a
# system (the example office unless another file is given) through the client tool, which
# prints the received power, path loss and path count of every sample point and access point
# and writes the same as CSV, then stops the server by its process id.
#
#   bash scripts/run.sh [SYSTEM] [CSV]     (defaults: examples/office.xml, results.csv)
#
# FENWAVE_PORT picks the port (default 12000); the server's log goes to build/run/.
set -euo pipefail
cd "$(dirname "$0")/.."
root="$(pwd)"
system="$(realpath "${1:-examples/office.xml}")"
csv="$(realpath -m "${2:-results.csv}")"
port="${FENWAVE_PORT:-12000}"

bash scripts/install-deps.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build/release -j"$(nproc)" --target LibServerMain fenwave_client

# True while something listens on the port: read from the kernel's table, since a probe
# connection would occupy the single-client server.
listening() {
    local hex
    hex="$(printf '%04X' "$port")"
    awk -v port=":$hex" '$2 ~ port"$" && $4 == "0A" { found = 1 } END { exit !found }' \
        /proc/net/tcp
}

if listening; then
    echo "run.sh: port $port is in use; set FENWAVE_PORT to a free one" >&2
    exit 1
fi
mkdir -p build/run
(cd build/run && exec "$root/build/release/LibServerMain" "-p$port") &
server=$!
# The server ends its loop on a signal only once its pending accept returns, so a server
# still there after a moment is killed outright; either way by its process id.
stop_server() {
    kill "$server" 2>/dev/null || return 0
    for _ in $(seq 10); do
        kill -0 "$server" 2>/dev/null || break
        sleep 0.1
    done
    kill -9 "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
}
trap stop_server EXIT
for _ in $(seq 100); do
    listening && break
    sleep 0.1
done
./build/release/fenwave_client --port "$port" --quiet --csv "$csv" "$system"
echo "results written to $csv"
