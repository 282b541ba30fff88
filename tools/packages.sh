# Sourced by the entry points: installs by package name what this machine lacks.

# Runs a command as root.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

package_is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# need_packages NAME...: installs those of the packages that are not there yet.
need_packages() {
    local missing=() name
    for name in "$@"; do
        package_is_installed "$name" || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if ! command -v apt-get >/dev/null; then
        echo "Needed, and no apt-get here to install it: ${missing[*]}" >&2
        return 1
    fi
    echo "Installing: ${missing[*]}"
    as_root apt-get update -q >/dev/null
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" >/dev/null
}

# need_node: a node and an npm, from wherever they come.
need_node() {
    command -v node >/dev/null && command -v npm >/dev/null || need_packages nodejs npm
}

build_packages=(g++ cmake ninja-build ccache pkg-config libcpp-httplib-dev)
qt_packages=(qt6-base-dev qt6-webengine-dev qt6-svg-dev libqt6svg6 libhunspell-dev libxcb1-dev)
test_packages=(libgtest-dev libgmock-dev groff poppler-utils)
sanitizer_packages=(clang libclang-rt-14-dev libfuzzer-14-dev llvm)
benchmark_packages=(libbenchmark-dev)
lint_packages=(clang-format clang-tidy clang libclang-dev llvm llvm-dev python3)
desktop_packages=(xvfb x11-utils openbox xdotool imagemagick)
# A desktop without X.
wayland_packages=(weston qt6-wayland)
# What assistive tools see: tests look for controls by that.
assistive_packages=(at-spi2-core dbus-daemon gir1.2-atspi-2.0 python3-gi)
player_packages=(chromium firefox-esr)
package_packages=(dpkg-dev file lintian desktop-file-utils appstream shared-mime-info man-db librsvg2-bin libglib2.0-bin)
