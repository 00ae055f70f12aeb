# The checks of scripts/check, a function for each name. They run in the top folder of the
# checkout.
checks=(format release floors examples clang run)
# By name only: with them a cold run on two cores would take more than its 45 minutes.
further_checks=(threads tidy coverage tidy-all)

# with_compiler [PACKAGE...]: what builds, the packages, and a compiler cache.
with_compiler() {
    install_missing "${build_packages[@]}" ccache "$@"
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER:-ccache}
    # Without it the cache does not look at what uses precompiled headers.
    export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}
}

# tests_in FOLDER [ctest options...]
tests_in() {
    local folder=$1
    shift
    QT_QPA_PLATFORM=offscreen ctest --test-dir "$folder" --output-on-failure \
        --no-tests=error -j "$(nproc)" "$@"
}

# Layout of the code.
check_format() {
    install_missing clang-format-14
    git ls-files '*.cpp' '*.h' | xargs -r clang-format-14 --dry-run --Werror
}

# gcc, optimised, warnings as errors; all tests, the replay of the fuzz inputs too.
check_release() {
    with_compiler
    ./test
}

# The plan of docs/architecture.md holds in all sources.
check_floors() {
    with_compiler
    build release test_floors
    tests_in build/release -R '^test_floors$'
}

# Every scenery of examples/ gives all of its frames; their generator gives its pictures.
check_examples() {
    with_compiler
    build release zephrant-render generate_examples
    local scenery name
    work=$(mktemp -d) # not local: it is removed when the function has been left
    trap 'rm -rf "$work"' EXIT
    build/release/generate_examples "$work"
    for name in "$work"/*; do
        cmp "$name" "examples/${name##*/}"
    done
    for scenery in examples/*.zph; do
        name=$(basename "$scenery" .zph)
        build/release/zephrant-render --quiet --preview --format png \
            --output "$work/$name%04d" "$scenery"
        ls "$work/$name"[0-9]*.png > /dev/null
    done
}

# clang, its warnings as errors; all tests under the address and undefined behaviour
# sanitizers.
check_clang() {
    with_compiler "${clang_packages[@]}"
    ./test --sanitize
}

# The thread sanitizer over what works in several threads: rendering, runs, writers,
# terrain.
threaded_folders=(base raster render run terrain)
check_threads() {
    with_compiler
    local targets=("${threaded_folders[@]/#/tests/}")
    build tsan "${targets[@]/%//all}"
    local folder
    for folder in "${threaded_folders[@]}"; do
        tests_in "build/tsan/tests/$folder"
    done
}

# tidy_sources FILE...: no finding of .clang-tidy in these. The compiler's own options come
# from the release build, whose generated headers are made first.
tidy_sources() {
    with_compiler clang-tidy-14
    build release
    # The headers that gcc has compiled ahead are nothing that clang can read.
    mkdir -p build/tidy
    sed -E 's/ -(Winvalid-pch|fpch-preprocess|include [^ ]*cmake_pch[^ ]*)//g' \
        build/release/compile_commands.json > build/tidy/compile_commands.json
    printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -n 4 \
        clang-tidy-14 --quiet -p build/tidy --extra-arg=-Wno-unknown-warning-option
}

# The sources that differ from CHECK_BASE, what is not committed yet included. On the base
# itself those of its last commit.
changed_sources() {
    local base
    base=$(git merge-base HEAD "${CHECK_BASE:-origin/main}" 2> /dev/null) || base=HEAD
    [ "$(git rev-parse "$base")" != "$(git rev-parse HEAD)" ] || base=HEAD~1
    git rev-parse --verify --quiet "$base" > /dev/null || return 0
    git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp' 'tests/*.cpp' \
        ':!tests/fuzz/fuzz_*'
}

check_tidy() {
    local files
    mapfile -t files < <(changed_sources)
    [ ${#files[@]} -eq 0 ] || tidy_sources "${files[@]}"
}

check_tidy_all() {
    local files
    mapfile -t files < <(git ls-files 'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' \
        'examples/*.cpp' ':!tests/fuzz/fuzz_*')
    tidy_sources "${files[@]}"
}

# covered PERCENT FOLDER...: that share of the lines of these folders of src is run.
covered() {
    local least=$1 folder filters=()
    shift
    for folder in "$@"; do
        filters+=(--filter "src/$folder/")
    done
    gcovr --root . --object-directory build/coverage --gcov-executable gcov \
        --exclude-unreachable-branches --print-summary --fail-under-line "$least" \
        "${filters[@]}" --output build/coverage/lines.txt
}

core_folders=(base iso8211 scene raster qtga flight render importers tools run)

# Share of the lines that the tests run, in an unoptimised build.
check_coverage() {
    with_compiler gcovr
    build coverage
    find build/coverage -name '*.gcda' -delete
    tests_in build/coverage
    echo "Core libraries:"
    covered 90 "${core_folders[@]}"
    echo "All:"
    covered 80 '.*'
}

# The first thing a new user does.
check_run() {
    ./run < /dev/null
}
