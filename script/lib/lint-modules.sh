# The check of script/lint that reads the built modules; see there.

# The modules that are installed, from the one list of them.
shipped_modules() { sed -nE 's/^(program|system) +([^ ]+\.(exe|dll|ocx))$/\2/p' installer/files.txt; }

# Lines "DLL function" of what a module imports; "DLL #ordinal" for what has no name.
imports_of() {
    i686-w64-mingw32-objdump -p "$1" | awk '
        /^\tDLL Name:/ { dll = tolower($3); next }
        /^The / { dll = "" }
        dll != "" && /^\t[0-9a-f]+\t *[0-9]+  / { print dll, $3 == "<none>" ? "#" $2 : $3 }'
}

lint_modules() {
    local bad=0 module file dll name size limit header
    need i686-w64-mingw32-objdump
    need wrestool
    [ -n "$(shipped_modules)" ] || { say "installer/files.txt: names no modules"; return 1; }
    for module in $(shipped_modules); do
        file=build/win32/bin/$module
        if [ ! -f "$file" ]; then
            say "$module: not in build/win32/bin (script/build makes it)"
            bad=1
            continue
        fi
        while read -r dll name; do
            local list=cmake/xp-imports/${dll%.*}.txt
            if [ ! -f "$list" ]; then
                say "$module: imports from $dll, which has no list in cmake/xp-imports"
                bad=1
            elif ! grep -qxF -- "$name" "$list"; then
                say "$module: imports $name of $dll, which $list does not allow (Windows XP SP3)"
                bad=1
            fi
        done < <(imports_of "$file")

        header=$(i686-w64-mingw32-objdump -p "$file")
        for field in MajorOSystemVersion:5 MinorOSystemVersion:1 MajorSubsystemVersion:5 MinorSubsystemVersion:1; do
            if ! grep -qE "^${field%:*}[[:space:]]+${field#*:}$" <<<"$header"; then
                say "$module: the PE header's ${field%:*} is not ${field#*:}"
                bad=1
            fi
        done
        # Found by a program's own resource reader, not by ours. 16 is the type of a version resource.
        if ! wrestool -l --type=16 "$file" 2>/dev/null | grep -q -- '--type=16'; then
            say "$module: has no version resource"
            bad=1
        fi
        limit=
        case $module in velora.exe) limit=2097152 ;; dwspy36.dll) limit=32768 ;; esac
        size=$(stat -c %s "$file")
        if [ -n "$limit" ] && [ "$size" -ge "$limit" ]; then
            say "$module: has $size bytes, and may have less than $limit"
            bad=1
        fi
    done
    return $bad
}
