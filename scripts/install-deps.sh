#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when they are missing.
# Sourced or run by run.sh and test.sh; safe to run again. Packages named as arguments are
# installed too (scripts/package.sh adds its packaging tools this way, and
# scripts/windows-core-check.sh its cross compilers and Wine).
set -euo pipefail

packages=(
  build-essential cmake pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-serialport-dev qt6-svg-dev libgl-dev qt6-qpa-plugins
  fonts-liberation2 fonts-ipaexfont-gothic
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  clang libclang-rt-14-dev
  locales
  desktop-file-utils appstream shared-mime-info libglib2.0-bin
  poppler-utils
)
packages+=("$@")

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -eq 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
    echo "Installing with sudo: ${missing[*]}"
    sudo DEBIAN_FRONTEND=noninteractive apt-get update -qq
    sudo DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  else
    echo "These Debian packages are missing; install them and run again:" >&2
    echo "  sudo apt-get install ${missing[*]}" >&2
    exit 1
  fi
fi

[ $# -gt 0 ] && exit 0

# The number-format tests run under a German locale as well; generate it once when we may.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  if [ "$(id -u)" -eq 0 ] && [ -f /etc/locale.gen ]; then
    sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen
    grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' >> /etc/locale.gen
    locale-gen >/dev/null 2>&1 || echo "note: could not generate de_DE.UTF-8; the locale tests will be skipped"
  else
    echo "note: de_DE.UTF-8 is not available; the locale tests will be skipped"
  fi
fi
