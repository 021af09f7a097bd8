# SPDX-License-Identifier: MIT
#
# What the scripts share; sourced by them, in bash, as the first thing they do.
set -euo pipefail

program=$(basename "$0")
caller=$PWD
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
jobs=$(nproc)

# Ends the script with one line that says what is wrong.
fail() {
    printf '%s: %s\n' "$program" "$*" >&2
    exit 1
}

mkdir -p build 2>/dev/null && [ -w build ] || fail "cannot write to the folder $root/build"

# fontconfig, Qt and the compiler cache keep things at home; without a home they get one here.
if [ ! -d "${HOME:-}" ] || [ ! -w "$HOME" ]; then
    export HOME=$root/build/home
    mkdir -p "$HOME"
fi

# Configures and builds a preset: build_preset NAME [TARGET ...].
build_preset() {
    local preset=$1 log=build/configure-$1.log
    shift
    cmake --preset "$preset" >"$log" 2>&1 || {
        cat "$log" >&2
        fail "the preset '$preset' could not be configured; the reason stands above"
    }
    cmake --build --preset "$preset" --parallel "$jobs" ${1:+--target "$@"} ||
        fail "the preset '$preset' does not build; the reason stands above"
}
