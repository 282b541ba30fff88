# Sourced: a display with a window manager, and what an author sees and does on it. Needs $scratch, a folder.

patience=60 # Seconds after which nobody waits any longer; machines that test are busy.

# wait_until COMMAND...: runs the command until it succeeds. Fails when patience ends.
wait_until() {
    local end=$((SECONDS + patience))
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}

has_ended() {
    ! kill -0 "$1" 2>/dev/null
}

start_display() {
    : >"$scratch/display"
    Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/xvfb.log" &
    wait_until [ -s "$scratch/display" ] || return 1
    DISPLAY=":$(<"$scratch/display")"
    export DISPLAY
}

start_desktop() {
    start_display || return 1
    openbox --sm-disable >"$scratch/openbox.log" 2>&1 &
    wait_until window_manager_runs
}

window_manager_runs() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

# Ends what this shell has started and what still runs.
end_processes() {
    local processes
    mapfile -t processes < <(jobs -pr)
    [ ${#processes[@]} -eq 0 ] || kill "${processes[@]}" 2>/dev/null # One may have gone with the display.
    wait
}

# wait_for_window TITLE: waits for another window than $window to have the focus and this title; it becomes $window.
wait_for_window() {
    local previous=${window:-none}
    wait_until focus_is_on "$1" "$previous"
}

focus_is_on() {
    local title focused
    focused=$(xdotool getwindowfocus 2>/dev/null) && [ "$focused" != "$2" ] || return 1
    title=$(xdotool getwindowname "$focused" 2>/dev/null)
    [ "$title" = "$1" ] && window=$focused
}

is_gone() {
    [ "$(xwininfo -id "$1" 2>/dev/null | grep -c IsViewable)" -eq 0 ]
}

press() {
    xdotool key --clearmodifiers --delay 50 "$@"
}

write() {
    xdotool type --delay 30 "$1"
}

# What the window shows, as one number. The status bar with its clock is left out. Fails while there is no picture of
# it, as while it reaches out of the screen.
status_bar=40
picture() {
    local WINDOW X Y WIDTH HEIGHT SCREEN
    eval "$(xdotool getwindowgeometry --shell "$window")"
    (set -o pipefail
        import -silent -window "$window" -crop "${WIDTH}x$((HEIGHT - status_bar))+0+0" rgba:- 2>/dev/null | md5sum)
}

picture_differs_from() {
    [ "$(picture)" != "$1" ]
}

# give_room WIDTH HEIGHT: to the window, in the upper left corner of the screen, where all of it is to be seen.
give_room() {
    xdotool windowsize --sync "$window" "$1" "$2" && wait_until is_at_rest_in_corner
}

is_at_rest_in_corner() {
    xdotool windowmove "$window" 0 24
    sleep 0.3
    is_at_rest
}

# The window's picture, the loading indicator in it, stands still for a while.
is_at_rest() {
    local first again
    first=$(picture) || return 1
    for again in 1 2 3; do
        sleep 0.2
        [ "$(picture)" = "$first" ] || return 1
    done
}
