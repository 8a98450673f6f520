# shellcheck shell=sh
# Desktops for parallel tests. Each has its own display and Wine server, because these own the
# keyboard focus, the mouse and the debugger output. Source tools/setup.sh first.

# shellcheck disable=SC2154 # setup.sh sets it
desktops_dir=$root/build/desktops

# make_prefix DIR: creates a Wine prefix that shares the programs of build/wine but has its own
# registry and user.
make_prefix() {
    mkdir -p "$1/dosdevices" "$1/drive_c"
    cp -a "$root"/build/wine/*.reg "$root/build/wine/.update-timestamp" "$1"
    for part in "$root"/build/wine/drive_c/*; do
        ln -s "$part" "$1/drive_c"
    done
    rm "$1/drive_c/users"
    cp -a "$root/build/wine/drive_c/users" "$1/drive_c"
    ln -s ../drive_c "$1/dosdevices/c:"
    ln -s / "$1/dosdevices/z:"
}

# start_desktops COUNT: starts desktops that end with the script, and has tools/wine use them.
start_desktops() {
    pids=
    rm -rf "$desktops_dir"
    for desktop in $(seq "$1"); do
        start_display
        pids="$pids $display_pids"
        display_pids=$pids
        trap end_desktops EXIT
        export WINEPREFIX="$desktops_dir/$desktop"
        make_prefix "$WINEPREFIX"
        printf 'export DISPLAY=%s WINEPREFIX="%s"\n' "$DISPLAY" "$WINEPREFIX" \
            >"$WINEPREFIX/environment"
        # The persistent Wine server and its services start here. Services that a test starts would
        # keep the test's output open.
        wineserver -p
        wine wineboot >/dev/null 2>&1 &
        boots="${boots:-} $!"
    done
    # shellcheck disable=SC2086 # several process ids
    wait $boots
    export TAVRIN_DESKTOPS="$desktops_dir"
}

end_desktops() {
    for desktop in "$desktops_dir"/*/; do
        WINEPREFIX=${desktop%/} wineserver -k 2>/dev/null || true
    done
    end_display
}
