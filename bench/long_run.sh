#!/usr/bin/env bash
# Hours of use, half an hour of real time: 100,000 events of the monkey, eight virtual hours online with moving sliders,
# a thousand rounds of open, edit, save and undo, and ten real minutes in the window. The first argument is the folder of
# a build with tests (build/ci; the sanitizers of build/asan suit the monkey alone, as they keep freed memory), the second
# how many minutes of the last (10). Further arguments go to the test program:
#
#     bench/long_run.sh build/asan 10 --gtest_filter='Monkey.*'
set -euo pipefail

root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
build=${1:-$root/build/ci}
minutes=${2:-10}
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export VEK_MONKEY_EVENTS=${VEK_MONKEY_EVENTS:-100000}
export VEK_LONG_ONLINE=${VEK_LONG_ONLINE:-480} # virtual minutes
export VEK_LONG_ROUNDS=${VEK_LONG_ROUNDS:-1000}
export VEK_LONG_WINDOW=$((minutes * 60)) # seconds
exec "$build/bin/vek_endurance_test" "${@:3}"
