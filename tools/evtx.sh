# shellcheck shell=sh
# Shell functions for directories of .evtx files. Source tools/setup.sh first.

# has_evtx DIR: succeeds if the directory contains .evtx files.
has_evtx() {
    set -- "$1"/*.evtx
    [ -e "$1" ]
}

# recording_of DIR: converts the .evtx files and prints the path of the recording. Skips unreadable
# files, which report_unread names.
recording_of() {
    recording=$root/build/converted
    rm -rf "$recording"
    mkdir -p "$root/build"
    python3 "$root/tools/evtx_to_recording.py" "$1" "$recording" 2>"$root/build/unread.txt" ||
        [ -e "$recording/channels.xml" ] || { report_unread; return 1; }
    printf '%s\n' "$recording"
}

report_unread() {
    sed 's/^/Not read: /' "$root/build/unread.txt" >&2
}
