# Sourced: the program as a new author gets it, and what both scripts do with it. Needs $program, the built one.

scratch=$(mktemp -d)
app=$scratch/Wendmark
home=$scratch/home
working_copy=$app/NewTour
log=$home/.local/state/wendmark/wendmark.log
unset DISPLAY # Nothing here may reach the desktop of whoever runs it.

finish() {
    local status=$?
    if [ "$failed" -gt 0 ] && [ -n "${DISPLAY:-}" ]; then
        import -silent -window root "$scratch/screen.png"
    fi
    end_processes
    print_sum
    if [ "$failed" -gt 0 ]; then
        echo "Screen, log files and folders are kept in $scratch"
        exit 1
    fi
    rm -rf "$scratch"
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT TERM

# The application folder as it was built, and a home in which nobody has worked yet.
unpack_program() {
    local built
    built=$(dirname "$program")
    mkdir -p "$app/MyTours" "$home" && mkdir -m 700 "$scratch/runtime" &&
        cp "$program" "$app/wendmark" &&
        cp -r "$built/Template" "$built/Help" "$app" &&
        cp -r "$built/MyTours/Sample" "$app/MyTours"
}

# run_program ARGUMENT...: until it ends.
run_program() {
    local settings=(HOME="$home" XDG_RUNTIME_DIR="$scratch/runtime" DISPLAY="$DISPLAY" PATH="$PATH" LANG=C.UTF-8)
    # As root the engine's process sandbox cannot work.
    [ "$(id -u)" -ne 0 ] || settings+=(QTWEBENGINE_DISABLE_SANDBOX=1)
    # A script whose author uses assistive tools has a bus of its own.
    [ -z "${own_bus:-}" ] || settings+=(DBUS_SESSION_BUS_ADDRESS="$own_bus" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1)
    exec env -i "${settings[@]}" "$app/wendmark" "$@" >>"$scratch/output.log" 2>&1
}

# start_program ARGUMENT...: until its splash window is there.
start_program() {
    run_program "$@" &
    program_process=$!
    window=none
    wait_for_window Wendmark
}

# close_splash TITLE: with a key; waits for the window of this title.
close_splash() {
    press space && wait_until is_gone "$window" && wait_for_window "$1"
}

quit() {
    press ctrl+q && wait_until has_ended "$program_process" && wait "$program_process"
}

titles_in() {
    tr -d '\r' <"$1/script.txt" | sed -n '/^<<<VoskInfo>>> Stop/{n;p}'
}

only_script_is_left() {
    [ "$(ls -A "$working_copy")" = script1.txt ]
}

log_has_no_failure() {
    [ -f "$log" ] && ! grep -E ' (failure|warning): ' "$log"
}

check_end() {
    check "only script1.txt is left of the working copy" only_script_is_left
    check "the log has no failures" log_has_no_failure
}
