// MUserData lost its deleteAfterUse argument: since 2022 it has a constructor without arguments and
// Maya keeps the data until it is replaced. The difference is hidden here.
#pragma once

#include <maya/MTypes.h>
#include <maya/MUserData.h>

namespace vellum {

/// User data that Maya keeps from one refresh to the next.
class KeptUserData : public MUserData {
public:
#if MAYA_API_VERSION >= 20220000
    KeptUserData() = default;
#else
    KeptUserData() : MUserData(false) {
    }
#endif
};

} // namespace vellum
