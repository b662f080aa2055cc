// Loops with one body that is compiled for several kinds of processor, of which the fastest that
// this machine has is used. A body is a function marked VELLUM_INLINE, as are those it calls. Where
// the compiler cannot build for more than its own target, that one is all there is.
#pragma once

#include <vector>

#if defined(__GNUC__) || defined(__clang__)
#define VELLUM_INLINE [[gnu::always_inline]] inline
#if defined(__x86_64__) || defined(__i386__)
#define VELLUM_AVX2 [[gnu::target("avx2")]]
#endif
#else
#define VELLUM_INLINE inline
#endif

namespace vellum::simd {

enum class Target { Plain, Avx2 };

const char* name(Target target);

/// Those this machine runs, the slowest first.
const std::vector<Target>& usable();

namespace detail {
extern Target chosen;
}

/// The fastest, until a test or a benchmark chooses another of usable().
inline Target inUse() {
    return detail::chosen;
}
void use(Target target);

template <auto Body> struct Builds;

template <typename Result, typename... Arguments, Result (*Body)(Arguments...)>
struct Builds<Body> {
    using Function = Result (*)(Arguments...);

    static Result plain(Arguments... arguments) { return Body(arguments...); }
#ifdef VELLUM_AVX2
    VELLUM_AVX2 static Result avx2(Arguments... arguments) {
        return Body(arguments...);
    }
#else
    static constexpr Function avx2 = plain;
#endif
};

/// The body as compiled for this target.
template <auto Body> constexpr typename Builds<Body>::Function build(Target target) {
    return target == Target::Avx2 ? Builds<Body>::avx2 : Builds<Body>::plain;
}

} // namespace vellum::simd
