#!/usr/bin/env bash
# run_fuzz.sh SECONDS [ENTRY...]: runs each fuzz entry, or those named, for a time.
# Inputs that broke an entry are left in build/fuzz/findings; new inputs that reach
# new code stay in build/fuzz/corpus and serve the next run.
set -eu

seconds=${1:?"usage: run_fuzz.sh SECONDS [ENTRY...]"}
shift
source=$(cd "$(dirname "$0")/../.." && pwd)
cd "$source"
. scripts/common.sh
build fuzz fuzzers
[ $# -gt 0 ] || set -- $(ls build/fuzz/fuzz)

status=0
mkdir -p build/fuzz/findings
for entry in "$@"; do
    mkdir -p "build/fuzz/corpus/$entry"
    echo "== $entry, $seconds s"
    QT_QPA_PLATFORM=offscreen \
        ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1 \
        LSAN_OPTIONS="suppressions=$source/tests/lsan.supp" \
        "build/fuzz/fuzz/$entry" -max_total_time="$seconds" -rss_limit_mb=1024 \
        -malloc_limit_mb=512 -timeout=20 -max_len=65536 -close_fd_mask=3 \
        -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$entry-" \
        "build/fuzz/corpus/$entry" "tests/fuzz/corpus/$entry" \
        >"build/fuzz/$entry.log" 2>&1 || { status=1; echo "   FAILED, see build/fuzz/$entry.log"; }
    grep -E 'stat::(number_of_executed_units|peak_rss_mb)' "build/fuzz/$entry.log" || true
done
exit $status
