#!/usr/bin/env bash
# Installs the Debian packages the project builds and tests with, only those that are missing.
# CI and developers run as root; anyone else gets sudo.
set -euo pipefail

packages=(
    build-essential clang cmake ninja-build pkg-config git
    libgtest-dev libgmock-dev libbenchmark-dev
    libsqlite3-dev libfreetype-dev libpng-dev libsdl2-dev libical-dev libicu-dev
    fonts-wqy-microhei
    python3 python3-vobject
    xvfb
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
