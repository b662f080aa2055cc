// What the override puts into a view, by pixels.
#include "document/Frame.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/BaseNodeDrawOverride.h"
#include "plugin/LinkedClasses.h"
#include "render/Frame.h"
#include "render/View.h"
#include "support/FrameChanges.h"

#include <QImage>
#include <QPainter>

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MSelectionList.h>

namespace vellum::test {
namespace {

const QSize kSize(300, 200);

class Override : public LinkedClasses, public ::testing::WithParamInterface<host::Renderer> {
protected:
    void SetUp() override {
        LinkedClasses::SetUp();
        view_ = std::make_unique<host::View>("testPanel");
        view_->setPortSize(kSize.width(), kSize.height());
        view_->setGridShown(false);
        view_->setRenderer(GetParam());
        view_->setCamera(pathOf("persp"));
        // A square that fills the width, to make places easy to tell.
        ASSERT_TRUE(run(QStringLiteral("setAttr perspShape.filmFit 1; setAttr perspShape.overscan "
                                       "1")));
        document()->addLayer(QStringLiteral("persp"), -1, QString());
        document()->addFrameAtCurrentTime(QStringLiteral("persp"));
    }
    void TearDown() override {
        view_.reset();
        LinkedClasses::TearDown();
    }

    static MDagPath pathOf(const char* name) {
        MSelectionList list;
        MDagPath path;
        list.add(name);
        list.getDagPath(0, path);
        return path;
    }

    /// Paints the layer's picture: a colour in a rectangle of the canvas.
    void fill(const QRect& rect, const QColor& color) {
        const QString camera = QStringLiteral("persp");
        QImage image = pictureOf(*document()->activeLayer(camera));
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect, color);
        painter.end();
        putPicture(*document(), camera, image);
    }

    QImage shot() { return view_->renderToImage(kSize); }

    std::unique_ptr<host::View> view_;
};

/// Where a canvas pixel is on the shot: the square is as wide as the view and centred.
QPoint onShot(int x, int y) {
    const double scale = kSize.width() / 1024.0;
    return {static_cast<int>(x * scale),
            static_cast<int>(y * scale - (kSize.width() - kSize.height()) / 2.0)};
}

TEST_P(Override, ShowsThePictureUprightAndFollowsItsChanges) {
    const QImage empty = shot();
    ASSERT_FALSE(empty.isNull());
    fill(QRect(100, 300, 200, 100), Qt::red);
    const QImage drawn = shot();
    EXPECT_EQ(drawn.pixelColor(onShot(200, 350)), QColor(Qt::red));
    EXPECT_EQ(drawn.pixelColor(onShot(800, 350)), empty.pixelColor(onShot(800, 350)));
    EXPECT_EQ(drawn.pixelColor(onShot(200, 650)), empty.pixelColor(onShot(200, 650)));

    // A change elsewhere reaches the texture without losing the first.
    fill(QRect(700, 600, 200, 100), Qt::blue);
    const QImage both = shot();
    EXPECT_EQ(both.pixelColor(onShot(200, 350)), QColor(Qt::red));
    EXPECT_EQ(both.pixelColor(onShot(800, 650)), QColor(Qt::blue));

    document()->setLayerVisible(QStringLiteral("persp"), 0, false);
    EXPECT_EQ(shot(), empty);
}

TEST_P(Override, AFaintStrokeIsNotCutOff) {
    const QColor before = shot().pixelColor(onShot(512, 512));
    fill(QRect(0, 0, 1024, 1024), QColor(255, 255, 255, 10));
    const QColor after = shot().pixelColor(onShot(512, 512));
    EXPECT_GT(after.red() + after.green() + after.blue(),
              before.red() + before.green() + before.blue());
}

// Where a picture ends hard, or was erased, what is shown lies between it and what is behind: it
// has no line that is darker than both. Larger than it is, about its size, a half and a third of
// it.
TEST_P(Override, ErasedEdgesHaveNoDarkLine) {
    const QString camera = QStringLiteral("persp");
    constexpr int kStrip = 40;
    for (const int width : {2300, 1024, 560, 300}) {
        SCOPED_TRACE("width " + std::to_string(width));
        const QSize size(width, kStrip);
        view_->setPortSize(size.width(), size.height());
        fill(QRect(0, 0, 1024, 1024), Qt::transparent);
        const QImage empty = view_->renderToImage(size);
        fill(QRect(0, 0, 1024, 1024), QColor(230, 220, 240));
        const QImage full = view_->renderToImage(size);
        // An upright hole, one aslant and a small one.
        for (const QPoint way : {QPoint(0, 300), {150, 300}, {1, 0}}) {
            Stroke* stroke = document()->beginStroke(camera, Tool::Eraser, Qt::black);
            ASSERT_NE(stroke, nullptr);
            for (const QPoint place : {QPoint(0, 0), way})
                stroke->points.push_back(
                    {11, 1.0F, 1.0F, 300 + way.x() + place.x(), 512 - way.y() / 2 + place.y()});
            stroke->dirty = true;
            QByteArray undo;
            ASSERT_TRUE(document()->commitStroke(camera, undo));
        }
        const QImage erased = view_->renderToImage(size);
        EXPECT_NE(erased, full);
        const int border = 1 + width / 1024; // the legacy renderer clamps to a border of its own
        for (int y = 0; y < kStrip; ++y) {
            for (int x = border; x < width - border; ++x) {
                const QColor shown = erased.pixelColor(x, y);
                const QColor behind = empty.pixelColor(x, y);
                ASSERT_GE(shown.red() + 2, behind.red()) << width << ": " << x << ", " << y;
                ASSERT_GE(shown.green() + 2, behind.green()) << width << ": " << x << ", " << y;
                ASSERT_GE(shown.blue() + 2, behind.blue()) << width << ": " << x << ", " << y;
            }
        }
    }
}

TEST_P(Override, TwoCamerasShareTheNodeButNotThePicture) {
    const QImage empty = shot();
    fill(QRect(100, 300, 200, 100), Qt::red);
    EXPECT_EQ(shot().pixelColor(onShot(200, 350)), QColor(Qt::red));
    host::View other("otherPanel");
    other.setPortSize(kSize.width(), kSize.height());
    other.setGridShown(false);
    other.setRenderer(GetParam());
    other.setCamera(pathOf("front"));
    ASSERT_TRUE(run(QStringLiteral("setAttr frontShape.filmFit 1; setAttr frontShape.overscan 1")));
    document()->addLayer(QStringLiteral("front"), -1, QString());
    document()->addFrameAtCurrentTime(QStringLiteral("front"));
    QImage green(1024, 1024, QImage::Format_RGBA8888);
    green.fill(Qt::green);
    putPicture(*document(), QStringLiteral("front"), green);
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("round " + std::to_string(i));
        EXPECT_EQ(other.renderToImage(kSize).pixelColor(onShot(512, 512)), QColor(Qt::green));
        const QImage mine = shot();
        EXPECT_EQ(mine.pixelColor(onShot(200, 350)), QColor(Qt::red));
        EXPECT_EQ(mine.pixelColor(onShot(512, 512)), empty.pixelColor(onShot(512, 512)));
    }
}

TEST_P(Override, OpacityAndDeletion) {
    const QImage empty = shot();
    fill(QRect(0, 0, 1024, 1024), Qt::white);
    const QString shape =
        QString::fromUtf8(MFnDagNode(node().thisMObject()).fullPathName().asUTF8());
    ASSERT_TRUE(run(QStringLiteral("setAttr %1.opacity 0").arg(shape)));
    EXPECT_EQ(shot(), empty);
    ASSERT_TRUE(run(QStringLiteral("setAttr %1.opacity 1").arg(shape)));
    EXPECT_EQ(shot().pixelColor(onShot(512, 512)), QColor(Qt::white));
    // The picture lies over the view wherever the node is.
    ASSERT_TRUE(run(QStringLiteral("delete `listRelatives -f -p %1`").arg(shape)));
    EXPECT_EQ(shot(), empty);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(shot().pixelColor(onShot(512, 512)), QColor(Qt::white));
}

INSTANTIATE_TEST_SUITE_P(Renderers, Override,
                         ::testing::Values(host::Renderer::Viewport2, host::Renderer::Legacy),
                         [](const auto& tested) {
                             return tested.param == host::Renderer::Viewport2 ? "Viewport2"
                                                                              : "Legacy";
                         });

class UserData : public LinkedClasses {};

TEST_F(UserData, IsReusedAndMayOutliveNodeAndDocument) {
    host::View view("testPanel");
    view.setPortSize(kSize.width(), kSize.height());
    document()->addLayer(QStringLiteral("persp"), -1, QString());
    const auto context = host::FrameAccess::context(view.frame());
    MDagPath object;
    MFnDagNode(node().thisMObject()).getPath(object);
    const std::unique_ptr<MHWRender::MPxDrawOverride> drawing(
        BaseNodeDrawOverride::creator(node().thisMObject()));
    EXPECT_TRUE(drawing->hasUIDrawables());
    EXPECT_FALSE(drawing->isBounded(object, view.camera()));
    EXPECT_EQ(drawing->supportedDrawAPIs(), MHWRender::kAllDevices);

    MUserData* data = drawing->prepareForDraw(object, view.camera(), *context, nullptr);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(drawing->prepareForDraw(object, view.camera(), *context, data), data);
    const auto* shown = dynamic_cast<BaseNodeUserData*>(data);
    ASSERT_NE(shown, nullptr);
    ASSERT_NE(shown->image, nullptr);
    EXPECT_EQ(shown->centre.x, kSize.width() / 2.0);

    object = MDagPath(); // the host's paths keep their objects
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    EXPECT_TRUE(shown->document.expired()) << "a panel's data must not keep a drawing in memory";
    host::DrawManager manager("test");
    drawing->addUIDrawables(object, manager.api(), *context, data);
    EXPECT_TRUE(manager.take().empty());
    delete data;
}

} // namespace
} // namespace vellum::test
