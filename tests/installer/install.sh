#!/usr/bin/env bash
# Installs with the real setup program into a fresh Wine prefix, looks for everything that should be there,
# uninstalls, and looks for everything that should be gone.
set -euo pipefail
. "$(dirname "$0")/../../script/lib/common.sh"
export VELORA_PREFIX=$build/wine/install-test
. "$root/script/lib/wine.sh"

setup=$build/win32/velora-setup.exe
[ -f "$setup" ] || die "there is no setup program" "script/package makes it"

failures=0
fail() {
    say "FAILED: $*"
    failures=$((failures + 1))
}
is_file() { [ -f "$1" ] || fail "missing: $1"; }
is_gone() { [ ! -e "$1" ] || fail "still there: $1"; }
# key value expected-text
registry_has() {
    local line
    line=$(wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | grep -F "    $2    " || true)
    case $line in
        *"$3") ;;
        *) fail "$1, $2: expected '$3', there is '$line'" ;;
    esac
}
no_key() { ! wine reg query "$1" >/dev/null 2>&1 || fail "registry key still there: $1"; }
names() { sed -nE "s/^$1 +([^ ]+).*/\1/p" "$root/installer/files.txt" | tr "\\\\" /; }

# A prefix that nobody has installed into.
wineserver -k >/dev/null 2>&1 || true
wineserver -w >/dev/null 2>&1 || true
rm -rf "$VELORA_PREFIX"
wine_start
trap 'wineserver -k >/dev/null 2>&1 || true; rm -rf "$VELORA_PREFIX"' EXIT
c=$VELORA_PREFIX/drive_c
system=$c/windows/system32
program="$c/Program Files/Velora 10"
menu="$c/ProgramData/Microsoft/Windows/Start Menu/Programs/Velora"
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Velora'
[ "$(names system | wc -l)" = 10 ] || fail "installer/files.txt does not name ten companion files"

say "-- a file of somebody else's is in the system folder already"
echo "not ours" > "$system/mscomctl.ocx"

say "-- installing"
wine "$setup" /S || fail "the setup program answered $?"
for name in $(names program); do
    cmp -s "$build/win32/bin/$name" "$program/$name" || fail "$name is not the one that was built"
done
for name in $(names file); do is_file "$program/$name"; done
for name in $(names system); do
    [ "$name" = mscomctl.ocx ] && continue
    cmp -s "$build/win32/bin/$name" "$system/$name" || fail "$name is not the one that was built"
done
[ "$(cat "$system/mscomctl.ocx")" = "not ours" ] || fail "somebody else's mscomctl.ocx was overwritten"
is_file "$program/uninstall.exe"
is_file "$menu/Velora.lnk"
is_file "$menu/Uninstall Velora.lnk"
version=$(sed -nE 's/^project\(Velora VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
registry_has "$uninstall_key" DisplayName Velora
registry_has "$uninstall_key" DisplayVersion "$version"
registry_has "$uninstall_key" Publisher "Orv Software"
registry_has "$uninstall_key" InstallLocation 'C:\Program Files\Velora 10'
registry_has "$uninstall_key" UninstallString '"C:\Program Files\Velora 10\uninstall.exe"'
registry_has "$uninstall_key" QuietUninstallString '"C:\Program Files\Velora 10\uninstall.exe" /S'
registry_has "$uninstall_key" NoModify 0x1
registry_has "$uninstall_key" NoRepair 0x1
wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\velora.exe' /ve 2>/dev/null \
    | grep -qF 'C:\Program Files\Velora 10\velora.exe' || fail "App Paths does not name velora.exe"

say "-- installing over a program that runs"
wine "$program/velora.exe" >/dev/null 2>&1 &
running=$!
if wine_wait 20 xdotool search --name Velora; then
    code=0
    wine "$setup" /S || code=$?
    [ "$code" = 2 ] || fail "the setup program answered $code, not 2, while Velora ran"
else
    fail "velora.exe did not show a window"
fi
wine taskkill /f /im velora.exe >/dev/null 2>&1 || true
wait "$running" 2>/dev/null || true

say "-- installing again, after one companion file was replaced by a newer one of somebody else's"
echo "newer than ours" > "$system/launch32.dll"
rm -f "$system/orverr.dll" "$program/fade.ico"
wine "$setup" /S || fail "the setup program answered $? the second time"
is_file "$program/fade.ico"
cmp -s "$build/win32/bin/orverr.dll" "$system/orverr.dll" || fail "a missing companion was not installed again"
[ "$(cat "$system/launch32.dll")" = "newer than ours" ] || fail "a newer launch32.dll was overwritten"

say "-- uninstalling, with data of the user"
mkdir -p "$program/data/wav groups" "$program/chat logs"
echo hello > "$program/data/wav groups/mine.dat"
echo hello > "$program/chat logs/log.txt"
wine reg add 'HKCU\Software\Orv Software\Velora\General' /v ChatLog /d True /f >/dev/null 2>&1
wine reg add 'HKCU\Software\Classes\.fde' /ve /d Velora.InstallScheme /f >/dev/null 2>&1
wine reg add 'HKCU\Software\Classes\Velora.InstallScheme' /ve /d x /f >/dev/null 2>&1
wine "$program/uninstall.exe" /S || fail "the uninstaller answered $?"
# It goes on as a copy of itself in the temporary folder; its own file goes before the menu and the keys.
wine_wait 60 sh -c "! wine reg query '$uninstall_key'" || fail "the uninstaller did not end"
for name in $(names program) $(names file) uninstall.exe; do is_gone "$program/$name"; done
for name in $(names system); do
    case $name in mscomctl.ocx|launch32.dll) ;; *) is_gone "$system/$name" ;; esac
done
is_gone "$menu"
[ "$(cat "$system/mscomctl.ocx")" = "not ours" ] || fail "somebody else's mscomctl.ocx was removed"
[ "$(cat "$system/launch32.dll")" = "newer than ours" ] || fail "a newer launch32.dll was removed"
no_key "$uninstall_key"
no_key 'HKLM\Software\Orv Software'
no_key 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\velora.exe'
no_key 'HKCU\Software\Classes\.fde'
no_key 'HKCU\Software\Classes\Velora.InstallScheme'
is_file "$program/data/wav groups/mine.dat"
is_file "$program/chat logs/log.txt"
registry_has 'HKCU\Software\Orv Software\Velora\General' ChatLog True
wineserver -k >/dev/null 2>&1 || true
unexpected=$(cd "$program" && find . -type f | grep -vE '^\./(data|chat logs|im logs)/|^\./velora\.log$' || true)
[ -z "$unexpected" ] || fail "left in the program folder: $unexpected"

[ "$failures" = 0 ] || { say "$failures failures"; exit 1; }
say "all right"
