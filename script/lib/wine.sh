# A Wine prefix, a screen and a sound sink that belong to this checkout. Source common.sh first.
# Calls may come in parallel (ctest -j): one lock guards the start, and what runs already is used.
export WINEPREFIX=${VELORA_PREFIX:-$build/wine/prefix}
export WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all}
# No questions about Mono and Gecko, no menu entries on the user's desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
wine_state=$build/wine

# The screen: an Xvfb of this checkout, with a small window manager (without one, Wine takes two
# seconds to close an active window).
wine_screen() {
    if [ -n "${VELORA_DISPLAY:-}" ]; then
        export DISPLAY=$VELORA_DISPLAY
        return
    fi
    if [ -s "$wine_state/display" ] && [ -s "$wine_state/xvfb.pid" ] \
        && kill -0 "$(cat "$wine_state/xvfb.pid")" 2>/dev/null; then
        export DISPLAY=$(cat "$wine_state/display")
        return
    fi
    need Xvfb
    rm -f "$wine_state/display.new"
    Xvfb -displayfd 5 -screen 0 1280x1024x24 -nolisten tcp \
        5>"$wine_state/display.new" 9>&- </dev/null >/dev/null 2>"$wine_state/xvfb.log" &
    echo $! > "$wine_state/xvfb.pid"
    for _ in $(seq 100); do
        [ -s "$wine_state/display.new" ] && break
        sleep 0.1
    done
    [ -s "$wine_state/display.new" ] || die "Xvfb did not start" "see $wine_state/xvfb.log"
    echo ":$(tr -d '[:space:]' < "$wine_state/display.new")" > "$wine_state/display"
    export DISPLAY=$(cat "$wine_state/display")
    if command -v openbox >/dev/null 2>&1; then
        openbox 9>&- </dev/null >/dev/null 2>&1 &
    fi
}

# Sound goes into a null sink of a PulseAudio of our own, so that MCI really plays.
wine_sound() {
    command -v pulseaudio >/dev/null 2>&1 || return 0
    export XDG_RUNTIME_DIR=$wine_state/runtime
    export PULSE_SERVER=unix:$wine_state/runtime/pulse.sock
    mkdir -p "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
    if [ -s "$wine_state/pulse.pid" ] && kill -0 "$(cat "$wine_state/pulse.pid")" 2>/dev/null; then
        return
    fi
    rm -f "$wine_state/runtime/pulse.sock"
    HOME=$wine_state/runtime pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no \
        --load="module-native-protocol-unix socket=$wine_state/runtime/pulse.sock auth-anonymous=1" \
        --load="module-null-sink sink_name=velora" \
        9>&- </dev/null >"$wine_state/pulse.log" 2>&1 &
    echo $! > "$wine_state/pulse.pid"
    for _ in $(seq 50); do
        [ -S "$wine_state/runtime/pulse.sock" ] && break
        sleep 0.1
    done
}

wine_start() {
    need wine
    mkdir -p "$wine_state"
    exec 9>"$wine_state/lock"
    flock 9
    wine_screen
    wine_sound
    if [ ! -e "$WINEPREFIX/.ready" ]; then
        mkdir -p "$WINEPREFIX"
        timeout 120 wineboot -i 9>&- </dev/null >"$wine_state/wineboot.log" 2>&1 \
            || die "Wine could not make its prefix" "see $wine_state/wineboot.log"
        touch "$WINEPREFIX/.ready"
    fi
    # A server that stays makes each further start quick.
    wineserver -p120 9>&- </dev/null >/dev/null 2>&1 || true
    flock -u 9
    exec 9>&-
}

wine_stop() {
    wineserver -k 2>/dev/null || true
    for name in pulse xvfb; do
        [ -s "$wine_state/$name.pid" ] && kill "$(cat "$wine_state/$name.pid")" 2>/dev/null || true
        rm -f "$wine_state/$name.pid"
    done
    rm -f "$wine_state/display"
}
