#!/usr/bin/env bash
# Installs what Tessel needs to build and test on Debian 12, when it is missing.
set -euo pipefail

# clang-14 and its runtime build the sanitizer tests and the libFuzzer targets.
# libgdal-dev writes the GIS and CAD exports; gdal-bin brings ogrinfo, which the export tests use.
# postgresql-15 and postgresql-15-postgis-3 run the private database cluster of the PostGIS export
# test (tests/postgis); the test starts and stops its own cluster, nothing system-wide.
# dpkg-dev (dpkg-shlibdeps), lintian and desktop-file-utils make and check the Debian package.
# jlha-utils is the lha that makes LZH archives (on Java; lhasa only extracts), for the LZH tests.
# wine and g++-mingw-w64-x86-64-posix run the launch tests with the stand-in tool built as a
# Windows program (tests/standin); with googletest's sources they also build the headless code
# for Windows and run its tests (scripts/test-windows.sh).
packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libgl-dev nlohmann-json3-dev libgtest-dev libzip-dev zip unzip libeigen3-dev
          libgdal-dev gdal-bin
          postgresql-15 postgresql-15-postgis-3
          xvfb xauth
          clang-14 libclang-rt-14-dev
          jlha-utils
          dpkg-dev lintian desktop-file-utils
          g++-mingw-w64-x86-64-posix googletest wine wine64)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
