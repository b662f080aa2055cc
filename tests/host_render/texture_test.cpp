#include "host_render/Canvas.h"

#include <maya/MTextureManager.h>
#include <maya/MViewport2Renderer.h>

using namespace MHWRender;

namespace {

MTextureDescription describe(unsigned int width, unsigned int height) {
    MTextureDescription description;
    description.setToDefault2DTexture();
    description.fWidth = width;
    description.fHeight = height;
    return description;
}

struct TextureTest : testing::Test {
    MTextureManager* manager = MRenderer::theRenderer()->getTextureManager();
    std::vector<unsigned char> red = std::vector<unsigned char>(4 * 4 * 4, 0);

    TextureTest() {
        for (std::size_t i = 0; i < red.size(); i += 4)
            red[i] = red[i + 3] = 255;
    }
    static std::vector<unsigned char> pixels(const MTexture* texture) {
        return host::GlTexture::of(texture)->pixels();
    }
};

TEST_F(TextureTest, TheSameNameIsTheSameTextureUntilTheLastReference) {
    const std::size_t before = host::TextureStore::instance().count();
    const std::vector<unsigned char> other(4 * 4 * 4, 7);
    MTexture* first = manager->acquireTexture("one", describe(4, 4), red.data());
    MTexture* second = manager->acquireTexture("one", describe(8, 8), other.data());
    EXPECT_EQ(first, second);
    EXPECT_EQ(pixels(second), red) << "the pixels of the first call hold";
    MTexture* unnamed = manager->acquireTexture("", describe(4, 4), red.data());
    MTexture* unnamed2 = manager->acquireTexture("", describe(4, 4), red.data());
    EXPECT_NE(unnamed, unnamed2);
    manager->releaseTexture(unnamed);
    manager->releaseTexture(unnamed2);

    manager->releaseTexture(first);
    EXPECT_EQ(host::TextureStore::instance().count(), before + 1);
    manager->releaseTexture(second);
    manager->releaseTexture(second);
    manager->releaseTexture(nullptr);
    EXPECT_EQ(host::TextureStore::instance().count(), before);
}

TEST_F(TextureTest, DescriptionsThatCannotBeMadeAreRefused) {
    MTextureDescription unset;
    EXPECT_EQ(manager->acquireTexture("bad", unset, red.data()), nullptr);
    MTextureDescription wrong = describe(4, 4);
    wrong.fFormat = kR32_FLOAT;
    EXPECT_EQ(manager->acquireTexture("bad", wrong, red.data()), nullptr);
    wrong = describe(4, 4);
    wrong.fTextureType = kCubeMap;
    EXPECT_EQ(manager->acquireTexture("bad", wrong, red.data()), nullptr);
    wrong = describe(4, 4);
    wrong.fBytesPerRow = 8;
    EXPECT_EQ(manager->acquireTexture("bad", wrong, red.data()), nullptr);
    EXPECT_EQ(manager->acquireTexture("bad", describe(100000, 4), nullptr), nullptr);
}

TEST_F(TextureTest, UpdateOfARegionTouchesTheRegionAlone) {
    MTexture* texture = manager->acquireTexture("region", describe(4, 4), red.data());
    // Two by three pixels inside rows of five.
    std::vector<unsigned char> blue(5 * 3 * 4, 0);
    for (std::size_t i = 2; i < blue.size(); i += 4)
        blue[i] = 200;
    MTextureUpdateRegion region;
    region.fXRangeMin = 1;
    region.fXRangeMax = 3;
    region.fYRangeMin = 1;
    region.fYRangeMax = 4;
    ASSERT_EQ(texture->update(blue.data(), true, 5 * 4, &region), MS::kSuccess);
    const auto now = pixels(texture);
    for (unsigned int y = 0; y < 4; ++y)
        for (unsigned int x = 0; x < 4; ++x) {
            const bool inside = x >= 1 && x < 3 && y >= 1;
            EXPECT_EQ(now[(y * 4 + x) * 4 + 2], inside ? 200 : 0) << x << ' ' << y;
            EXPECT_EQ(now[(y * 4 + x) * 4], inside ? 0 : 255) << x << ' ' << y;
        }

    const auto refused = [&](const void* from, unsigned int pitch) {
        return texture->update(from, true, pitch, &region) == MS::kInvalidParameter;
    };
    EXPECT_TRUE(refused(nullptr, 0));
    EXPECT_TRUE(refused(blue.data(), 4));
    region.fXRangeMax = 5;
    EXPECT_TRUE(refused(blue.data(), 0));
    region.fXRangeMax = 1;
    EXPECT_TRUE(refused(blue.data(), 0));
    EXPECT_EQ(pixels(texture), now);
    manager->releaseTexture(texture);
}

TEST_F(TextureTest, WhatIsDrawnFollowsUpdatesAndOutlivesTheRelease) {
    render_test::Canvas canvas(64, 64);
    MTexture* texture = manager->acquireTexture("drawn", describe(4, 4), red.data());
    const auto queue = [&texture] {
        host::DrawManager draw("probe");
        draw.api().beginDrawable();
        draw.api().setTexture(texture);
        draw.api().setColor(MColor(1, 1, 1));
        draw.api().rect2d(MPoint(32, 32), MVector(0, 1, 0), 32, 32, true);
        draw.api().endDrawable();
        return draw.take();
    };
    EXPECT_EQ(texture->resourceHandle(), nullptr);
    canvas.draw(queue());
    EXPECT_EQ(canvas.at(10, 10), QColor(Qt::red));
    EXPECT_NE(texture->resourceHandle(), nullptr);

    const unsigned char blue[4] = {0, 0, 255, 255};
    MTextureUpdateRegion corner;
    ASSERT_EQ(texture->update(blue, true, 0, &corner), MS::kSuccess);
    host::DrawList queued = queue();
    manager->releaseTexture(texture);
    canvas.draw(queued);
    EXPECT_EQ(canvas.at(4, 60), QColor(Qt::blue)) << "first row, first pixel: top left";
    EXPECT_EQ(canvas.at(60, 4), QColor(Qt::red));
}

} // namespace
