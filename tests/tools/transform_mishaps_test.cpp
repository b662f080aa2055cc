// What happens around a region transform: views that change, menus, other tools, nodes and layers
// that come and go.
#include "plugin/session/Cameras.h"
#include "support/FrameChanges.h"
#include "support/Sure.h"
#include "tools/TransformSession.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

using support::sure;

namespace vellum::test {
namespace {

const QRect kSelected(QPoint(400, 460), QPoint(539, 549));

class TransformMishaps : public Transforming {
protected:
    void SetUp() override {
        Transforming::SetUp();
        window->move(0, 0);
    }

    /// What the outline encloses on the screen; device pixels from the view's top left.
    QRect outlineOnScreen() {
        view().repaint();
        support::settle();
        const QImage shown = onScreen();
        QRect found;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (shown.pixelColor(x, y) == QColor(Qt::yellow))
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    QRect onView(const QRect& imagePixels) {
        return {at(QPointF(imagePixels.topLeft())),
                at(QPointF(imagePixels.bottomRight() + QPoint(1, 1)))};
    }

    bool isOutlined(const QRect& imagePixels) {
        // A pixel of the drawing more or less, and the width of the line.
        const int within = 2 + static_cast<int>(std::ceil(pixelsPerImagePixel()));
        return waitFor([&] { return near(outlineOnScreen(), onView(imagePixels), within); });
    }

    /// Two layers with a picture each at frame 12, the clipboard filled, the lower one active and
    /// without a drawing there.
    void prepareToPaste() {
        select(kSelected);
        choose("Copy");
        at(12);
        document()->addLayer(camera, 1, QStringLiteral("Other"));
        document()->setActiveLayer(camera, 1, true);
        document()->addFrameAtCurrentTime(camera);
        putPicture(*document(), camera, drawn);
        document()->setActiveLayer(camera, 0, true);
        choose("Paste and Transform");
        ASSERT_TRUE(tool()->isTransforming());
        ASSERT_EQ(sure(document()->activeLayer(camera)).frameCount(), 2);
    }
};

TEST_F(TransformMishaps, TheOutlineStaysWithThePictureInBothRenderers) {
    const auto panZoom = [&](const char* values) {
        ASSERT_TRUE(run(QStringLiteral("setAttr perspShape.panZoomEnabled 1; "
                                       "setAttr perspShape.zoom %1; refresh")
                            .arg(QLatin1String(values))));
    };
    for (const char* renderer : {"vp2Renderer", "base_OpenGL_Renderer"}) {
        SCOPED_TRACE(renderer);
        ASSERT_TRUE(run(QStringLiteral("modelEditor -e -rendererName \"%1\" `getPanel -withFocus`")
                            .arg(QLatin1String(renderer))));
        select(QRect(420, 480, 20, 20));
        EXPECT_TRUE(isOutlined(QRect(420, 480, 20, 20)));
        select(kSelected);
        EXPECT_TRUE(isOutlined(kSelected)) << "and nothing is left of the first one";
        panZoom("0.6");
        EXPECT_TRUE(isOutlined(kSelected));
        enter(); // what is lifted is what is enclosed
        EXPECT_TRUE(near(sure(document()->currentStroke()).region.region, kSelected, 2));
        EXPECT_TRUE(isOutlined(kSelected));
        drag(at(QPointF(470, 500)), at(QPointF(500, 520)));
        const QPoint offset = sure(document()->currentStroke()).region.offset;
        EXPECT_TRUE(near(QRect(offset, QSize(1, 1)), QRect(30, 20, 1, 1), 1));
        EXPECT_TRUE(isOutlined(kSelected.translated(offset)));

        // Another zoom: it floats on from where it is.
        panZoom("1");
        EXPECT_TRUE(isOutlined(kSelected.translated(offset)));
        drag(at(QPointF(500, 520)), at(QPointF(500, 500)));
        EXPECT_TRUE(near(inked(composite()), kInk.translated(30, 0), 3));
        EXPECT_TRUE(isOutlined(kSelected.translated(30, 0)));
        window->resize(window->width() - 60, window->height() - 40);
        support::settle();
        EXPECT_TRUE(isOutlined(kSelected.translated(30, 0)));

        // Only on its frame, also when nobody tells the tool, as in playback.
        ASSERT_TRUE(run(QStringLiteral("currentTime 9")));
        EXPECT_TRUE(waitFor([this] { return outlineOnScreen().isNull(); }));
        ASSERT_TRUE(run(QStringLiteral("currentTime 1")));
        EXPECT_TRUE(isOutlined(kSelected.translated(30, 0)));
        type({Qt::Key_Backspace});
        EXPECT_TRUE(waitFor([this] { return outlineOnScreen().isNull(); }));
    }
}

TEST_F(TransformMishaps, WorkThatIsTakenBackIsSaidOnce) {
    const auto begin = [&](bool moved) {
        at(1);
        select(kSelected);
        enter();
        ASSERT_TRUE(tool()->isTransforming());
        if (moved)
            drag(at(QPointF(470, 500)), at(QPointF(500, 520)));
    };
    const auto click = [this] {
        drag(at(QPointF(470, 500)), at(QPointF(470, 500)));
        host::idle::drain();
    };
    const auto said = [this] {
        QStringList all = warnings + errors;
        warnings.clear();
        errors.clear();
        return all.join(QStringLiteral(" | ")).toStdString();
    };
    said();
    const std::string begunOn = "[Vellum2] The transform is taken back: it was begun on another ";
    for (const bool byEnter : {false, true}) {
        for (const bool moved : {false, true}) {
            SCOPED_TRACE(testing::Message() << byEnter << moved);
            begin(moved);
            at(5);
            EXPECT_EQ(said(), "") << "it still goes on at its own frame";
            byEnter ? enter() : click();
            click();
            EXPECT_FALSE(tool()->isTransforming());
            EXPECT_EQ(said(), moved ? begunOn + "frame." : "");
        }
    }
    begin(true);
    document()->addLayer(camera, 1, QString());
    document()->setActiveLayer(camera, 1, false);
    enter();
    EXPECT_EQ(said(), begunOn + "layer.");
    document()->setActiveLayer(camera, 0, false);
    at(1);
    EXPECT_EQ(picture(), drawn);

    begin(true);
    document()->setLayerState(camera, 0, LayerState::Locked);
    enter();
    EXPECT_EQ(said(), "[Vellum2] Active layer is locked.");
    EXPECT_EQ(document()->currentStroke(), nullptr);
}

TEST_F(TransformMishaps, MenusOpenWhereTheyAreAskedForAndNotInADrag) {
    select(kSelected);
    choose("Copy");
    const QPoint from = at(QPointF(450, 500));
    moveTo(from);
    press();
    press(Qt::RightButton); // the menu would take the release of the drag
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    release(Qt::RightButton);
    moveTo(from + QPoint(40, 20));
    release();
    EXPECT_NE(node().transformDisplay()->corners[0], node().transformDisplay()->corners[2]);

    const QString top = QStringLiteral("top");
    host::ModelPanel& panel = floating();
    document()->addLayer(top, 0, QString());
    support::Hand other;
    other.click(panel.viewWidget(), {100, 100}); // from now on it is watched
    moveTo({100, 100});
    press();
    release();
    ASSERT_EQ(currentCamera(), camera);
    other.moveTo(panel.viewWidget(), {60, 60});
    other.press(Qt::RightButton);
    other.release(Qt::RightButton);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(currentCamera(), top);
    QApplication::activePopupWidget()->close();
    support::settle();
    choose("Paste and Transform");
    EXPECT_EQ(document()->strokeCamera(), top);
}

TEST_F(TransformMishaps, ATextBeingTypedIsAStepOfItsOwn) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -textTool")));
    moveTo({300, 300});
    press();
    release();
    type({Qt::Key_A});
    takeTool();
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_NE(picture(), drawn);
    EXPECT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), drawn);
}

TEST_F(TransformMishaps, ANodeThatComesBackHasNothingFloating) {
    enter();
    drag(at(QPointF(470, 500)), at(QPointF(570, 600)));
    const auto drawing = document();
    ASSERT_TRUE(run(QStringLiteral("string $shape[] = `ls -type rvVellum`;"
                                   "delete `listRelatives -parent $shape[0]`")));
    type({Qt::Key_Backspace});
    host::idle::drain();
    ASSERT_TRUE(run(QStringLiteral("undo")));
    ASSERT_EQ(document(), drawing);
    EXPECT_EQ(drawing->currentStroke(), nullptr);
    EXPECT_EQ(inked(composite()), kInk);
}

TEST_F(TransformMishaps, RevertingAPasteTakesNothingElse) {
    prepareToPaste();
    const quint64 pastedTo = sure(document()->activeLayer(camera)).id();
    // Another layer is active and at another place since; it has a drawing at the same time.
    document()->setActiveLayer(camera, 1, true);
    document()->moveLayer(camera, 1, 0);
    choose("Revert Transform");
    EXPECT_EQ(sure(document()->layer(camera, 0)).frameCount(), 1);
    EXPECT_EQ(sure(sure(document()->layer(camera, 0)).currentFrame()).image(), drawn);
    EXPECT_EQ(sure(document()->layer(camera, 1)).frameCount(), 1);
    EXPECT_EQ(sure(document()->activeLayer(camera)).id(), pastedTo);

    // The frame it added got a picture since.
    choose("Paste and Transform");
    putPicture(*document(), camera, drawn);
    choose("Revert Transform");
    EXPECT_EQ(sure(document()->activeLayer(camera)).frameCount(), 2);
    EXPECT_EQ(picture(), drawn);
}

TEST_F(TransformMishaps, UndoFindsTheLayerAPasteMade) {
    select(kSelected);
    choose("Copy");
    std::vector<std::unique_ptr<Layer>> gone;
    document()->deleteAllLayers(camera, gone);
    choose("Paste and Transform");
    ASSERT_TRUE(tool()->isTransforming());
    document()->addLayer(camera, 1, QStringLiteral("Other"));
    document()->moveLayer(camera, 1, 0);
    choose("Apply Transform");
    ASSERT_EQ(document()->cameraLayerCount(camera), 2);
    EXPECT_FALSE(inked(picture()).isNull());
    ASSERT_TRUE(run(QStringLiteral("undo")));
    ASSERT_EQ(document()->cameraLayerCount(camera), 1);
    EXPECT_EQ(document()->layerName(camera, 0), QStringLiteral("Other"));
}

// A menu opened by a hotkey takes the pointer, and with it the release.
TEST_F(TransformMishaps, ReleasesThatNeverCome) {
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    const auto dragIntoMenu = [&](QPointF from, QPointF to) {
        moveTo(at(from));
        press();
        moveTo(at(to));
        menu.popup(window->mapToGlobal(QPoint(700, 300)));
        support::settle();
        release();
        menu.close();
        support::settle();
    };
    for (const char* renderer : {"vp2Renderer", "base_OpenGL_Renderer"}) {
        SCOPED_TRACE(renderer);
        ASSERT_TRUE(run(QStringLiteral("modelEditor -e -rendererName \"%1\" `getPanel -withFocus`")
                            .arg(QLatin1String(renderer))));
        const QRect around(kSelected.topLeft(), kSelected.bottomRight() + QPoint(1, 1));
        dragIntoMenu(around.bottomRight(), around.topLeft());
        EXPECT_TRUE(isOutlined(kSelected)) << "what was selected stays so";
        moveTo(at(QPointF(700, 300)));
        EXPECT_TRUE(isOutlined(kSelected)) << "the hand has let go";
        enter();
        ASSERT_TRUE(tool()->isTransforming());
        EXPECT_TRUE(near(sure(document()->currentStroke()).region.region, kSelected, 2));
        dragIntoMenu({470, 500}, {500, 520});
        const QPoint offset = sure(document()->currentStroke()).region.offset;
        EXPECT_TRUE(near(QRect(offset, QSize(1, 1)), QRect(30, 20, 1, 1), 1));
        drag(at(QPointF(700, 300)), at(QPointF(710, 300)));
        const QPoint further = sure(document()->currentStroke()).region.offset - offset;
        EXPECT_TRUE(near(QRect(further, QSize(1, 1)), QRect(10, 0, 1, 1), 1)) << "no jump";
        type({Qt::Key_Backspace});
        host::idle::drain();
    }
}

TEST_F(TransformMishaps, KeysInTheMiddleOfADrag) {
    const QPoint from = at(QPointF(400, 460));
    moveTo(from);
    press();
    moveTo(from + QPoint(50, 40));
    enter();
    ASSERT_TRUE(tool()->isTransforming());
    moveTo(from + QPoint(80, 60)); // still the hand that selected
    release();
    EXPECT_EQ(sure(document()->currentStroke()).region.offset, QPoint());
    press();
    moveTo(from);
    enter();
    EXPECT_FALSE(tool()->isTransforming());
    moveTo(from + QPoint(80, 60));
    release();
    EXPECT_FALSE(node().transformDisplay()) << "no rectangle without a press";
    moveTo(from);
    press();
    type({Qt::Key_Escape});
    host::idle::drain();
    moveTo(from + QPoint(80, 60));
    release();
    EXPECT_EQ(document()->currentStroke(), nullptr);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), drawn);
}

} // namespace
} // namespace vellum::test
