#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks to build and test zento.
set -euo pipefail
packages=(cmake ninja-build g++ clang pkg-config libgtest-dev libgmock-dev libbenchmark-dev
          zlib1g-dev liblua5.1-0-dev liblapack-dev libomp-dev libclang-rt-dev valgrind
          coinor-clp coinor-cbc glpk-utils)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
$SUDO apt-get update
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
