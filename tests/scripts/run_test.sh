#!/usr/bin/env bash
# Checks ./run with stand-ins for the programs that it starts: run_test.sh PROJECT_FOLDER
set -euo pipefail

project=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work/tmp LOG=$work/log
unset DISPLAY WAYLAND_DISPLAY VEK_COM1 VEK_COM2 VEK_COM3 VEK_COM4

# A project folder whose build has nothing to do.
root="$work/the project"
binaries=$root/build/release/bin
mkdir -p "$TMPDIR" "$binaries"
cp -r "$project/run" "$project/scripts" "$root"
for target in vorn-matrix-editor vekctl vekctl-serial; do
    echo "build $target: phony"
done >"$root/build/release/build.ninja"
echo "CMAKE_HOME_DIRECTORY:INTERNAL=$root" >"$root/build/release/CMakeCache.txt"

cat >"$binaries/vekctl" <<'END'
#!/usr/bin/env bash
echo "vekctl $*" >>"$LOG"
case $1 in
simulate)
    [[ $# -lt 5 ]] || echo "${RECEIVED:-image}" >"$5"
    echo "pid $$" >>"$LOG"
    ln -s /dev/null "$3"
    exec sleep infinity
    ;;
new) echo new >"$2" ;;
program) [[ -f $2 && $4 -ef /dev/null ]] ;;
image) echo image >"$4" ;;
esac
END
cat >"$binaries/vorn-matrix-editor" <<'END'
#!/usr/bin/env bash
echo "editor $# $* | $VEK_COM1 ${VEK_COM2-unset}" >>"$LOG"
[[ $# -eq 0 || -f $1 ]] || exit 99
[[ -n ${STAY:-} ]] && echo "pid $$" >>"$LOG" && exec sleep infinity
exit "${STATUS:-0}"
END
mkdir "$work/bin"
cat >"$work/bin/cmake" <<'END'
#!/usr/bin/env bash
echo "cmake $*" >>"$LOG"
touch build/release/build.ninja
END
chmod +x "$binaries"/* "$work/bin"/*

any_running() {
    local pids pid
    mapfile -t pids < <(sed -n 's/^pid //p' "$LOG")
    for pid in "${pids[@]}"; do
        kill -0 "$pid" 2>/dev/null && return
    done
    return 1
}

failures=0
# expect STATUS PATTERN COMMAND...: the exit status, and a pattern that output and log together have to match.
# Afterwards nothing may be left of what ./run started or made.
expect() {
    local status=$1 pattern=$2 got=0 output
    shift 2
    : >"$LOG"
    output=$(cd "$work" && "$@" 2>&1) || got=$?
    output+=$'\n'$(<"$LOG")
    if [[ $got -ne $status ]] || ! grep -qE -- "$pattern" <<<"$output"; then
        printf 'FAILED: %s\n  status %s, expected %s; pattern %s in:\n%s\n' "$*" "$got" "$status" "$pattern" "$output"
        failures=$((failures + 1))
    fi
    if [[ -n $(ls "$TMPDIR") ]] || any_running; then
        printf 'FAILED: %s\n  left something behind\n' "$*"
        failures=$((failures + 1))
    fi
}

# Ends ./run from outside once all is up, by a signal.
# shellcheck disable=SC2317  # called by expect
close_with() {
    DISPLAY=:0 STAY=1 "$root/run" &
    # The simulated device and the editor.
    until [[ $(grep -c '^pid' "$LOG") -eq 2 ]]; do :; done
    kill -"$1" $!
    wait $!
}

touch "$work/a file.VMC" "$work/-x.VMC" "$work/lower.vmc"
run=$root/run

expect 0 'no display here' "$run"
expect 0 'holds exactly the 6 bytes of new.VMC' "$run"
expect 0 'holds exactly the 6 bytes of a file.VMC' "$run" "a file.VMC"
expect 1 'received something else' env RECEIVED=other "$run" "a file.VMC"
expect 0 'vekctl program ./a file.VMC --port /dev/null' "$run" "a file.VMC" --port /dev/null
expect 1 'Name one configuration file and one port' "$run" --port /dev/null

# A folder configured before the presets changed takes them over.
touch "$root/CMakePresets.json"
expect 0 '^cmake --preset release --fresh$' env PATH="$work/bin:$PATH" "$run"

expect 0 'editor 0  \| .*/COM1 $' env DISPLAY=:0 "$run"
expect 0 'editor 1 ./a file.VMC' env DISPLAY=:0 "$run" "a file.VMC"
expect 7 'editor 1 ./-x.VMC' env DISPLAY=:0 STATUS=7 "$run" -- -x.VMC
expect 0 'editor 0  \| /dev/null /dev/zero' env DISPLAY=:0 "$run" --port null --port=/dev/zero
expect 143 'editor' close_with TERM
expect 129 'editor' close_with HUP

expect 1 'There is no file' "$run" missing.VMC
expect 1 'ends in .VMC' "$run" lower.vmc
expect 1 'no serial port /dev/missing' "$run" --port missing
expect 2 'Only one file' "$run" "a file.VMC" "a file.VMC"
expect 2 'Unknown option' "$run" --bogus
expect 2 'only four ports' "$run" --port a --port b --port c --port d --port e
exit "$((failures > 0))"
