#!/usr/bin/env bash
# Installs every Debian package vantrel1 needs to build, test, fuzz and benchmark.
# Idempotent: when everything is present it prints nothing and touches nothing.
set -euo pipefail

PACKAGES=(
  build-essential g++ cmake ninja-build pkg-config
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev qt6-base-dev-tools libqt6svg6-dev libgl-dev
  libproj-dev proj-data proj-bin
  fonts-dejavu-core xvfb xauth
  clang libclang-rt-dev
  nlohmann-json3-dev zlib1g-dev libpugixml-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
echo "setup: installing ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq >/dev/null
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
