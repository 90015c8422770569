# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# A virtual display with a window manager, and what a person sees of the program there. Sourced by scripts that start the
# real program; they call "open_display DIRECTORY" first and "start_program PROGRAM [FILE]" then.

started=()
trap 'kill "${started[@]}" 2>/dev/null || true' EXIT
trap 'exit 143' HUP INT TERM # who tidies up at the end would take it for a success

wait_until() { # a condition: true once it holds, false when it does not within a minute or the program has ended
    local end=$((SECONDS + 60))
    until "$@"; do
        no_message
        [ "$SECONDS" -lt "$end" ] || return 1
        [ -z "${running:-}" ] || kill -0 "$running" 2>/dev/null || return 1
        sleep 0.05
    done
}

open_display() { # DIRECTORY [SIZE, 1280x860 unless told]
    stage="$1"
    mkfifo "$stage/display"
    Xvfb -displayfd 3 -screen 0 "${2:-1280x860}x24" -nolisten tcp -noreset 3>"$stage/display" >/dev/null 2>&1 &
    started+=($!)
    local number
    read -r number <"$stage/display"
    export DISPLAY=":$number"
    openbox >/dev/null 2>&1 & # windows get the keyboard from a window manager
    started+=($!)
    wait_until xdotool get_num_desktops >/dev/null 2>&1
}

start_program() { # in the current directory; what its message boxes say is kept
    XDG_RUNTIME_DIR="$stage" QT_LOGGING_RULES="*=false;paukfix.meldung=true" SDL_AUDIODRIVER=dummy \
        "$@" >/dev/null 2>"$stage/meldungen" &
    running=$!
    started+=("$running")
}

is_message() { # the intro has the same title, but is no dialog; other dialogs have more behind it
    case "$(xdotool getwindowname "$1" 2>/dev/null)" in
    Merkkasten | "Merkkasten ("*) xprop -id "$1" _NET_WM_WINDOW_TYPE 2>/dev/null | grep -q _TYPE_DIALOG ;;
    *) false ;;
    esac
}

no_message() { # ends the script where the program shows, or has shown, a message box
    [ -n "${running:-}" ] || return 0
    local window
    for window in $(xdotool search --onlyvisible --class '^paukfix$' 2>/dev/null); do
        if is_message "$window"; then
            fail "The program shows a message box:"
        fi
    done
    ! has_reported || fail "The program has shown a message box:"
}
has_reported() { grep -q '^paukfix\.meldung: ' "$stage/meldungen"; }

fail() {
    echo "$1" >&2
    [ ! -s "$stage/meldungen" ] || cat "$stage/meldungen" >&2
    if import -window root "$stage/fehler.png" 2>/dev/null; then
        echo "Picture: $stage/fehler.png" >&2
    fi
    exit 1
}

has_keyboard() { [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ]; }
wait_for() { # until the window of this title has the keyboard
    wait_until has_keyboard "$1" || fail "The window \"$1\" did not come."
    no_message
}

check_handbook() { # DIRECTORY: it is there, with each picture that it shows
    local picture
    [ -s "$1/index.html" ] || fail "There is no handbook in $1."
    for picture in $(sed -n 's/.*<img src="\([^"]*\)".*/\1/p' "$1"/*.html); do
        [ -s "$1/$picture" ] || fail "The handbook lacks $picture."
    done
}

is_open() { grep -q ":$(stat -c %i "$1") " /proc/locks; } # the program holds the lock of the card file

# The program waits for its user: it sleeps, and from one look to the next it has used no time of the processor (a blinking
# caret takes next to none).
is_idle() {
    local times state used
    times="$(sed 's/.*) //' "/proc/$running/stat")" || return 1
    read -r state _ _ _ _ _ _ _ _ _ _ used _ <<<"$times"
    local before="${ticks:-}"
    ticks="$used"
    [ "$state" = S ] && [ -n "$before" ] && [ $((used - before)) -le 1 ] && quiet=$((${quiet:-0} + 1)) || quiet=0
    [ "$quiet" -ge 4 ]
}
wait_idle() {
    quiet=0 ticks=""
    wait_until is_idle || fail "The program does not come to rest."
}

look() { import -window root "$stage/$1.png"; }
differs() { # more than a caret between the screen and an earlier look at it
    look now
    local pixels
    pixels="$(compare -metric AE "$stage/$1.png" "$stage/now.png" null: 2>&1 || true)"
    [ "${pixels%%[.e]*}" -gt 1000 ] || [[ "$pixels" == *e+* ]]
}
