#!/usr/bin/env bash
# Installs what is missing, builds, and starts Tessel with File > Open in the sample job's folder.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
# Tessel.hst beside the program remembers the last job folder: point it at the samples.
printf '%s/\r\n' "$PWD/samples" > build/bin/Tessel.hst
exec build/bin/tessel "$@"
