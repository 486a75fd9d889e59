# The checks of script/lint that read sources. Each prints "file: what is wrong" and returns 1 if there is
# anything. They run in the repository's top folder.

# The rooms and what each names as its own below it, from CMakeLists.txt: lines "room dep dep ...".
room_table() {
    sed -n 's/^ *velora_room(\([a-z_]*\)\(.*\)).*/\1 \2/p' CMakeLists.txt hook/CMakeLists.txt \
        | sed 's/DEPS//; s/SYSTEM.*//'
    # The program knows every room; the modules beside it know the ground; so does the stand-in for AOL.
    echo "app $(sed -n 's/^ *velora_room(\([a-z_]*\).*/\1/p' CMakeLists.txt hook/CMakeLists.txt | tr '\n' ' ')"
    echo "modules base"
    echo "aolhost base"
}

# The rooms that room $1 may include from, itself among them, one in each line.
rooms_below() {
    room_table | awk -v start="$1" '
        { name = $1; $1 = ""; deps[name] = $0 }
        function walk(room,    list, count, i) {
            if (room in seen) return
            seen[room] = 1
            print room
            count = split(deps[room], list, " ")
            for (i = 1; i <= count; i++) walk(list[i])
        }
        END { walk(start) }'
}

lint_rooms() {
    local bad=0 room rooms file target
    rooms=$(room_table | cut -d' ' -f1)
    [ "$(wc -l <<<"$rooms")" -ge 10 ] || { say "CMakeLists.txt: the table of rooms could not be read"; return 1; }
    for room in $rooms; do
        local allowed
        allowed=$(rooms_below "$room")
        while IFS=: read -r file target; do
            [ -n "$file" ] || continue
            # An include without a folder is of the file's own folder.
            case $target in */*) ;; *) continue ;; esac
            # The one way to <windows.h> is open to all.
            [ "$target" != base/win.h ] || continue
            if ! grep -qxF "${target%%/*}" <<<"$allowed"; then
                say "$file: includes \"$target\", and $room may not know ${target%%/*}"
                bad=1
            fi
        done < <(our_files "$room/*.cpp" "$room/*.h" "$room/**/*.cpp" "$room/**/*.h" | tr '\n' '\0' \
            | xargs -0 -r grep -HoE '^ *# *include +"[^"]+"' | sed -E 's/: *# *include +"/:/; s/"$//')
    done
    return $bad
}

# The files that compile on both sides; see cmake/rooms.cmake.
pure_sources() {
    our_files '*.cpp' | grep -vE '(_win|_posix)\.cpp$|/frm[^/]*\.cpp$' \
        | grep -vE '^(app|modules|aolhost|hook/agent)/|^tests/|_win_test\.cpp$'
}

lint_pure() {
    local bad=0 hits
    hits=$(pure_sources | tr '\n' '\0' | xargs -0 -r grep -nHE \
        '# *include *(<(windows|win[a-z]+|commctrl|commdlg|shl[a-z]+|shellapi|ole[a-z0-9]*|mmsystem|richedit|psapi|tlhelp32|tchar)\.h>|"([^"]*/)?(base/win\.h|[^"/]*_win\.h|frm[^"/]*\.h|base/win_error\.h)")' \
        -i || true)
    if [ -n "$hits" ]; then
        printf '%s\n' "$hits" | sed 's/$/   <- a Windows header in a pure file/' >&2
        bad=1
    fi
    hits=$(pure_sources | tr '\n' '\0' | xargs -0 -r grep -nHE '^ *# *(if|ifdef|ifndef|elif).*_WIN32' || true)
    if [ -n "$hits" ]; then
        printf '%s\n' "$hits" | sed 's/$/   <- two versions in one file; see _win.cpp and _posix.cpp/' >&2
        bad=1
    fi
    # <windows.h> has one door. The module in AOL and the stand-in are programs of their own.
    hits=$(our_files '*.cpp' '*.h' | grep -vE '^(base/win\.h|aolhost/)' | tr '\n' '\0' \
        | xargs -0 -r grep -nHiE '# *include *<windows\.h>' || true)
    if [ -n "$hits" ]; then
        printf '%s\n' "$hits" | sed 's/$/   <- include base\/win.h/' >&2
        bad=1
    fi
    return $bad
}

# The first #include of a file.
first_include() { sed -nE 's/^ *# *include +"([^"]+)".*/\1/p' "$1" | head -n 1; }

# A header that is the first include of its own source has compiled alone when that source did. The
# others are compiled here, with the flags of the Windows build.
lint_headers() {
    local bad=0 header stem source lonely=()
    while IFS= read -r header; do
        if ! grep -qE '^#pragma once' "$header"; then
            say "$header: has no #pragma once"
            bad=1
        fi
        stem=${header%.h}
        local proven=
        for source in "$stem.cpp" "${stem}_win.cpp" "${stem}_posix.cpp"; do
            [ -f "$source" ] || continue
            case $(first_include "$source") in
                "$header"|"$(basename "$header")"|"${header#tests/}") proven=yes ;;
            esac
        done
        [ -n "$proven" ] || lonely+=("$header")
    done < <(our_files '*.h')
    [ ${#lonely[@]} -gt 0 ] || return $bad
    need i686-w64-mingw32-g++-win32
    printf '%s\0' "${lonely[@]}" | xargs -0 -n 1 -P "$jobs" bash -c '
        i686-w64-mingw32-g++-win32 -std=c++20 -fsyntax-only -I. -Itests -I"$0/win32/doctest-include" \
            -Wall -Wextra -Wshadow -Werror -march=pentium4 \
            -DUNICODE -D_UNICODE -DWIN32_LEAN_AND_MEAN -DNOMINMAX -DSTRICT \
            -DWINVER=0x0501 -D_WIN32_WINNT=0x0501 -D_WIN32_IE=0x0600 \
            -include "$1" -x c++ /dev/null >&2 || { echo "$1: does not compile alone" >&2; exit 1; }' "$build" || bad=1
    return $bad
}

lint_format() { "$root/script/format" --check; }

lint_words() {
    local bad=0 hits
    # Written in pieces, so that this file does not find itself.
    hits=$(our_files '*.cpp' '*.h' '*.cmake' '*CMakeLists.txt' 'script/*' 'installer/*' '*.md' '*.sh' | tr '\n' '\0' \
        | xargs -0 -r grep -nHwE 'TO''DO|FIX''ME|XX''X|HA''CK' || true)
    if [ -n "$hits" ]; then
        printf '%s\n' "$hits" | sed 's/$/   <- an unfinished place/' >&2
        bad=1
    fi
    hits=$(our_files | tr '\n' '\0' | xargs -0 -r grep -nHIE '/ho''me/[a-z]|/ro''ot/|[A-Z]:\\Us''ers\\[a-z]' || true)
    if [ -n "$hits" ]; then
        printf '%s\n' "$hits" | sed "s/\$/   <- a path of somebody's machine/" >&2
        bad=1
    fi
    return $bad
}
