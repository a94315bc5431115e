#!/usr/bin/env bash
# Installs the Debian packages that Fenwave builds with, skipping those already there.
set -euo pipefail

packages=(cmake g++ make pkg-config libtinyxml2-dev libtinyxml-dev libgtest-dev libgmock-dev
          libbenchmark-dev)
missing=()
for package in "${packages[@]}"; do
    dpkg -s "$package" >/dev/null 2>&1 || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
