#pragma once

/// Before a function with a loop: a second version of it for processors with wider
/// vectors. Operations and their order are the same, so the values are.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) &&                   \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define ALSO_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define ALSO_WIDE
#endif
