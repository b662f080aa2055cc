// The drawing tool in a host with a window, its classes linked into the test.
#pragma once

#include "document/LayerManager.h"
#include "plugin/LinkedClasses.h"
#include "support/Hand.h"
#include "tools/raster/Stroke.h"
#include "ui/InputInjector.h"

#include <QImage>
#include <QPoint>

#include <functional>
#include <initializer_list>
#include <memory>

namespace host {
class ModelPanel;
class ViewWidget;
} // namespace host

namespace vellum::test {

class ToolSession : public LinkedClasses {
protected:
    ToolSession();
    ~ToolSession() override;

    void SetUp() override;
    void TearDown() override;

    QString camera = QStringLiteral("persp");

    void at(int frame); ///< moves the scene's time and tells the document

    /// The camera's picture now, without strokes in progress.
    QImage picture();
    int alphaAt(QPoint imagePixel);

    // --- The user's hand -----------------------------------------------------------------------

    void activateDrawTool();
    host::ViewWidget& view();
    /// A view of the camera "top" in a window of its own, beside the main one; closed at the end.
    host::ModelPanel& floating();
    /// Image pixel under a device pixel of the view (from its top left), as the tool maps it.
    QPoint imagePixel(QPoint viewPixel);
    void moveTo(QPoint viewPixel); ///< device pixels from the view's top left
    void press(Qt::MouseButton button = Qt::LeftButton);
    void release(Qt::MouseButton button = Qt::LeftButton);
    void key(Qt::Key key, bool down);

    void type(std::initializer_list<Qt::Key> keys); ///< one after the other
    /// A sign of the pen over the view; it goes with no pointer.
    void pen(host::InputInjector::TabletPhase phase, QPoint viewPixel, double pressure,
             bool eraser = false);

    /// Points of the stroke in progress.
    std::size_t sampled();
    /// Presses and drags from one pixel of the view to another; the button stays down.
    void drawTo(QPoint from, QPoint to);
    void drawLine(QPoint from, QPoint to); ///< and lets go

    /// The view as the X server shows it.
    QImage onScreen();

    static bool waitFor(const std::function<bool()>& condition);

private:
    std::unique_ptr<support::Hand> hand_;
};

} // namespace vellum::test
