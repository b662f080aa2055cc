#pragma once

#include "foundation/Report.h"
#include "render/DrawManager.h"
#include "render/Frame.h"
#include "render/GlOffscreen.h"
#include "render/TextureStore.h"

#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace render_test {

/// Draws lists into a cleared picture; positions are port pixels, origin at the bottom left.
class Canvas {
public:
    Canvas(int width, int height) {
        frame_.width = width;
        frame_.height = height;
    }

    void draw(const host::DrawList& items) {
        host::GlOffscreen* offscreen = host::GlOffscreen::instance();
        ASSERT_NE(offscreen, nullptr) << "no OpenGL";
        const host::CurrentContext keeper;
        ASSERT_TRUE(offscreen->makeCurrent());
        QOpenGLFramebufferObject target(frame_.width, frame_.height,
                                        QOpenGLFramebufferObject::CombinedDepthStencil);
        ASSERT_TRUE(target.bind());
        host::TextureStore::instance().collect();
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        host::drawItems(items, frame_);
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        image_ = target.toImage();
        image_.reinterpretAsFormat(QImage::Format_RGB32);
    }

    QColor at(int x, int y) const { return image_.pixelColor(x, frame_.height - 1 - y); }
    /// The rectangle of all pixels that are not black; port pixels, top excluded.
    QRect painted() const {
        QRect area;
        for (int y = 0; y < image_.height(); ++y)
            for (int x = 0; x < image_.width(); ++x)
                if (image_.pixelColor(x, y) != QColor(Qt::black))
                    area |= QRect(x, frame_.height - 1 - y, 1, 1);
        return area;
    }

private:
    host::Frame frame_;
    QImage image_;
};

/// The errors reported while it lives.
class Errors {
public:
    Errors()
        : id_(host::report::addListener([this](host::report::Level level, const std::string& text) {
              if (level == host::report::Level::Error)
                  texts.push_back(text);
          })) {}
    ~Errors() { host::report::removeListener(id_); }
    std::vector<std::string> texts;

private:
    int id_;
};

/// A texture acquired for a test and released with it.
class Texture {
public:
    explicit Texture(const QImage& image, const char* name = "") {
        const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888);
        MHWRender::MTextureDescription description;
        description.setToDefault2DTexture();
        description.fWidth = unsigned(rgba.width());
        description.fHeight = unsigned(rgba.height());
        texture = host::TextureStore::instance().acquire(name, description, rgba.constBits(), true);
    }
    ~Texture() { host::TextureStore::instance().release(texture); }
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

    MHWRender::MTexture* texture;
};

inline QImage plain(const QColor& color, int size = 8) {
    QImage image(size, size, QImage::Format_RGBA8888);
    image.fill(color);
    return image;
}

/// Quarters: red at the top left, green top right, blue bottom left, white bottom right.
inline QImage quarters(int size = 64) {
    QImage image(size, size, QImage::Format_RGBA8888);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            image.setPixelColor(x, y,
                                y < size / 2 ? (x < size / 2 ? Qt::red : Qt::green)
                                             : (x < size / 2 ? Qt::blue : Qt::white));
    return image;
}

} // namespace render_test
