#include "host_render/Canvas.h"

#include <memory>

using namespace render_test;
using MHWRender::MBlendState;
using MHWRender::MSamplerState;
using MHWRender::MUIDrawManager;

namespace {

struct DrawManagerTest : testing::Test {
    host::DrawManager manager{"probe"};
    MUIDrawManager& ui = manager.api();
    Canvas canvas{200, 120};
    Errors errors;

    void show() { canvas.draw(manager.take()); }
    void texturedRect(MHWRender::MTexture* texture, const MVector& up, double x, double y) {
        ui.beginDrawable();
        ui.setTexture(texture, {}, 0.0f);
        ui.setTextureSampler(MSamplerState::kMinMagMipPoint, MSamplerState::kTexClamp);
        ui.setTextureMask(MBlendState::kRGBAChannels);
        ui.setColor(MColor(1, 1, 1, 1));
        ui.rect2d(MPoint(100, 60), up, x, y, true);
        ui.endDrawable();
    }
};

TEST_F(DrawManagerTest, TexturedRectIsUprightAndTakesHalfExtents) {
    const Texture texture(quarters());
    texturedRect(texture.texture, MVector(0, 1, 0), 40, 20);
    show();
    EXPECT_EQ(canvas.painted(), QRect(60, 40, 80, 40));
    EXPECT_EQ(canvas.at(62, 77), QColor(Qt::red)) << "first row of the image on top";
    EXPECT_EQ(canvas.at(137, 77), QColor(Qt::green));
    EXPECT_EQ(canvas.at(62, 42), QColor(Qt::blue));
    EXPECT_EQ(canvas.at(137, 42), QColor(Qt::white));
}

TEST_F(DrawManagerTest, UpVectorTurnsTheRectWhateverItsLength) {
    const Texture texture(quarters());
    texturedRect(texture.texture, MVector(7, 0, 0), 40, 20);
    show();
    EXPECT_EQ(canvas.painted(), QRect(80, 20, 40, 80));
    EXPECT_EQ(canvas.at(117, 97), QColor(Qt::red)) << "its top looks to the right";
    EXPECT_EQ(canvas.at(117, 22), QColor(Qt::green));
    EXPECT_EQ(canvas.at(82, 97), QColor(Qt::blue));
}

TEST_F(DrawManagerTest, FaintPixelsNeedAThresholdOfZero) {
    struct Case {
        int alpha;
        bool defaultThreshold;
        bool drawn;
    };
    for (const Case& c : {Case{8, true, false}, Case{8, false, true}, Case{12, true, false},
                          Case{14, true, true}, Case{255, true, true}}) {
        const Texture texture(plain(QColor(255, 255, 255, c.alpha)));
        ui.beginDrawable();
        if (c.defaultThreshold)
            ui.setTexture(texture.texture);
        else
            ui.setTexture(texture.texture, {}, 0.0f);
        ui.setColor(MColor(1, 1, 1, 1));
        ui.rect2d(MPoint(50, 50), MVector(0, 1, 0), 10, 10, true);
        ui.endDrawable();
        show();
        EXPECT_NEAR(canvas.at(50, 50).red(), c.drawn ? c.alpha : 0, 1) << c.alpha;
    }
}

TEST_F(DrawManagerTest, ColourMultipliesAndMaskChoosesChannels) {
    const Texture texture(plain(QColor(200, 100, 50, 128)));
    const struct {
        MBlendState::ChannelMask mask;
        QColor expected;
    } cases[] = {{MBlendState::kRGBAChannels, QColor(50, 25, 13)},
                 {MBlendState::kRGBChannels, QColor(100, 50, 25)},
                 {MBlendState::kAlphaChannel, QColor(64, 64, 64)}};
    for (const auto& c : cases) {
        ui.beginDrawable();
        ui.setTexture(texture.texture, {}, 0.0f);
        EXPECT_EQ(ui.setTextureMask(c.mask), MS::kSuccess);
        ui.setColor(MColor(1, 1, 1, 0.5f));
        ui.rect2d(MPoint(50, 50), MVector(0, 1, 0), 10, 10, true);
        ui.endDrawable();
        show();
        const QColor seen = canvas.at(50, 50);
        EXPECT_NEAR(seen.red(), c.expected.red(), 2) << c.mask;
        EXPECT_NEAR(seen.green(), c.expected.green(), 2) << c.mask;
        EXPECT_NEAR(seen.blue(), c.expected.blue(), 2) << c.mask;
    }
}

TEST_F(DrawManagerTest, FilterSmoothsAndAddressRepeats) {
    QImage halves(2, 1, QImage::Format_RGBA8888);
    halves.setPixelColor(0, 0, Qt::black);
    halves.setPixelColor(1, 0, Qt::white);
    const Texture texture(halves);
    const auto sample = [&](MSamplerState::TextureFilter filter,
                            MSamplerState::TextureAddress address, int x) {
        ui.beginDrawable();
        ui.setTexture(texture.texture);
        EXPECT_EQ(ui.setTextureSampler(filter, address), MS::kSuccess);
        ui.setColor(MColor(1, 1, 1));
        ui.rect2d(MPoint(100, 60), MVector(0, 1, 0), 100, 10, true);
        ui.endDrawable();
        show();
        return canvas.at(x, 60).red();
    };
    EXPECT_EQ(sample(MSamplerState::kMinMagMipPoint, MSamplerState::kTexClamp, 98), 0);
    EXPECT_EQ(sample(MSamplerState::kMinMagMipPoint, MSamplerState::kTexClamp, 101), 255);
    EXPECT_NEAR(sample(MSamplerState::kMinMagMipLinear, MSamplerState::kTexClamp, 100), 128, 4);
    EXPECT_EQ(sample(MSamplerState::kMinMagMipLinear, MSamplerState::kTexClamp, 2), 0);
    EXPECT_GT(sample(MSamplerState::kMinMagMipLinear, MSamplerState::kTexWrap, 2), 100)
        << "the other end shines through the border";
}

TEST_F(DrawManagerTest, ColourIsResetTextureSamplerAndMaskStay) {
    const Texture texture(plain(QColor(255, 0, 0, 128)));
    ui.beginDrawable();
    ui.setTexture(texture.texture, {}, 0.0f);
    ui.setTextureMask(MBlendState::kRGBChannels);
    ui.setColor(MColor(0, 1, 0, 1));
    ui.setLineWidth(9);
    ui.endDrawable();

    ui.beginDrawable();
    ui.rect2d(MPoint(50, 50), MVector(0, 1, 0), 10, 10, true);
    ui.line2d(MPoint(100, 20), MPoint(150, 20));
    ui.setTexture(nullptr);
    ui.rect2d(MPoint(150, 80), MVector(0, 1, 0), 10, 10, true);
    ui.endDrawable();
    show();
    EXPECT_NEAR(canvas.at(50, 50).red(), 179, 1) << "0.7, opaque by the mask";
    EXPECT_EQ(canvas.at(50, 50).green(), 0);
    EXPECT_EQ(canvas.at(125, 24), QColor(Qt::black)) << "one pixel wide again";
    EXPECT_NEAR(canvas.at(150, 80).green(), 179, 1) << "no texture any more";
}

TEST_F(DrawManagerTest, NothingIsDrawnOutsideADrawable) {
    const Texture texture(quarters());
    ui.setColor(MColor(1, 1, 1));
    EXPECT_EQ(ui.setTexture(texture.texture), MS::kFailure);
    EXPECT_EQ(ui.setTextureMask(MBlendState::kRGBAChannels), MS::kFailure);
    ui.rect2d(MPoint(50, 50), MVector(0, 1, 0), 10, 10, true);
    ui.line2d(MPoint(0, 0), MPoint(100, 100));
    ui.circle2d(MPoint(50, 50), 20);
    ui.text2d(MPoint(50, 50), "text");
    ui.endDrawable();
    ASSERT_EQ(errors.texts.size(), 8u);
    EXPECT_NE(errors.texts.front().find("probe: MUIDrawManager::setColor"), std::string::npos);
    EXPECT_TRUE(manager.take().empty());

    ui.beginDrawable();
    ui.beginDrawable();
    EXPECT_EQ(errors.texts.size(), 9u) << "one drawable inside another";
    manager.take();
    EXPECT_EQ(errors.texts.size(), 10u) << "never ended";
}

TEST_F(DrawManagerTest, UnsupportedSamplersMasksAndTexturesFailAndChangeNothing) {
    const Texture texture(plain(Qt::green));
    auto gone = std::make_unique<Texture>(plain(Qt::red));
    MHWRender::MTexture* released = gone->texture;
    gone.reset();
    ui.beginDrawable();
    ui.setTexture(texture.texture);
    EXPECT_EQ(ui.setTexture(released), MS::kInvalidParameter);
    EXPECT_EQ(ui.setTextureSampler(MSamplerState::kAnisotropic, MSamplerState::kTexClamp),
              MS::kInvalidParameter);
    EXPECT_EQ(ui.setTextureSampler(MSamplerState::kMinMagMipLinear, MSamplerState::kTexMirror),
              MS::kInvalidParameter);
    EXPECT_EQ(ui.setTextureMask(MBlendState::kRedChannel), MS::kInvalidParameter);
    ui.setColor(MColor(1, 1, 1));
    ui.rect2d(MPoint(50, 50), MVector(0, 0, 1), 10, 10, true);
    EXPECT_EQ(errors.texts.size(), 5u) << "an up vector along the view has no direction in it";
    ui.rect2d(MPoint(50, 50), MVector(0, 1, 0), 10, 10, true);
    ui.endDrawable();
    show();
    EXPECT_EQ(canvas.at(50, 50), QColor(Qt::green));
}

TEST_F(DrawManagerTest, OutlinesCirclesLinesAndText) {
    ui.beginDrawable(MUIDrawManager::kNonSelectable, 3);
    ui.setColor(MColor(1, 1, 0));
    ui.rect2d(MPoint(60.5, 60.5), MVector(0, 1, 0), 30, 20);
    ui.endDrawable();
    show();
    EXPECT_EQ(canvas.at(60, 60), QColor(Qt::black)) << "not filled";
    EXPECT_NEAR(canvas.painted().width(), 61, 1);
    EXPECT_NEAR(canvas.painted().height(), 41, 1);

    ui.beginDrawable();
    ui.circle2d(MPoint(100, 60), 25);
    ui.endDrawable();
    show();
    EXPECT_NEAR(canvas.painted().left(), 75, 1);
    EXPECT_NEAR(canvas.painted().right(), 125, 1);
    EXPECT_NEAR(canvas.painted().top(), 35, 1);
    EXPECT_EQ(canvas.at(100, 60), QColor(Qt::black));

    ui.beginDrawable();
    ui.setLineWidth(4);
    ui.line2d(MPoint(10, 60), MPoint(190, 60));
    ui.endDrawable();
    show();
    EXPECT_EQ(canvas.painted().height(), 4);
    EXPECT_NEAR(canvas.painted().width(), 180, 1);

    ui.beginDrawable();
    ui.setFontSize(24);
    ui.text2d(MPoint(100, 30), "12", MUIDrawManager::kCenter);
    ui.endDrawable();
    show();
    EXPECT_NEAR(canvas.painted().center().x(), 100, 4);
    EXPECT_GE(canvas.painted().top(), 30) << "stands on its position";
    EXPECT_GT(canvas.painted().height(), 12);
}

} // namespace
