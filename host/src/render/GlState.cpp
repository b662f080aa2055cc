#include "render/GlState.h"

#include <QOpenGLFunctions>

namespace host {

namespace {
int depth(GLenum which) {
    GLint value = 0;
    glGetIntegerv(which, &value);
    return value;
}

/// True when the stack was not deeper than expected; it is not now.
bool unwind(GLenum mode, GLenum which, int expected) {
    glMatrixMode(mode);
    const int found = depth(which);
    for (int i = found; i > expected; --i)
        glPopMatrix();
    return found == expected;
}
} // namespace

GlState::GlState() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    projectionDepth_ = depth(GL_PROJECTION_STACK_DEPTH);
    modelViewDepth_ = depth(GL_MODELVIEW_STACK_DEPTH);
    attributeDepth_ = depth(GL_ATTRIB_STACK_DEPTH);
}

GlState::~GlState() {
    restore();
}

bool GlState::restore() {
    if (restored_)
        return true;
    restored_ = true;
    const int attributes = depth(GL_ATTRIB_STACK_DEPTH);
    for (int i = attributes; i > attributeDepth_; --i)
        glPopAttrib();
    bool balanced = attributes == attributeDepth_;
    balanced &= unwind(GL_MODELVIEW, GL_MODELVIEW_STACK_DEPTH, modelViewDepth_);
    balanced &= unwind(GL_PROJECTION, GL_PROJECTION_STACK_DEPTH, projectionDepth_);
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopClientAttrib();
    if (attributes >= attributeDepth_)
        glPopAttrib();
    return balanced;
}

void loadMatrix(const MMatrix& matrix) {
    glLoadMatrixd(&matrix.matrix[0][0]);
}

} // namespace host
