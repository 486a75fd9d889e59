# A Wine prefix, a screen and a sound sink that belong to this checkout. Source common.sh first.
# Calls may come in parallel (ctest -j): one lock guards the start, and what runs already is used.
#   VELORA_LANE      a number above 1: a prefix, a screen and a sound sink beside the first ones. Window tests
#                    share a keyboard focus, so those that run at the same time need a lane each
#   VELORA_PREFIX    another prefix than build/wine/prefix (script/run and the installer's test have their own)
#   VELORA_DISPLAY   a display that is there already, instead of an Xvfb screen of our own
#   VELORA_SOUND     "user": the sound server of the user's session instead of a silent one of our own
# The test runner says which lane is free: "id:2,slots:1".
lane=${CTEST_RESOURCE_GROUP_0_SCREENS:-id:${VELORA_LANE:-1}}
lane=${lane#id:}
lane=${lane%%,*}
wine_state=$build/wine
[ "$lane" = 1 ] || wine_state=$build/wine/lane$lane
export WINEPREFIX=${VELORA_PREFIX:-$wine_state/prefix}
export WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all}
# No questions about Mono and Gecko, no menu entries on the user's desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
wine_cache=${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/velora
# A socket's path may have no more than 107 bytes, which a deep checkout exceeds.
wine_runtime=${TMPDIR:-/tmp}/velora-$(id -u)-$(printf %s "$wine_state" | cksum | cut -d' ' -f1)

# running NAME PROGRAM: the process whose id is in NAME.pid still lives and is that program (after a
# restart of the machine the number may be somebody else's).
wine_running() {
    local pid
    pid=$(cat "$wine_state/$1.pid" 2>/dev/null) || return 1
    [ -n "$pid" ] && [ "$(cat "/proc/$pid/comm" 2>/dev/null)" = "$2" ]
}

# wine_wait SECONDS COMMAND...: until the command succeeds.
wine_wait() {
    local tries=$(($1 * 20))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $((tries -= 1)) -gt 0 ] || return 1
        sleep 0.05
    done
}

# The screen: an Xvfb of this checkout, with a small window manager (without one, Wine takes two
# seconds to close an active window).
wine_screen() {
    if [ -n "${VELORA_DISPLAY:-}" ]; then
        export DISPLAY=$VELORA_DISPLAY
        return
    fi
    if wine_running xvfb Xvfb && [ -s "$wine_state/display" ]; then
        export DISPLAY=$(cat "$wine_state/display")
        return
    fi
    need Xvfb
    need openbox
    rm -f "$wine_state/display" "$wine_state/display.new"
    Xvfb -displayfd 5 -screen 0 1280x1024x24 -nolisten tcp \
        5>"$wine_state/display.new" 9>&- </dev/null >/dev/null 2>"$wine_state/xvfb.log" &
    echo $! > "$wine_state/xvfb.pid"
    wine_wait 20 test -s "$wine_state/display.new" \
        || die "the screen (Xvfb) did not start" "see ${wine_state#"$root"/}/xvfb.log"
    export DISPLAY=":$(tr -d '[:space:]' < "$wine_state/display.new")"
    openbox --sm-disable 9>&- 5>&- </dev/null >/dev/null 2>"$wine_state/openbox.log" &
    # It says on the root window when it manages the screen.
    wine_wait 10 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' \
        || say "note: the window manager did not start; windows may close slowly"
    echo "$DISPLAY" > "$wine_state/display"
}

# Sound goes into a null sink of a PulseAudio of our own, so that MCI really plays.
wine_sound() {
    [ "${VELORA_SOUND:-}" != user ] || return 0
    need pulseaudio
    mkdir -p -m 700 "$wine_runtime"
    [ -O "$wine_runtime" ] || die "$wine_runtime belongs to somebody else" "set TMPDIR to a folder of your own"
    export PULSE_SERVER=unix:$wine_runtime/pulse.sock
    export PULSE_RUNTIME_PATH=$wine_runtime PULSE_COOKIE=$wine_runtime/cookie
    if wine_running pulse pulseaudio && [ -S "$wine_runtime/pulse.sock" ]; then
        return
    fi
    rm -f "$wine_runtime/pulse.sock"
    # The server lets everybody in who can reach the socket; clients still want to read a cookie.
    [ -s "$PULSE_COOKIE" ] || head -c 256 /dev/zero > "$PULSE_COOKIE"
    HOME=$wine_runtime XDG_RUNTIME_DIR=$wine_runtime pulseaudio -n --daemonize=no \
        --exit-idle-time=-1 --use-pid-file=no --disallow-exit \
        --load="module-native-protocol-unix socket=$wine_runtime/pulse.sock auth-anonymous=1 auth-cookie-enabled=0" \
        --load="module-null-sink sink_name=velora" \
        9>&- </dev/null >"$wine_state/pulse.log" 2>&1 &
    echo $! > "$wine_state/pulse.pid"
    wine_wait 10 test -S "$wine_runtime/pulse.sock" \
        || die "the sound server (PulseAudio) did not start" "see ${wine_state#"$root"/}/pulse.log"
}

# Making a prefix takes ten seconds and more, copying one takes two: the first is kept per user and Wine
# version, and every checkout has a copy.
wine_template() {
    local version template fresh
    version=$(wine --version 2>/dev/null | tr -cs 'A-Za-z0-9.\n' - | sed 's/-*$//')
    template=$wine_cache/prefix-$version
    if [ ! -e "$template/.ready" ]; then
        mkdir -p "$wine_cache"
        exec 8>"$wine_cache/lock"
        flock 8
        if [ ! -e "$template/.ready" ]; then
            say "making a Wine prefix (once for each version of Wine)"
            rm -rf "$template" "$wine_cache"/new.*
            fresh=$(mktemp -d "$wine_cache/new.XXXXXX")
            if ! WINEPREFIX=$fresh timeout -k 5 180 wineboot -i 8>&- 9>&- </dev/null \
                >"$wine_state/wineboot.log" 2>&1; then
                WINEPREFIX=$fresh wineserver -k 2>/dev/null || true
                rm -rf "$fresh"
                die "Wine could not make its prefix" "see ${wine_state#"$root"/}/wineboot.log"
            fi
            # The registry is on disk when the server has ended.
            WINEPREFIX=$fresh timeout 60 wineserver -w 8>&- 9>&- || true
            [ -s "$fresh/system.reg" ] || die "Wine made an incomplete prefix" \
                "see ${wine_state#"$root"/}/wineboot.log"
            touch "$fresh/.ready"
            mv "$fresh" "$template"
        fi
        flock -u 8
        exec 8>&-
    fi
    printf '%s\n' "$template"
}

wine_prefix() {
    [ ! -e "$WINEPREFIX/.ready" ] || return 0
    local template
    template=$(wine_template)
    rm -rf "$WINEPREFIX" "$WINEPREFIX.new"
    mkdir -p "$(dirname "$WINEPREFIX")"
    cp -a --reflink=auto "$template" "$WINEPREFIX.new" \
        || die "the Wine prefix could not be copied" "is there 1 GB free on this disk?"
    # Child windows' title bar buttons are drawn with this font, which Wine does not find where Debian
    # puts it; without it they show letters.
    cp -n /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX.new/drive_c/windows/Fonts/" 2>/dev/null || true
    # A program that crashes on purpose ends; no window asks about it.
    printf '\n[Software\\\\Wine\\\\WineDbg]\n"ShowCrashDialog"=dword:00000000\n' >> "$WINEPREFIX.new/user.reg"
    mv "$WINEPREFIX.new" "$WINEPREFIX"
}

wine_start() {
    need wine
    mkdir -p "$wine_state"
    exec 9>"$wine_state/lock"
    flock 9
    wine_screen
    wine_sound
    wine_prefix
    # A server that stays makes each further start quick (the command fails when one runs already).
    # The first program starts Wine's services, which keep its output open as long as they live: a test
    # runner would wait for them.
    if wineserver -p120 9>&- </dev/null >/dev/null 2>&1; then
        timeout 60 wine cmd /c exit 9>&- </dev/null >/dev/null 2>&1 || true
    fi
    flock -u 9
    exec 9>&-
}

wine_stop() {
    if [ -d "$WINEPREFIX" ]; then
        timeout 20 wineserver -k 2>/dev/null || true
        # A server that is still ending would refuse the next one its place.
        timeout 20 wineserver -w 2>/dev/null || true
    fi
    if wine_running pulse pulseaudio; then kill "$(cat "$wine_state/pulse.pid")" || true; fi
    if wine_running xvfb Xvfb; then kill "$(cat "$wine_state/xvfb.pid")" || true; fi
    rm -f "$wine_state"/*.pid "$wine_state/display"
    rm -rf "$wine_runtime"
}
