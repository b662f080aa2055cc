#include "tools/raster/Simd.h"

namespace vellum::simd {

namespace {

bool hasAvx2() {
#ifdef VELLUM_AVX2
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

} // namespace

Target detail::chosen = usable().back();

const char* name(Target target) {
    return target == Target::Avx2 ? "AVX2" : "plain";
}

const std::vector<Target>& usable() {
    static const std::vector<Target> targets =
        hasAvx2() ? std::vector{Target::Plain, Target::Avx2} : std::vector{Target::Plain};
    return targets;
}

void use(Target target) {
    detail::chosen = target;
}

} // namespace vellum::simd
