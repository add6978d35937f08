#!/usr/bin/env bash
# Installs every Debian package Sonamark needs to build, run and test.
# Idempotent: when everything is present it prints nothing and touches nothing.
set -euo pipefail

PACKAGES=(
  # build
  build-essential cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev libqt6opengl6-dev
  libespeak-ng-dev libsndfile1-dev libsoxr-dev libmp3lame-dev libhunspell-dev
  libx11-dev libxtst-dev libxi-dev libxfixes-dev libxkbcommon-dev libxcb1-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  librsvg2-bin
  # run
  espeak-ng-data hunspell-en-us qt6-qpa-plugins libqt6multimedia6
  gstreamer1.0-plugins-base gstreamer1.0-pulseaudio
  # test and headless runs
  bc xvfb xauth fluxbox trayer xclip xdotool x11-utils x11-apps x11-xkb-utils
  pulseaudio pulseaudio-utils poppler-utils antiword procps imagemagick python3
  sox libsox-fmt-base ffmpeg mpg123 lame espeak-ng
  libgif-dev qt6-image-formats-plugins
  hunspell-de-de hunspell xdg-utils
  groff-base
)

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "install-deps: run as root or install sudo" >&2; exit 1; }
  SUDO=sudo
fi
echo "install-deps: installing ${#missing[@]} package(s): ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
