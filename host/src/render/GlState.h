#pragma once

#include <maya/MMatrix.h>

namespace host {

/// Saves the fixed-function state of the current context and restores it, matrices included.
/// Code inside that leaves more on a stack than it found is unwound.
class GlState {
public:
    GlState();
    ~GlState();
    GlState(const GlState&) = delete;
    GlState& operator=(const GlState&) = delete;

    /// Restores now; the destructor does nothing then. True when the stacks were found as deep
    /// as they were left.
    bool restore();

private:
    int projectionDepth_ = 0;
    int modelViewDepth_ = 0;
    int attributeDepth_ = 0;
    bool restored_ = false;
};

/// Replaces the current matrix. Row-vector matrices lie in memory as OpenGL expects its own.
void loadMatrix(const MMatrix& matrix);

} // namespace host
