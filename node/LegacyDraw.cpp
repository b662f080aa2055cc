#include "node/LegacyDraw.h"

#include <QtGlobal>

#include <maya/M3dView.h>

#ifdef Q_OS_WIN
#include <windows.h>
#endif
#ifdef Q_OS_MACOS
#include <OpenGL/gl.h>
#else
#include <GL/gl.h>
#endif

namespace vellum {

namespace {

constexpr int kCanvas = 1024;

void drawQuad(const GateFit& fit) {
    const QuadCorner corner = lowerLeftCorner(fit);
    const float right = corner.x + fit.quadSize;
    const float top = corner.y + fit.quadSize;
    // The first row of the image is its top.
    glBegin(GL_QUADS);
    glTexCoord2f(0.0F, 1.0F);
    glVertex3f(corner.x, corner.y, 1.0F);
    glTexCoord2f(1.0F, 1.0F);
    glVertex3f(right, corner.y, 1.0F);
    glTexCoord2f(1.0F, 0.0F);
    glVertex3f(right, top, 1.0F);
    glTexCoord2f(0.0F, 0.0F);
    glVertex3f(corner.x, top, 1.0F);
    glEnd();
}

void drawOutline(const LegacyDraw::Outline& outline) {
    glDisable(GL_TEXTURE_2D);
    glColor4f(1.0F, 1.0F, 0.0F, 1.0F);
    glBegin(GL_LINE_LOOP);
    for (const QPoint& corner : outline)
        glVertex2i(corner.x(), corner.y());
    glEnd();
}

} // namespace

void LegacyDraw::createTexture() {
    glGenTextures(1, &texture_);
    glBindTexture(GL_TEXTURE_2D, texture_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP);
    glTexImage2D(GL_TEXTURE_2D, 0, 4, kCanvas, kCanvas, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    created_ = true;
}

void LegacyDraw::draw(M3dView& view, const GateFit& fit, const QImage& image, float opacity,
                      const Outline* outline) {
    view.beginGL();
    if (!created_)
        createTexture();

    glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT | GL_CURRENT_BIT |
                 GL_TRANSFORM_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, fit.portWidth, 0.0, fit.portHeight, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(0.375F, 0.375F, 0.0F); // pixel centres
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture_);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, kCanvas, kCanvas, GL_RGBA, GL_UNSIGNED_BYTE,
                    image.constBits());
    glColor4f(1.0F, 1.0F, 1.0F, opacity);
    drawQuad(fit);
    if (outline)
        drawOutline(*outline);

    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopAttrib();
    view.endGL();
}

} // namespace vellum
