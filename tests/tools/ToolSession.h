// The drawing tool in a host with a window, its classes linked into the test.
#pragma once

#include "document/LayerManager.h"
#include "plugin/LinkedClasses.h"
#include "support/Hand.h"
#include "tools/raster/Stroke.h"

#include <QImage>
#include <QPoint>
#include <functional>
#include <memory>

namespace host {
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
    /// Image pixel under a device pixel of the view (from its top left), as the tool maps it.
    QPoint imagePixel(QPoint viewPixel);
    void moveTo(QPoint viewPixel); ///< device pixels from the view's top left
    void press(Qt::MouseButton button = Qt::LeftButton);
    void release(Qt::MouseButton button = Qt::LeftButton);
    void key(Qt::Key key, bool down);

    static bool waitFor(const std::function<bool()>& condition);

private:
    std::unique_ptr<support::Hand> hand_;
};

} // namespace vellum::test
