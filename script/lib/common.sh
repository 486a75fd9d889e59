# Shared by the scripts in script/: where the checkout is, and how a failure speaks.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build=$root/build

say() { printf '%s\n' "$*" >&2; }

# die MESSAGE HINT
die() {
    say "error: $1"
    [ -z "${2:-}" ] || say "hint:  $2"
    exit 1
}

need() {
    command -v "$1" >/dev/null 2>&1 || die "$1 is not installed" "run script/bootstrap"
}
