#include "tools/ToolSession.h"

#include "document/Frame.h"
#include "node/CameraFit.h"
#include "plugin/leaves/Names.h"
#include "plugin/leaves/Script.h"
#include "plugin/middle/ActiveNode.h"
#include "scene/PluginServices.h"
#include "script/PluginCommands.h"
#include "tools/interaction/DrawContextCommand.h"
#include "tools/interaction/StrokeCommand.h"
#include "tools/raster/ViewToImage.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"

#include <QTest>
#include <maya/M3dView.h>

namespace vellum::test {

ToolSession::ToolSession() = default;
ToolSession::~ToolSession() = default;

void ToolSession::SetUp() {
    LinkedClasses::SetUp();
    ASSERT_TRUE(host::script::registerPluginCommand(kStrokeCommand, StrokeCommand::creator,
                                                    StrokeCommand::newSyntax, "linked"));
    ASSERT_EQ(host::pluginServices().registerContextCommand(
                  kDrawContextCommand, DrawContextCommand::creator, {}, nullptr, nullptr),
              MS::kSuccess);
    node();
    hand_ = std::make_unique<support::Hand>();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
}

void ToolSession::TearDown() {
    EXPECT_EQ(host::pluginServices().deregisterContextCommand(kDrawContextCommand, {}),
              MS::kSuccess);
    EXPECT_TRUE(host::script::unregisterPluginCommand(kStrokeCommand));
    LinkedClasses::TearDown();
}

void ToolSession::at(int frame) {
    // No step to undo: the user scrubs.
    ASSERT_TRUE(script::execute(QStringLiteral("currentTime %1").arg(frame)));
    propagateCurrentTime();
}

QImage ToolSession::picture() {
    const Frame* frame = document()->currentFrame(camera);
    return frame ? frame->image() : QImage();
}

int ToolSession::alphaAt(QPoint imagePixel) {
    const QImage image = picture();
    return image.rect().contains(imagePixel) ? qAlpha(image.pixel(imagePixel)) : -1;
}

host::ViewWidget& ToolSession::view() {
    return window->mainPanel().viewWidget();
}

void ToolSession::activateDrawTool() {
    ASSERT_TRUE(run(QStringLiteral("setToolTo `rvVlDrawCtx`")));
}

QPoint ToolSession::imagePixel(QPoint viewPixel) {
    M3dView active = M3dView::active3dView();
    GateFit fit;
    EXPECT_TRUE(fitForView(active, fit));
    const ViewMapping mapping{fit.portWidth, fit.portHeight, fit.panOffsetX, fit.panOffsetY,
                              static_cast<double>(fit.quadSize)};
    return viewToImage(QPointF(viewPixel.x() + 1, fit.portHeight - viewPixel.y() + 1), mapping);
}

bool ToolSession::waitFor(const std::function<bool()>& condition) {
    return support::waitFor(condition);
}

void ToolSession::moveTo(QPoint viewPixel) {
    hand_->moveTo(view(), viewPixel);
}

void ToolSession::press(Qt::MouseButton button) {
    hand_->press(button);
}

void ToolSession::release(Qt::MouseButton button) {
    hand_->release(button);
}

void ToolSession::key(Qt::Key code, bool down) {
    hand_->key(code, down);
}

} // namespace vellum::test
