# Shared by the scripts in script/: where the checkout is, and how a failure speaks.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build=$root/build
# Two compilers at a time unless the machine has more to give.
jobs=${VELORA_JOBS:-$(nproc 2>/dev/null || echo 2)}

say() { printf '%s\n' "$*" >&2; }
step() { printf '\n== %s\n' "$*" >&2; }

# die MESSAGE HINT
die() {
    say "error: $1"
    [ -z "${2:-}" ] || say "hint:  $2"
    exit 1
}

need() {
    command -v "$1" >/dev/null 2>&1 || die "$1 is not installed" "run script/bootstrap"
}

# Says where an unexpected failure happened; what is expected to fail speaks for itself through die.
trap 'say "error: $(basename "$0") stopped at line $LINENO ($BASH_COMMAND)"
      say "hint:  script/$(basename "$0") -h says what it needs; script/bootstrap installs what is missing"' ERR

# Our own files that a check or the formatter looks at: those under version control and new ones.
# Deleted ones that are not committed yet are left out.
our_files() {
    git -C "$root" ls-files --cached --others --exclude-standard -- "$@" | sort -u \
        | while IFS= read -r file; do [ -f "$root/$file" ] && printf '%s\n' "$file"; done || true
}
