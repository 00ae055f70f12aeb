# Pictures must be the same on every machine and in every build type: no fused
# multiply-add, nowhere.
add_compile_options(-ffp-contract=off)
# Nobody asks for errno after a root, nor for the flags of floating-point exceptions.
# Without them loops over mesh points become vector code; no value changes.
add_compile_options(-fno-math-errno -fno-trapping-math)

if(ZEPHRANT_SANITIZE)
  # Tests that take memory away from a program ask for it: compilers have no common name.
  add_compile_definitions(ZEPHRANT_SANITIZED)
  add_compile_options(-fsanitize=${ZEPHRANT_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZEPHRANT_SANITIZE})
endif()

# src is compiled so that its programs count which of its lines are run. What is counted
# stands in the sources, whatever is optimised afterwards.
if(ZEPHRANT_COVERAGE)
  add_link_options(-fprofile-instr-generate)
endif()

if(ZEPHRANT_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Every folder links `warnings`; folders that compute link `strict` as well.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow
                                          -Wold-style-cast)
if(ZEPHRANT_WERROR)
  target_compile_options(warnings INTERFACE -Werror)
endif()
add_library(strict INTERFACE)
target_link_libraries(strict INTERFACE warnings)
target_compile_options(strict INTERFACE -Wconversion -Wno-sign-conversion)

# The programs' version as a string, ZEPHRANT_VERSION; who tells it links this.
add_library(version INTERFACE)
target_compile_definitions(version INTERFACE ZEPHRANT_VERSION="${PROJECT_VERSION}")
