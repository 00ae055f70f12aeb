#!/usr/bin/env bash
# Makes every write, flush, rename and some thousand allocations fail, one after the
# other, over all that the programs save, and looks at the files after each: about an
# hour. The tests run a share of it.
#   scripts/faults.sh                  all operations
#   scripts/faults.sh --only NAME      those whose names begin so
#   scripts/faults.sh --list           their names
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

install_missing "${build_packages[@]}"
build release fault_proof
QT_QPA_PLATFORM=offscreen exec build/release/tests/fault_proof --all "$@"
