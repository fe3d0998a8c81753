#!/usr/bin/env bash
# Two editors on one screen exchange a mode through the clipboard, by keyboard alone:
# clipboard_test.sh EDITOR TEST_DATA_FOLDER
set -euo pipefail

if [[ ${3:-} != --on-screen ]]; then
    for program in xvfb-run xdotool xclip; do
        command -v "$program" >/dev/null || {
            echo "FAILED: $program is missing; ./test installs it"
            exit 1
        }
    done
    exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$1" "$2" --on-screen
fi

editor=$1
data=$2
work=$(mktemp -d)
editors=()
finish() {
    ((${#editors[@]} == 0)) || kill "${editors[@]}" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
# The X server belongs to this test, the user's settings do not.
unset WAYLAND_DISPLAY VEK_COM1 VEK_COM2 VEK_COM3 VEK_COM4
export QT_QPA_PLATFORM=xcb VEK_STORE=$work/store.json HOME=$work XDG_RUNTIME_DIR=$work LC_ALL=C.UTF-8

# until_true WHAT COMMAND...: repeats the command until it succeeds; ends the test after twenty seconds.
until_true() {
    local what=$1 end=$((SECONDS + 20))
    shift
    until "$@"; do
        ((SECONDS < end)) || {
            echo "FAILED: $what"
            exit 1
        }
        sleep 0.02
    done
}

# The windows of a process, menus included.
windows_of() { xdotool search --all --onlyvisible --pid "$1" --name '.*' 2>/dev/null | sort -u; }
shows_windows() { [[ $(windows_of "$1" | wc -l) -eq $2 ]]; }
focus() {
    xdotool windowfocus "$1" 2>/dev/null
    [[ $(xdotool getwindowfocus 2>/dev/null) == "$1" ]]
}

# start [FILE]: its process is $process then.
start() {
    "$editor" "$@" &
    process=$!
    editors+=("$process")
    until_true "the window of the editor" shows_windows "$process" 1
}
to_front() { until_true "the focus of the editor" focus "$(windows_of "$1")"; }

# mode_menu PROCESS ENTRY: opens the menu of the mode that has the focus and chooses the entry, from 1.
mode_menu() {
    local i
    xdotool key Menu
    until_true "the menu of a mode" shows_windows "$1" 2
    for ((i = 0; i < $2; i++)); do
        xdotool key Down
    done
    xdotool key Return
    until_true "the menu's end" shows_windows "$1" 1
}

# copies PROCESS: the mode that has the focus, to the file "copied".
copies() {
    mode_menu "$1" 1
    xclip -o -selection clipboard -t UTF8_STRING >"$work/copied" 2>/dev/null
}
copies_the_mode() { copies "$1" && cmp -s "$work/mode" "$work/copied"; }
copies_another() { copies "$1" && ! cmp -s "$work/mode" "$work/copied"; }

# The sample's first mode and what copying it gives.
iconv -f WINDOWS-1252 -t UTF-8 "$data/02.mode.txt" >"$work/mode"

start "$data/02.VMC"
first=$process
start
second=$process

# Tab goes to the modes; the arrows choose one.
to_front "$first"
xdotool key Tab
until_true "the first editor's copy of mode 1" copies_the_mode "$first"

to_front "$second"
xdotool key Tab Down
mode_menu "$second" 2
# Its own first mode is a blank one; after that the clipboard has to get the text from what was pasted.
xdotool key Up
until_true "the second editor's copy of mode 1" copies_another "$second"
xdotool key Down
until_true "the second editor's copy of mode 2" copies_the_mode "$second"

for process in "$second" "$first"; do
    to_front "$process"
    xdotool key ctrl+q
    wait "$process" || {
        echo "FAILED: an editor ended with status $?"
        exit 1
    }
done
editors=()
