# Shared by the scripts that build and test; read with ".", from the root of the source tree.

# build PRESET [TARGET]: configures and builds. Ninja itself configures again when a CMake file has changed.
build() {
    local preset=$1
    if [ ! -f "build/$preset/build.ninja" ] || [ CMakePresets.json -nt "build/$preset/build.ninja" ]; then
        cmake --preset "$preset"
    fi
    cmake --build --preset "$preset" -j "$(nproc)" ${2:+--target "$2"}
}

# private_surroundings FOLDER: from here on, whatever is started has its home and its settings in the folder and
# reaches no desktop of the user's. Others may look in, since some tests become another user.
private_surroundings() {
    chmod 755 "$1"
    export HOME=$1/home XDG_CONFIG_HOME=$1/config XDG_DATA_HOME=$1/data XDG_CACHE_HOME=$1/cache
    export XDG_STATE_HOME=$1/state XDG_RUNTIME_DIR=$1/runtime TMPDIR=$1/tmp
    export DBUS_SESSION_BUS_ADDRESS=disabled: LC_ALL=C.UTF-8 TZ=UTC
    unset XDG_DATA_DIRS XDG_CONFIG_DIRS XDG_CURRENT_DESKTOP WAYLAND_DISPLAY QT_STYLE_OVERRIDE QT_SCALE_FACTOR
    unset QT_QPA_PLATFORMTHEME QT_PLUGIN_PATH
    mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_STATE_HOME" "$TMPDIR"
    mkdir -p -m 700 "$XDG_RUNTIME_DIR"
}

# wait_until SECONDS COMMAND...: asks ten times a second; fails when the time is over.
wait_until() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}

# start_display FOLDER GEOMETRY: a virtual display with a window manager, until stop_display. Its files are in
# the folder.
start_display() {
    Xvfb -displayfd 3 -screen 0 "$2" -nolisten tcp -noreset 3>"$1/display" >"$1/xvfb.log" 2>&1 &
    display_server=$!
    if ! wait_until 30 test -s "$1/display"; then
        cat "$1/xvfb.log" >&2
        echo "The virtual display did not start." >&2
        return 1
    fi
    DISPLAY=:$(cat "$1/display")
    export DISPLAY
    openbox >"$1/openbox.log" 2>&1 &
    window_manager=$!
    # A window that comes up before its manager is there may never be shown.
    if ! wait_until 30 is_window_manager_there; then
        cat "$1/openbox.log" >&2
        echo "The window manager did not start." >&2
        return 1
    fi
}

is_window_manager_there() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

stop_display() {
    local process
    for process in "${window_manager:-}" "${display_server:-}"; do
        if [ -n "$process" ]; then
            kill "$process" 2>/dev/null || true
            wait "$process" 2>/dev/null || true
        fi
    done
    window_manager='' display_server=''
}
