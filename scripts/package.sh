#!/usr/bin/env bash
# Builds the Debian package build/tessel_<version>_amd64.deb from the Release build in build/.
#
#   scripts/package.sh           build the package
#   scripts/package.sh --check   build it, then check it: its files, lintian, and tessel-batch
#                                dump on its sample job from the package extracted
#
# Install it with `sudo apt install ./build/tessel_*.deb`.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release > /dev/null
cmake --build build --target tessel tessel-batch package_files
version=$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")$/\1/p' build/CPackConfig.cmake)
deb="build/tessel_${version}_$(dpkg --print-architecture).deb"
rm -f "$deb"
(cd build && cpack -G DEB > cpack.log) || { cat build/cpack.log; exit 1; }
echo "Built $deb"
[ "${1:-}" = "--check" ] || exit 0

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The files a user needs are there.
dpkg-deb -c "$deb" | awk '{print $6}' > "$scratch/contents"
for path in ./usr/bin/tessel ./usr/bin/tessel-batch ./usr/share/applications/tessel.desktop \
            ./usr/share/icons/hicolor/scalable/apps/tessel.svg ./usr/share/doc/tessel/copyright \
            ./usr/share/doc/tessel/changelog.gz ./usr/share/doc/tessel/manual/index.md \
            ./usr/share/doc/tessel/manual/getting-started.md ./usr/share/man/man1/tessel.1.gz \
            ./usr/share/man/man1/tessel-batch.1.gz ./usr/share/tessel/samples/T12NR04E.def \
            ./usr/share/tessel/samples/T12NR04E.COR; do
  grep -qxF "$path" "$scratch/contents" || { echo "package lacks $path"; exit 1; }
done
# The libraries it links are declared.
depends=$(dpkg-deb -f "$deb" Depends)
for library in libqt6widgets6 libqt6svg6 libgdal libzip4 qt6-qpa-plugins; do
  grep -q "$library" <<< "$depends" || { echo "Depends lacks $library: $depends"; exit 1; }
done
if command -v desktop-file-validate > /dev/null; then desktop-file-validate packaging/tessel.desktop; fi
# No error from lintian; its warnings are shown.
lintian --fail-on error "$deb"

# The package's own program on its own sample job, copied to a writable folder. The program sits
# in usr/bin with usr/share/tessel beside it, so it takes the user's folder as its ToolFolder:
# made here, under XDG_DATA_HOME, with the master copies of the support files.
dpkg-deb -x "$deb" "$scratch/root"
cp -r "$scratch/root/usr/share/tessel/samples" "$scratch/job"
XDG_DATA_HOME="$scratch/data" "$scratch/root/usr/bin/tessel-batch" dump "$scratch/job/T12NR04E.def" > "$scratch/dump.json"
grep -q '"PointCount"' "$scratch/dump.json" || { echo "tessel-batch dump printed no point store"; exit 1; }
[ -s "$scratch/data/tessel/Nad27.con" ] || { echo "no tool folder of the user's in XDG_DATA_HOME"; exit 1; }
[ ! -e "$scratch/root/usr/bin/Tessel.hst" ] || { echo "the installed program wrote beside itself"; exit 1; }
echo "Package checked: $deb"
