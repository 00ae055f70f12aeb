#!/usr/bin/env bash
# first_commands.sh CHECKOUT: what ./run and ./test do in a checkout that was copied,
# moved or cannot be written, and what is heard of the package manager. They are run in a
# small project whose program tells its source; cmake and ninja are the real ones.
# Exit status 77 where one of those is missing.
set -euo pipefail
checkout=$1
command -v cmake > /dev/null && command -v ninja > /dev/null || exit 77
unset DISPLAY WAYLAND_DISPLAY

folder=$(mktemp -d)
trap 'chmod -R u+w "$folder"; rm -rf "$folder"' EXIT
chmod 755 "$folder" # another user looks in
cd "$folder"

failed=0
# expect WHAT COMMAND...: counts a command that fails.
expect() {
    local what=$1
    shift
    "$@" || {
        echo "FAILED: $what"
        sed 's/^/    /' said
        failed=1
    }
}
says() { grep -qF -- "$1" said; }
says_not() { ! grep -qF -- "$1" said; }
# attempt COMMAND...: what it says goes into the file said, its exit status into $status.
attempt() {
    status=0
    "$@" > "$folder/said" 2>&1 < /dev/null || status=$?
}
run_in() { (cd "$1" && ./run); }
test_in() { (cd "$1" && ./test); }

# The package manager of this system: $packages says what it makes of a request.
mkdir bin
cat > bin/dpkg-query << 'END'
#!/bin/sh
[ "${packages:-installed}" = installed ] && echo "install ok installed"
END
cat > bin/apt-get << 'END'
#!/bin/sh
echo "chatter of apt-get $1"
echo "warning of apt-get $1" >&2
[ "$packages" != broken ] || [ "$1" = update ] || exit 100
END
printf '#!/bin/sh\nexec "$@"\n' > bin/sudo
chmod +x bin/*
export PATH=$folder/bin:$PATH

mkdir -p first/examples
cp -r "$checkout/run" "$checkout/test" "$checkout/scripts" "$checkout/CMakePresets.json" first
cat > first/CMakeLists.txt << 'END'
cmake_minimum_required(VERSION 3.25)
project(Small NONE)
foreach(program zephrant zephrant-render)
  add_custom_command(OUTPUT ${program} DEPENDS source
                     COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_SOURCE_DIR}/source ${program})
  add_custom_target(${program}-made ALL DEPENDS ${program})
endforeach()
enable_testing()
add_test(NAME source COMMAND ${CMAKE_BINARY_DIR}/zephrant)
END
write_source() {
    printf '#!/bin/sh\necho "made of %s"\n' "$2" > "$1/source"
    chmod +x "$1/source"
}
write_source first "the first"

attempt run_in first
expect "a fresh checkout is built" says "made of the first"
attempt run_in first
expect "a build is used again" says_not "-- Configuring done"

cp -r first copy
write_source copy "the copy"
touch -r first/source copy/source # as new as what was built of the other one
attempt run_in copy
expect "a copy builds its own sources" says "made of the copy"
expect "it says why it begins anew" says "build/release was made for $folder/first"
attempt run_in first
expect "the first keeps its build" says "made of the first"
expect "and has no reason to begin anew" says_not "anew"

cp -r first second
mv second moved
write_source moved "the moved"
attempt test_in moved
expect "the tests of a moved checkout pass" test "$status" -eq 0
attempt env ZEPHRANT=1 sh -c "moved/build/release/zephrant"
expect "a moved checkout builds its own sources" says "made of the moved"

ln -s first link
attempt run_in link
expect "a link is the same checkout" says_not "anew"

# Whoever may write everywhere looks at it as another user.
as_reader=()
if [ "$(id -u)" -eq 0 ]; then
    command -v setpriv > /dev/null && as_reader=(setpriv --reuid=65534 --clear-groups)
fi
cp -r first readonly
rm -rf readonly/build readonly/frames
chmod -R a+rX,a-w readonly
if [ "$(id -u)" -ne 0 ] || [ ${#as_reader[@]} -gt 0 ]; then
    for command in ./run ./test; do
        attempt env --chdir="$folder/readonly" "${as_reader[@]}" "$command"
        expect "a checkout that cannot be written fails $command" test "$status" -eq 1
        expect "it says so" says "$folder/readonly/build cannot be written"
        expect "in one sentence" test "$(wc -l < said)" -eq 1
    done
fi

export packages=missing
attempt run_in first
expect "packages are named" says "Installing: g++"
expect "and nothing else is heard" says_not "of apt-get"
expect "the build goes on" says "made of the first"
export packages=broken
attempt run_in first
expect "packages that cannot be had end it" test "$status" -eq 100
expect "with what was said" says "chatter of apt-get install"
expect "on either stream" says "warning of apt-get install"
expect "and nothing of what went well" says_not "of apt-get update"

exit "$failed"
