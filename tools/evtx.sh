# shellcheck shell=sh
# Shell functions for folders of .evtx files. Source tools/setup.sh first.

# has_evtx FOLDER
has_evtx() {
    set -- "$1"/*.evtx
    [ -e "$1" ]
}

# recording_of FOLDER: converts the .evtx files and prints the path of the recording. Files that
# cannot be read are left out; tell_unread names them.
recording_of() {
    recording=$root/build/converted
    rm -rf "$recording"
    mkdir -p "$root/build"
    python3 "$root/tools/evtx_to_recording.py" "$1" "$recording" 2>"$root/build/unread.txt" ||
        [ -e "$recording/channels.xml" ] || { tell_unread; return 1; }
    printf '%s\n' "$recording"
}

tell_unread() {
    sed 's/^/Not read: /' "$root/build/unread.txt" >&2
}
