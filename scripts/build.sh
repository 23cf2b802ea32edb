# shellcheck shell=bash disable=SC2154
# Configuring and building a preset of CMakePresets.json. Needs steps.sh; expects $root.

cmake_wanted=3.25

check_cmake() {
    local found
    found=$(cmake --version 2>/dev/null | sed -n '1s/^cmake version //p') || true
    [ -n "$found" ] || die "cmake is missing. Install version $cmake_wanted or later."
    printf '%s\n' "$cmake_wanted" "$found" | sort -V -C ||
        die "$(command -v cmake) is version $found; version $cmake_wanted or later is needed."
}

# A build folder that was made for a project in another place is of no use here.
drop_foreign_build() {
    local cache="$1/CMakeCache.txt"
    [ ! -f "$cache" ] || grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache" || rm -rf -- "$1"
}

# configure PRESET: does nothing when the build folder is there; the build itself notices changes.
configure() {
    local folder="$root/build/$1"
    check_cmake
    drop_foreign_build "$folder"
    if [ -f "$folder/build.ninja" ] && [ ! "$root/CMakePresets.json" -nt "$folder/build.ninja" ]; then
        return 0
    fi
    say "Configuring the build \"$1\""
    logged "configure-$1" "If nothing above explains it, delete $folder and try again." \
        cmake -S "$root" --preset "$1" || return 1
    touch -- "$folder/build.ninja"
}

# build PRESET [TARGET]: configures where needed and builds the target, or everything.
build() {
    configure "$1" || return 1
    say "Building \"$1\""
    logged "build-$1" "Correct what the compiler says above; a second run goes on from there." \
        cmake --build "$root/build/$1" ${2:+--target "$2"}
}

# What ./run and ./package need of the build "release", without the tests.
build_programs() {
    build release quorlin_programs
}
