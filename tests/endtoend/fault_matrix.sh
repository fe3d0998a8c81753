#!/usr/bin/env bash
# Tries every fault with every request to a device, for about ten minutes, and prints what the user saw, after
# how many milliseconds for the first time and at last, and the processor time of the window until then:
# fault_matrix.sh [PROGRAM [GTEST_OPTION...]]
# Ends with the status of the tests.
set -euo pipefail

root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../..
program=${1:-$root/build/ci/bin/vek_endtoend_faults_test}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

status=0
VEK_FAULT_TABLE=$work/table QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$program" "${@:2}" >"$work/log" 2>&1 || status=$?
touch "$work/table"
awk -F'|' '
    function row(request, fault, first, over, processor, seen) {
        printf "%-28s %-15s %6s %6s %5s  %s\n", request, fault, first, over, processor, seen
    }
    BEGIN { row("request", "fault", "first", "over", "proc.", "seen") }
    { row($1, $2, $3, $4, $5, $6) }' "$work/table"
grep -vE 'propagateSizeHints|RUN|  OK |XDG_RUNTIME_DIR' "$work/log"
exit "$status"
