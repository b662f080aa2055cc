#include "render/DrawManager.h"
#include "render/Frame.h"
#include "render/GlState.h"
#include "render/TextureStore.h"

#include <QFontMetrics>
#include <QImage>
#include <QOpenGLFunctions>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

using MHWRender::MBlendState;
using MHWRender::MSamplerState;
using MHWRender::MUIDrawManager;

void setSpace(const Frame& frame, bool inWorld) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (inWorld)
        loadMatrix(frame.projection);
    else
        glOrtho(0, frame.width, 0, frame.height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    if (inWorld) {
        loadMatrix(frame.view);
        glEnable(GL_DEPTH_TEST);
    } else {
        glDisable(GL_DEPTH_TEST);
    }
}

void combine(GLenum channel, GLenum operation) {
    const bool rgb = channel == GL_COMBINE_RGB;
    glTexEnvi(GL_TEXTURE_ENV, channel, GLint(operation));
    // A replacing operation reads its first source alone: the plain colour here.
    glTexEnvi(GL_TEXTURE_ENV, rgb ? GL_SOURCE0_RGB : GL_SOURCE0_ALPHA, GL_PRIMARY_COLOR);
    glTexEnvi(GL_TEXTURE_ENV, rgb ? GL_SOURCE1_RGB : GL_SOURCE1_ALPHA, GL_TEXTURE);
}

void useTexture(const DrawItem& item) {
    item.image->bind();
    glEnable(GL_TEXTURE_2D);
    const bool linear = item.filter == MSamplerState::kMinMagMipLinear;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, linear ? GL_LINEAR : GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                    linear ? GL_LINEAR_MIPMAP_LINEAR : GL_NEAREST_MIPMAP_NEAREST);
    const GLint wrap = item.address == MSamplerState::kTexClamp ? GL_CLAMP_TO_EDGE : GL_REPEAT;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);

    if (item.mask == MBlendState::kRGBAChannels) {
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    } else {
        const bool colour = item.mask == MBlendState::kRGBChannels;
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_COMBINE);
        combine(GL_COMBINE_RGB, colour ? GL_MODULATE : GL_REPLACE);
        combine(GL_COMBINE_ALPHA, colour ? GL_REPLACE : GL_MODULATE);
    }
    if (item.alphaThreshold > 0) {
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GEQUAL, item.alphaThreshold);
    }
}

void setLine(const DrawItem& item) {
    glLineWidth(std::max(item.lineWidth, 1.0f));
    GLushort pattern = 0;
    switch (item.lineStyle) {
    case MUIDrawManager::kShortDotted:
        pattern = 0x5555;
        break;
    case MUIDrawManager::kShortDashed:
        pattern = 0x3333;
        break;
    case MUIDrawManager::kDashed:
        pattern = 0x0f0f;
        break;
    case MUIDrawManager::kDotted:
        pattern = 0x1111;
        break;
    case MUIDrawManager::kSolid:
        glDisable(GL_LINE_STIPPLE);
        return;
    }
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(1, pattern);
}

QImage textImage(const DrawItem& item) {
    const QFontMetrics metrics(item.font);
    const QRect bounds = metrics.boundingRect(QRect(), Qt::AlignLeft, item.text);
    const int width = item.backgroundWidth > 0 ? item.backgroundWidth : bounds.width() + 2;
    const int height = item.backgroundHeight > 0 ? item.backgroundHeight : bounds.height();
    QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_RGBA8888);
    const float* b = item.background;
    image.fill(QColor::fromRgbF(b[0], b[1], b[2], b[3]));
    QPainter painter(&image);
    painter.setFont(item.font);
    const float* c = item.color;
    painter.setPen(QColor::fromRgbF(c[0], c[1], c[2], c[3]));
    const int across = item.alignment == MUIDrawManager::kLeft    ? Qt::AlignLeft
                       : item.alignment == MUIDrawManager::kRight ? Qt::AlignRight
                                                                  : Qt::AlignHCenter;
    painter.drawText(image.rect(), across | Qt::AlignVCenter, item.text);
    return image;
}

void drawText(const DrawItem& item) {
    const QImage image = textImage(item);
    double left = item.points.front().x;
    if (item.alignment == MUIDrawManager::kCenter)
        left -= image.width() / 2.0;
    else if (item.alignment == MUIDrawManager::kRight)
        left -= image.width();
    const double x = std::round(left);
    const double y = std::round(item.points.front().y);

    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, image.bytesPerLine() / 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, image.width(), image.height(), 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, image.constBits());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glEnable(GL_TEXTURE_2D);
    const double right = x + image.width();
    const double top = y + image.height();
    glBegin(GL_QUADS);
    glTexCoord2d(0, 1);
    glVertex2d(x, y);
    glTexCoord2d(1, 1);
    glVertex2d(right, y);
    glTexCoord2d(1, 0);
    glVertex2d(right, top);
    glTexCoord2d(0, 0);
    glVertex2d(x, top);
    glEnd();
    glDisable(GL_TEXTURE_2D);
    glDeleteTextures(1, &name);
}

void drawShape(const DrawItem& item) {
    GLenum mode = GL_LINES;
    switch (item.shape) {
    case DrawItem::Shape::Points:
        mode = GL_POINTS;
        glPointSize(std::max(item.pointSize, 1.0f));
        break;
    case DrawItem::Shape::Polygon:
        mode = GL_POLYGON;
        break;
    case DrawItem::Shape::ClosedLine:
        mode = GL_LINE_LOOP;
        setLine(item);
        break;
    default:
        setLine(item);
        break;
    }
    const bool textured = item.image && item.texture.size() == item.points.size();
    if (textured)
        useTexture(item);
    glColor4fv(item.color);
    glBegin(mode);
    for (std::size_t i = 0; i < item.points.size(); ++i) {
        if (textured)
            glTexCoord2d(item.texture[i].x(), item.texture[i].y());
        glVertex3d(item.points[i].x, item.points[i].y, item.inWorld ? item.points[i].z : 0);
    }
    glEnd();
    if (textured) {
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_ALPHA_TEST);
    }
}

} // namespace

void drawItems(const DrawList& items, const Frame& frame) {
    if (items.empty())
        return;
    const GlState guard;
    glViewport(0, 0, frame.width, frame.height);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glDisable(GL_TEXTURE_2D);
    glShadeModel(GL_FLAT);
    // What is blended in leaves an opaque picture opaque.
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (const DrawItem& item : items) {
        setSpace(frame, item.inWorld);
        if (item.shape == DrawItem::Shape::Text)
            drawText(item);
        else
            drawShape(item);
    }
}

} // namespace host
