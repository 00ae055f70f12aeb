# The checks of scripts/check, a function for each name. They run in the top folder of the
# checkout.
checks=(format release floors examples clang coverage threads tidy run)
# By name only: every source by clang-tidy takes an hour of two cores.
further_checks=(tidy-all)

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
# sanitizers. The same run counts lines.
check_clang() {
    with_compiler "${clang_packages[@]}"
    rm -rf build/sanitize/lines
    ./test --sanitize
    touch build/sanitize/lines/counted
}

# The programs that count lines, those of the tests among them.
counting_programs() {
    find build/sanitize build/sanitize/tests -maxdepth 1 -type f -perm -u+x "$@"
}

# Whether the lines that were counted are those of the programs that are there now.
lines_are_counted() {
    local counted=build/sanitize/lines/counted
    [ -e "$counted" ] && [ -z "$(counting_programs -newer "$counted")" ]
}

# Lines of src that the tests run, by folder: FOLDER LINES RUN.
lines_by_folder() {
    local programs
    mapfile -t programs < <(counting_programs)
    llvm-profdata-14 merge --sparse --output build/sanitize/lines/all.profdata \
        build/sanitize/lines/*.profraw
    # What it warns of are functions of tests that have a name in common.
    llvm-cov-14 export --format lcov --summary-only \
        --instr-profile build/sanitize/lines/all.profdata \
        "${programs[0]}" "${programs[@]/#/--object=}" \
        | awk -F: '
            $1 == "SF" { folder = $2; sub(/.*\/src\//, "src/", folder)
                         if (!sub(/^src\//, "", folder) || $2 ~ /_autogen/) folder = ""
                         sub(/\/.*/, "", folder) }
            folder && $1 == "LF" { lines[folder] += $2 }
            folder && $1 == "LH" { run[folder] += $2 }
            END { for (folder in lines) print folder, lines[folder], run[folder] }' \
        | sort
}

# covered PERCENT NAME FOLDER...: that share of the lines of these folders of src is run;
# without FOLDER of all. Reads what lines_by_folder tells.
covered() {
    local least=$1 name=$2
    shift 2
    awk -v least="$least" -v name="$name" -v folders="$*" '
        !folders || index(" " folders " ", " " $1 " ") { lines += $2; run += $3 }
        END {
            share = lines ? 100 * run / lines : 0
            printf "%-16s %6d of %6d lines, %5.1f %%", name, run, lines, share
            print (least > 0 ? ", at least " least " %" : "")
            exit share < least
        }'
}

core_folders=(base iso8211 scene raster qtga flight render importers tools run)

# Share of the lines that the tests run.
check_coverage() {
    with_compiler "${clang_packages[@]}" llvm-14
    build sanitize
    lines_are_counted || check_clang
    local lines folder of run status=0
    lines=$(lines_by_folder)
    while read -r folder of run; do
        covered 0 "$folder" "$folder" <<< "$lines"
    done <<< "$lines"
    covered 90 "Core libraries" "${core_folders[@]}" <<< "$lines" || status=1
    covered 80 "All" <<< "$lines" || status=1
    return "$status"
}

# The thread sanitizer over what works in several threads: rendering, runs, writers,
# workers, and what they do to terrain.
threaded_tests=(test_workerpool test_wholefile test_pngwriter
                test_shading test_horizonlines test_groundtexture test_elevationpicture)
threaded_folders=(live render run)
check_threads() {
    with_compiler lld
    local targets=("${threaded_folders[@]/#/tests/}")
    build tsan "${targets[@]/%//all}" "${threaded_tests[@]}"
    local folder
    for folder in "${threaded_folders[@]}"; do
        tests_in "build/tsan/tests/$folder"
    done
    local IFS='|'
    tests_in build/tsan -R "^(${threaded_tests[*]})$"
}

# tidy_sources SECONDS FILE...: no finding of .clang-tidy in these. No source is begun after
# SECONDS; those that were not reached are named. The compiler's own options come from the
# release build, whose generated headers are made first.
tidy_sources() {
    local seconds=$1 end
    shift
    with_compiler clang-tidy-14
    build release
    # The headers that gcc has compiled ahead are nothing that clang can read.
    mkdir -p build/tidy
    sed -E 's/ -(Winvalid-pch|fpch-preprocess|include [^ ]*cmake_pch[^ ]*)//g' \
        build/release/compile_commands.json > build/tidy/compile_commands.json
    end=$(($(date +%s) + seconds))
    printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -n 1 bash -c '
        if [ "$(date +%s)" -ge "$0" ]; then
            echo "Not reached: $1"
        else
            clang-tidy-14 --quiet -p build/tidy --extra-arg=-Wno-unknown-warning-option "$1"
        fi' "$end"
}

# The sources that differ from CHECK_BASE, what is not committed yet included. On the base
# itself, and where a clone does not know it, those of the last commit.
changed_sources() {
    local base
    base=$(git merge-base HEAD "${CHECK_BASE:-origin/main}" 2> /dev/null) || base=HEAD
    [ "$(git rev-parse "$base")" != "$(git rev-parse HEAD)" ] || base=HEAD~1
    git rev-parse --verify --quiet "$base" > /dev/null || {
        echo "There is no commit to compare with." >&2
        return 0
    }
    git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp' 'tests/*.cpp' \
        ':!tests/fuzz/fuzz_*'
}

# A change of every source would take an hour: what three minutes do not reach is left to
# tidy-all.
check_tidy() {
    local files
    mapfile -t files < <(changed_sources)
    [ ${#files[@]} -eq 0 ] || tidy_sources "${CHECK_TIDY_SECONDS:-180}" "${files[@]}"
}

check_tidy_all() {
    local files
    mapfile -t files < <(git ls-files 'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' \
        'examples/*.cpp' ':!tests/fuzz/fuzz_*')
    tidy_sources 86400 "${files[@]}"
}

# The first thing a new user does.
check_run() {
    ./run < /dev/null
}
