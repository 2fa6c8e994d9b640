#!/usr/bin/env bash
# Installs every Debian 12 package that building, running and testing Jelv needs.
# Idempotent: when everything is present it changes nothing and needs no network.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build pkg-config ccache
  qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev libhunspell-dev hunspell-en-us
  libspdlog-dev libfmt-dev libsqlite3-dev libsecret-1-dev libglib2.0-dev libcmark-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  git git-lfs git-flow gnupg nginx-light fcgiwrap openssh-server openssh-client
  xvfb xauth dbus dbus-x11 gnome-keyring fonts-dejavu-core
  python3 time
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi
echo "Installing: ${missing[*]}"
$SUDO apt-get update -q
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
