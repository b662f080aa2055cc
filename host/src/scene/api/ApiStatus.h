// Setting the optional status argument that most API calls end with.
#pragma once

#include <maya/MStatus.h>

namespace host {

inline void setStatus(MStatus* status, MStatus::MStatusCode code) {
    if (status)
        *status = code;
}

/// kSuccess when `ok`, else kFailure.
inline bool setStatus(MStatus* status, bool ok) {
    if (status)
        *status = ok ? MS::kSuccess : MS::kFailure;
    return ok;
}

} // namespace host
