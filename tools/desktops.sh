# shellcheck shell=sh
# Desktops for tests that run side by side. Each has a display and a Wine server: keyboard focus,
# mouse and debugger output belong to those. Source it after setup.sh.

# shellcheck disable=SC2154 # setup.sh sets it
desktops_dir=$root/build/desktops

# make_prefix FOLDER: a Wine folder with the programs of build/wine, its own registry and user.
make_prefix() {
    rm -rf "$1"
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

# start_desktops COUNT: they end with the script. build/desktops/spec.json tells ctest of them.
start_desktops() {
    pids=
    specs=
    for desktop in $(seq "$1"); do
        start_display
        pids="$pids $display_pids"
        display_pids=$pids
        trap end_desktops EXIT
        export WINEPREFIX="$desktops_dir/$desktop"
        make_prefix "$WINEPREFIX"
        printf 'export DISPLAY=%s WINEPREFIX="%s"\n' "$DISPLAY" "$WINEPREFIX" \
            >"$WINEPREFIX/environment"
        # Stays without programs. Its services start now: those that a test started would hold
        # on to the test's output.
        wineserver -p
        wine wineboot >/dev/null 2>&1 &
        boots="${boots:-} $!"
        specs="$specs${specs:+, }{\"id\": \"$desktop\"}"
    done
    # shellcheck disable=SC2086 # several process ids
    wait $boots
    printf '{"version": {"major": 1, "minor": 0}, "local": [{"desktops": [%s]}]}\n' "$specs" \
        >"$desktops_dir/spec.json"
}

end_desktops() {
    for desktop in "$desktops_dir"/*/; do
        WINEPREFIX=${desktop%/} wineserver -k 2>/dev/null || true
    done
    end_display
}
