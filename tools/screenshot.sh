# shellcheck shell=sh
# Shell functions that drive the program by keyboard and mouse and take screenshots.

# Waits for the window and prints its id.
program_window() {
    for _ in $(seq 200); do
        xdotool search --onlyvisible --name '^Tavrin$' 2>/dev/null | head -n 1 | grep . && return
        sleep 0.1
    done
    say "The window did not open."
    return 1
}

# settled_picture WINDOW FILE: takes screenshots until two in a row are identical.
settled_picture() {
    import -window "$1" "$2"
    for _ in $(seq 50); do
        sleep 0.4
        import -window "$1" "$2.next.png"
        if cmp -s "$2" "$2.next.png"; then
            rm -f "$2.next.png"
            return
        fi
        mv "$2.next.png" "$2"
    done
    rm -f "$2.next.png"
}

# select_system_log WINDOW FILE: expands the classic logs in the tree, selects the last one, System,
# and one of its newest events, by mouse and keyboard.
select_system_log() {
    xdotool mousemove --window "$1" 90 80 click 1
    settled_picture "$1" "$2"
    xdotool key Right type Windows
    xdotool key Right End
    settled_picture "$1" "$2"
    xdotool mousemove --window "$1" 330 190 click 1
    xdotool mousemove --window "$1" 40 600
}

# screenshot_of_program FILE: starts the program and takes a screenshot. The program ends with the
# display. Closing its window would take 2 s, because no window manager runs.
screenshot_of_program() {
    wine "$stage_dir/Tavrin.exe" >&2 &
    window=$(program_window)
    xdotool windowmove "$window" 10 30 windowsize "$window" 1240 900
    settled_picture "$window" "$1"
    select_system_log "$window" "$1"
    settled_picture "$window" "$1"
    printf '%s\n' "$1"
}
