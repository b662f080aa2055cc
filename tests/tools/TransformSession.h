// A region transform as a user does it, over a rectangle of ink: half red, half blue.
#pragma once

#include "commands/UtilCommand.h"
#include "document/Frame.h"
#include "document/Layer.h"
#include "foundation/Idle.h"
#include "node/BaseNode.h"
#include "plugin/base/Names.h"
#include "plugins/PluginServices.h"
#include "script/PluginCommands.h"
#include "support/FrameChanges.h"
#include "tools/ToolSession.h"
#include "tools/interaction/TransformContext.h"
#include "tools/interaction/TransformContextCommand.h"
#include "tools/interaction/ViewMeasure.h"
#include "tools/raster/StrokeImage.h"
#include "ui/Tools.h"
#include "ui/ViewWidget.h"

#include <QMenu>
#include <QPainter>

#include <cmath>

namespace vellum::test {

inline const QRect kInk(QPoint(420, 480),
                        QPoint(519, 529)); // 100 x 50, in the middle of the canvas

class Transforming : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        ASSERT_TRUE(host::script::registerPluginCommand(kUtilCommand, UtilCommand::creator,
                                                        UtilCommand::newSyntax, "linked"));
        ASSERT_EQ(host::pluginServices().registerContextCommand(kTransformContextCommand,
                                                                TransformContextCommand::creator,
                                                                {}, nullptr, nullptr),
                  MS::kSuccess);
        draw();
        ASSERT_TRUE(run(QStringLiteral("flushUndo")));
        takeTool();
    }

    void TearDown() override {
        EXPECT_EQ(host::pluginServices().deregisterContextCommand(kTransformContextCommand, {}),
                  MS::kSuccess);
        EXPECT_TRUE(host::script::unregisterPluginCommand(kUtilCommand));
        ToolSession::TearDown();
    }

    // A rectangle of ink, its left half red, its right half blue.
    void draw() {
        QImage image = blankCanvas();
        QPainter painter(&image);
        QRect half = kInk;
        half.setWidth(kInk.width() / 2);
        painter.fillRect(kInk, Qt::blue);
        painter.fillRect(half, Qt::red);
        painter.end();
        document()->addLayer(camera, 0, QString());
        document()->addFrameAtCurrentTime(camera);
        putPicture(*document(), camera, image);
        drawn = image;
    }

    void takeTool() { ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -transform"))); }

    TransformContext* tool() {
        return dynamic_cast<TransformContext*>(host::Tools::instance().current());
    }

    ViewMapping mapping() {
        ViewMapping result;
        EXPECT_TRUE(activeViewMapping(result));
        return result;
    }

    /// Device pixel of the view, from its top left, that shows an image pixel.
    QPoint at(QPointF imagePixel) {
        const ViewMapping m = mapping();
        const QPointF point = imageToView(imagePixel, m);
        return {static_cast<int>(std::lround(point.x())),
                m.height - 1 - static_cast<int>(std::lround(point.y()))};
    }
    using ToolSession::at;

    double pixelsPerImagePixel() { return viewPixelsPerImagePixel(mapping()); }

    void drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton) {
        moveTo(from);
        press(button);
        moveTo(to);
        release(button);
    }

    void select(const QRect& imagePixels) {
        drag(at(QPointF(imagePixels.topLeft())),
             at(QPointF(imagePixels.bottomRight() + QPoint(1, 1))));
    }

    void enter() {
        type({Qt::Key_Return});
        host::idle::drain();
    }

    /// What is inked, opaque enough to be no smoothed edge.
    static QRect inked(const QImage& image, QRgb color = 0) {
        QRect found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (qAlpha(pixel) > 128 && (color == 0 || pixel == color))
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    QImage composite() { return document()->compositeCamera(camera)->copy(); }

    void choose(const char* label) {
        const std::unique_ptr<QMenu> menu(handler().makeMenu(nullptr));
        for (QAction* action : menu->actions()) {
            if (action->text() == QLatin1String(label)) {
                ASSERT_TRUE(action->isEnabled()) << label;
                action->trigger();
                host::idle::drain();
                return;
            }
        }
        FAIL() << "no entry " << label;
    }

    TransformContextInputHandler& handler() { return tool()->inputHandler(); }

    static bool near(const QRect& a, const QRect& b, int within) {
        return std::abs(a.left() - b.left()) <= within && std::abs(a.top() - b.top()) <= within &&
               std::abs(a.right() - b.right()) <= within &&
               std::abs(a.bottom() - b.bottom()) <= within;
    }

    QImage drawn;
};

} // namespace vellum::test
