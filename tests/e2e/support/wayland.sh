# Sourced after desktop.sh: a Wayland desktop in a window of the display. Programs see nothing of one another there, so
# that what is in front is known by its picture and by what is on the disk.

start_wayland() {
    start_display || return 1
    mkdir -m 700 "$scratch/runtime" || return 1
    XDG_RUNTIME_DIR=$scratch/runtime weston --no-config --backend=x11-backend.so --use-pixman \
        --width=1366 --height=768 --idle-time=0 --socket=wayland-test >"$scratch/weston.log" 2>&1 &
    wait_until [ -S "$scratch/runtime/wayland-test" ] && wait_until is_at_rest
}

# What a session on Wayland tells its programs; they are told of no other display.
run_program() {
    local settings=(HOME="$home" XDG_RUNTIME_DIR="$scratch/runtime" XDG_SESSION_TYPE=wayland
        WAYLAND_DISPLAY=wayland-test PATH="$PATH" LANG=C.UTF-8)
    [ "$(id -u)" -ne 0 ] || settings+=(QTWEBENGINE_DISABLE_SANDBOX=1)
    exec env -i "${settings[@]}" "$app/wendmark" "$@" >>"$scratch/output.log" 2>&1
}

take_picture() {
    import -silent -window root "$1" 2>/dev/null
}

# looks_like FILE: as the screen does; a caret that blinks and clocks that go on make no difference.
small_change=400 # Pixels.
looks_like() {
    local differing
    take_picture "$scratch/now.png" || return 1
    differing=$(compare -metric AE "$1" "$scratch/now.png" null: 2>&1)
    [ "${differing%%[!0-9]*}" -le "$small_change" ]
}

is_at_rest() {
    local again
    take_picture "$scratch/first.png" || return 1
    for again in 1 2 3; do
        sleep 0.2
        looks_like "$scratch/first.png" || return 1
    done
}

# changes_screen COMMAND...: and then something else is on screen, at rest.
changes_screen() {
    take_picture "$scratch/before.png" && "$@" && wait_until looks_unlike "$scratch/before.png" && wait_until is_at_rest
}

looks_unlike() {
    ! looks_like "$1"
}
