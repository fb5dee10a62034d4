# SPDX-License-Identifier: Apache-2.0
# Sourced by the scripts beside it: strict mode, the root of the tree as working folder, and what they share.
# shellcheck shell=bash

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '== %s\n' "$*"; }

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# usage TEXT ARGUMENT...: answers --help.
usage() {
    local text=$1
    shift
    case "${1:-}" in
    -h | --help)
        printf '%s\n' "$text"
        exit 0
        ;;
    esac
}

# configured PRESET [-DNAME=VALUE...]: whether build/PRESET is up to date but for what the build itself sees to.
configured() {
    local folder=build/$1 option
    shift
    [ -f "$folder/build.ninja" ] && [ "$folder/build.ninja" -nt CMakePresets.json ] || return 1
    for option in "$@"; do
        option=${option#-D}
        grep -q "^${option%%=*}:[A-Z]*=${option#*=}\$" "$folder/CMakeCache.txt" || return 1
    done
}

# build PRESET [-DNAME=VALUE...]: configures and builds build/PRESET, all of it or what the array `targets` names.
targets=()
build() {
    local preset=$1 messages
    shift
    if ! configured "$preset" "$@"; then
        say "configuring build/$preset"
        messages=$(cmake --preset "$preset" "$@" 2>&1) || {
            printf '%s\n' "$messages" >&2
            fail "cmake could not configure the preset '$preset'"
        }
    fi
    say "building build/$preset"
    cmake --build --preset "$preset" ${targets[@]+--target "${targets[@]}"} || fail "the preset '$preset' does not build"
}

# run_ctest PRESET [CTEST-OPTION...]
run_ctest() {
    local preset=$1
    shift
    say "testing build/$preset"
    ctest --preset "$preset" --parallel "$(nproc)" "$@"
}

# tracked PATHSPEC...: the files of this checkout that match, new ones that are not ignored counted in.
tracked() {
    git ls-files --cached --others --exclude-standard --deduplicate -- "$@" | while read -r file; do
        [ ! -f "$file" ] || printf '%s\n' "$file"
    done
}
