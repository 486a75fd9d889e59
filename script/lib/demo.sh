# The steps of script/run. Each waits for what it is about and ends the run with a clear message when that
# does not happen. Source common.sh and wine.sh first; $out is the folder of the results.
aol_folder='C:\America Online 5.0'
aol_files="$VELORA_PREFIX/drive_c/America Online 5.0"
velora_folder='C:\Program Files\Velora 10'
velora_files="$VELORA_PREFIX/drive_c/Program Files/Velora 10"
pipe=velora-run-$$
recorder=
heard=0

# Sends a command to AOL's stand-in and prints its answer; fails unless that is "ok ...".
aol_tell() { timeout 60 wine "$aol_files/waol.exe" --tell="$pipe" "$1" 2>/dev/null | tr -d '\r'; }

demo_shot() { import -window root "$out/$1.png" 2>/dev/null || say "note: no screenshot $1"; }

demo_note() { printf '%s\t%s\t%s\t%s\n' "$(date +%T.%3N)" "$1" "$2" "$3" >> "$out/notes.txt"; }

demo_die() {
    demo_shot failed
    die "$1" "${2:-build/run/failed.png shows the screen of that moment}"
}

demo_cleanup() {
    [ -z "$recorder" ] || kill "$recorder" 2>/dev/null || true
    [ -n "${demo_keep:-}" ] || wine_stop >/dev/null 2>&1 || true
}

# xdotool prints the first visible window with that title.
window_of() { xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1 | grep .; }
gone() { ! kill -0 "$1" 2>/dev/null; }

demo_install() {
    [ -f "$build/win32/velora-setup.exe" ] || die "there is no setup program" "run script/package"
    timeout 120 wine "$build/win32/velora-setup.exe" /S || die "the setup program failed ($?)" \
        "try it by hand: VELORA_PREFIX=/tmp/x script/in-wine build/win32/velora-setup.exe"
    [ -f "$velora_files/velora.exe" ] || die "the setup program installed no velora.exe" "see $velora_files"
    timeout 60 wine "$build/win32/bin/waol.exe" "--make-folder=$aol_folder" --edition=0 --version=5 \
        "--names=Joe Smith,Rose3" || die "the folder of AOL's stand-in could not be made" "see docs/stand-in.md"
    [ -f "$aol_files/waol.exe" ] || die "the folder of AOL's stand-in is empty" "see docs/stand-in.md"
}

demo_start_aol() {
    timeout 600 wine "$aol_files/waol.exe" "--signon=Joe Smith" "--pipe=$pipe" --sounds=off \
        "--transcript=$aol_folder\\transcript.txt" >/dev/null 2>&1 &
    aol_pid=$!
    wine_wait 60 aol_tell status || demo_die "AOL's stand-in did not start"
    aol_tell "room The Sound Stage" >/dev/null || demo_die "AOL's stand-in opened no chat room"
    for member in Rose3 "Star Gazer"; do aol_tell "people +$member" >/dev/null || true; done
    aol_tell "say Rose3: hello Joe" >/dev/null || demo_die "nobody could speak in the room"
    demo_shot 1-aol
}

# As a double click does it.
demo_start_velora() {
    (cd "$velora_files" && exec timeout 600 wine start /wait "$velora_folder\\velora.exe") >/dev/null 2>&1 &
    velora_pid=$!
    wine_wait 60 window_of '^Velora Toolbar$' || demo_die "Velora's panel did not appear over AOL's window"
    demo_note velora Velora "started; its panel lies over AOL's frame"
    demo_shot 2-panel
}

# What plays now, by the sound server: is one of its clients the program velora.exe?
velora_sounds() { pactl list sink-inputs 2>/dev/null | grep -qiE 'application\.(name|process\.binary) = ".*velora'; }
velora_silent() { ! velora_sounds; }

record_start() {
    parec --device=velora.monitor --file-format=wav --channels=1 --rate=22050 \
        --latency-msec=20 "$out/heard/$1.wav" >/dev/null 2>&1 &
    recorder=$!
    # It records when the first silence is in the file.
    wine_wait 15 sh -c "[ \$(stat -c %s '$out/heard/$1.wav') -gt 8000 ]" \
        || demo_die "the sound server could not be recorded" "see build/wine/pulse.log"
}
record_stop() {
    kill "$recorder" 2>/dev/null || true
    wait "$recorder" 2>/dev/null || true
    recorder=
}

# A sound file as its first second's windows of 20 ms, from where it can first be heard: for each the
# level and the number of times that the wave crosses zero.
sound_print() {
    sox "$1" -t raw -e signed -b 16 -c 1 -r 22050 - silence 1 0.002 1% 2>/dev/null \
        | od -An -v -td2 -w882 | head -n 50 | awk '
            { level = 0; crossings = 0
              for (i = 1; i <= NF; i++) {
                  level += $i < 0 ? -$i : $i
                  if (i > 1 && ($i < 0) != ($(i - 1) < 0)) crossings++
              }
              printf "%d %d ", level / NF, crossings }'
}

# Which of AOL's sounds a recording holds: the one that is nearest; nothing when even that is far away.
# The last window of a file is left out: Wine pads it, which clicks.
sound_in() {
    local file recorded
    recorded=$(sound_print "$1")
    for file in "$aol_files"/sounds/*.wav; do
        printf '%s\t%s\t%s\n' "$recorded" "$(sound_print "$file")" "$(basename "$file" .wav)"
    done | awk -F'\t' '
        { heard = split($1, r, " "); count = split($2, f, " ")
          off[1] = off[0] = sum[1] = sum[0] = 0
          for (i = 1; i <= count - 2; i++) {
              d = r[i] - f[i]; off[i % 2] += d < 0 ? -d : d; sum[i % 2] += r[i] + f[i]
          }
          # What goes on after the file has ended is another sound.
          for (i = count + 3; i <= heard; i += 2) { off[1] += r[i]; sum[1] += r[i] }
          if (!sum[0] || !sum[1]) next
          far = off[1] / sum[1] + off[0] / sum[0]
          if (best == "" || far < least) { least = far; best = $3 } }
        END { if (best != "" && least < 0.5) print best }'
}

# demo_listen SOUND SECONDS COMMAND...: runs the command and succeeds when Velora then plays that sound.
demo_listen() {
    local sound=$1 seconds=$2 found
    shift 2
    record_start "$sound"
    "$@"
    if ! wine_wait "$seconds" velora_sounds; then
        record_stop
        return 1
    fi
    wine_wait 15 velora_silent || demo_die "Velora did not stop playing $sound"
    sleep 1    # what is still in the sound server's buffer
    record_stop
    found=$(sound_in "$out/heard/$sound.wav")
    [ "$found" = "$sound" ] || demo_die "Velora played ${found:-something else}, and not $sound" \
        "compare build/run/heard/$sound.wav with the file in AOL's sounds folder"
    heard=$((heard + 1))
    demo_note heard Velora "$sound.wav (known by what came out of the sound server)"
}

demo_say() { aol_tell "say $1" >/dev/null || demo_die "nobody could speak in the room any more: $1"; }

# Velora begins to read a room shortly after its panel is there; who speaks earlier is not heard. So the
# first sound is said until it is.
demo_hear_first() {
    for _ in 1 2 3 4 5; do
        if demo_listen "$1" 4 demo_say "Rose3: {S $1}"; then
            demo_shot 3-first-sound
            return
        fi
    done
    demo_die "Velora did not play the sound $1 that Rose3 said" \
        "does sound work at all? script/in-wine --sh pactl info; see also $velora_files/velora.log"
}

demo_hear() {
    demo_listen "$1" 8 demo_say "$2" || demo_die "Velora did not play the sound $1 of the line \"$2\""
}

demo_hear_nothing() {
    demo_say "$1"
    ! wine_wait 2 velora_sounds || demo_die "Velora played something at \"$1\""
    demo_note silence Velora "played nothing, rightly"
}

# click X Y of a window
click_at() { xdotool mousemove --window "$1" "$2" "$3" sleep 0.2 click 1; }
geometry() { eval "$(xdotool getwindowgeometry --shell "$1" | grep -E '^(WIDTH|HEIGHT)=')"; }

demo_open_list() {
    local panel
    panel=$(window_of '^Velora Toolbar$') || demo_die "Velora's panel has gone"
    # The first button, right of the grip.
    click_at "$panel" 24 14
    wine_wait 15 window_of '^Velora - Wav List$' || demo_die "the wav list did not open at a click on the panel"
    list=$(window_of '^Velora - Wav List$')
    xdotool windowactivate --sync "$list" 2>/dev/null || true
}

demo_sent() { aol_tell sent | grep -qF "{S $1}"; }

demo_send_by_keys() {
    demo_open_list
    xdotool key ctrl+a type --delay 40 "$1"
    sleep 0.5
    demo_shot 4-wav-list
    xdotool key ctrl+Return
    wine_wait 15 demo_sent "$1" || demo_die "the sound $1 was not sent to the room"
    demo_note sent Velora "$1, chosen in the wav list with the keyboard"
}

demo_send_by_mouse() {
    demo_open_list
    xdotool key ctrl+a type --delay 40 "$1"
    geometry "$list"
    # The first of the four buttons at the bottom.
    click_at "$list" $((WIDTH / 2 - 148)) $((HEIGHT - 20))
    wine_wait 15 demo_sent "$1" || demo_die "the sound $1 was not sent to the room"
    demo_note sent Velora "$1, chosen in the wav list and sent with the mouse"
}

# By its menu, as a user ends it.
demo_end_velora() {
    local panel
    panel=$(window_of '^Velora Toolbar$') || demo_die "Velora's panel has gone"
    geometry "$panel"
    # The last button but one.
    click_at "$panel" $((WIDTH - 16 - 28)) 14
    sleep 0.5
    xdotool key x
    wine_wait 15 window_of '^Velora$' || demo_die "Velora did not ask whether to exit"
    demo_shot 6-exit
    xdotool key alt+y
    wine_wait 30 gone "$velora_pid" || demo_die "Velora did not end"
    wait "$velora_pid" || demo_die "Velora ended with the exit code $?"
    demo_note velora Velora "ended"
    ! window_of '^Velora' >/dev/null || demo_die "Velora left a window behind"
}

demo_type() {
    local frame
    frame=$(window_of 'America *Online') || demo_die "AOL's window has gone"
    xdotool windowactivate --sync "$frame" 2>/dev/null || true
    xdotool type --delay 30 "$1"
    xdotool key Return
    wine_wait 15 sh -c "timeout 20 wine '$aol_files/waol.exe' --tell=$pipe sent 2>/dev/null | grep -qF '$1'" \
        || demo_die "AOL did not take what was typed after Velora had ended"
}

demo_end_aol() {
    aol_tell exit >/dev/null || true
    wine_wait 30 gone "$aol_pid" || demo_die "AOL's stand-in did not end"
    if [ -s "$velora_files/velora.log" ]; then
        cp "$velora_files/velora.log" "$out/"
        say "note: Velora's error log has entries: build/run/velora.log"
    fi
    [ -z "$(find "$velora_files" -name '*crash*' -newer "$out/notes.txt" 2>/dev/null)" ] \
        || demo_die "Velora left a crash report in $velora_files"
}

demo_transcript() {
    [ -s "$aol_files/transcript.txt" ] || die "AOL's stand-in wrote no transcript" "see docs/stand-in.md"
    { tr -d '\r' < "$aol_files/transcript.txt"; cat "$out/notes.txt"; } \
        | sort -s -k1,1 | column -t -s "$(printf '\t')" > "$out/transcript.txt"
    cat "$out/transcript.txt" >&2
    [ "$heard" = 3 ] || die "$heard sounds were heard, 3 were expected" "see build/run/transcript.txt"
}

demo_for_the_user() {
    demo_keep=yes
    wine_stop >/dev/null 2>&1 || true
    export VELORA_DISPLAY=$1
    unset PULSE_SERVER PULSE_COOKIE PULSE_RUNTIME_PATH
    if pactl info >/dev/null 2>&1; then VELORA_SOUND=user; fi
    wine_start
    wine "$aol_files/waol.exe" "--signon=Joe Smith" "--script=$aol_folder\\talk.txt" >/dev/null 2>&1 &
    printf 'wait 1000\nroom The Sound Stage\nwait 8000\nsay Rose3: {S boing}\nwait 3000\nsay Star Gazer: {S laser}\n' \
        > "$aol_files/talk.txt"
    wine_wait 60 window_of 'America *Online' || die "AOL's stand-in did not open on $1" "see docs/stand-in.md"
    wine start "$velora_folder\\velora.exe" >/dev/null 2>&1 &
    say "AOL and Velora are open. Close them as you like; script/in-wine --stop ends what is left."
}
