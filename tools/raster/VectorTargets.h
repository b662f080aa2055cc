// For loops with one body that is compiled several times: for the compiler's own target, and for
// AVX2 where the compiler can. For sources only.
#pragma once

#if defined(__GNUC__) || defined(__clang__)
#define VELLUM_INLINE [[gnu::always_inline]] inline
#if defined(__x86_64__) || defined(__i386__)
#define VELLUM_AVX2 [[gnu::target("avx2")]]
#endif
#else
#define VELLUM_INLINE inline
#endif
