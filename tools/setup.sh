# shellcheck shell=sh
# Shell functions shared by ./run, ./test and other scripts. Source with `set -eu` in effect.

root=${root:-$(CDPATH="" cd -- "$(dirname -- "$0")" && pwd)}
preset=mingw
build_dir=$root/build/$preset
stage_dir=$build_dir/stage

say() { printf '%s\n' "$*" >&2; }

# missing_packages PURPOSE...: prints the packages of tools/packages.txt that are not installed.
missing_packages() {
    for purpose in "$@"; do
        sed -n "s/^$purpose  *//p" "$root/tools/packages.txt"
    done | while read -r package; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            printf '%s\n' "$package"
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# install_packages PURPOSE...
install_packages() {
    packages=$(missing_packages "$@")
    [ -n "$packages" ] || return 0
    # shellcheck disable=SC2086 # one word per package
    say "Installing:" $packages
    as_root apt-get update -q >&2
    # shellcheck disable=SC2086 # one word per package
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends $packages >&2
}

# configure [OPTION...]
configure() {
    cmake --preset "$preset" -S "$root" "$@" >&2
}

# build [TARGET...]: configures with tests and builds these targets or all.
build() {
    # Debian's Python has the modules of tools/packages.txt. Another Python in PATH may lack them.
    configure -DTAVRIN_BUILD_TESTS=ON -DTAVRIN_TEST_LOGS="${TAVRIN_TEST_LOGS:-}" \
        -DPython3_EXECUTABLE=/usr/bin/python3
    if [ $# -gt 0 ]; then
        cmake --build "$build_dir" --target "$@" >&2
    else
        cmake --build "$build_dir" >&2
    fi
}

# The program uses Segoe UI, which Wine does not have: substitutes a font with similar widths and
# enables font smoothing.
fonts_of_wine() {
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Segoe UI' /d Carlito /f
    wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 2 /f
    wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 2 /f
    wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingOrientation /t REG_DWORD /d 1 /f
}

# Creates the project's Wine prefix in the build directory. WINEDLLOVERRIDES selects the wevtapi.dll
# next to the exe, because Wine's own implements no event-log service.
prepare_wine() {
    export WINEPREFIX="$root/build/wine" WINEDEBUG="${WINEDEBUG:--all}" WINEARCH=win64
    # Non-ASCII file names require a UTF-8 locale.
    export LC_ALL=C.UTF-8
    export WINEDLLOVERRIDES='wevtapi=n;mscoree=;mshtml=;winemenubuilder.exe='
    if [ ! -e "$WINEPREFIX/ready" ]; then
        say "Preparing Wine in $WINEPREFIX"
        mkdir -p "$WINEPREFIX"
        wineboot -i >/dev/null 2>&1
        fonts_of_wine >/dev/null 2>&1
        wineserver -w
        touch "$WINEPREFIX/ready"
    fi
}

# Starts a virtual display, which ends with the script.
start_bare_display() {
    display_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -noreset -nolisten tcp 3>"$display_file" >/dev/null 2>&1 &
    display_pids=$!
    trap end_display EXIT
    trap 'exit 130' INT TERM
    while [ ! -s "$display_file" ]; do
        kill -0 "$display_pids" 2>/dev/null || { say "Xvfb did not start."; exit 1; }
        sleep 0.05
    done
    DISPLAY=:$(cat "$display_file")
    export DISPLAY
    rm -f "$display_file"
}

# Starts a virtual display with a window manager. Without a window manager Wine waits 2 s whenever a
# top-level window is destroyed. Both end with the script.
start_display() {
    start_bare_display
    openbox >/dev/null 2>&1 &
    display_pids="$! $display_pids"
    until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
        sleep 0.05
    done
}

end_display() {
    wineserver -k 2>/dev/null || true
    # shellcheck disable=SC2086 # several process ids
    kill $display_pids 2>/dev/null || true
}
