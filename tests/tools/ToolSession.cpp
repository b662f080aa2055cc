#include "tools/ToolSession.h"

#include "document/Frame.h"
#include "node/CameraFit.h"
#include "plugin/base/Names.h"
#include "plugin/base/Script.h"
#include "plugin/session/SceneTime.h"
#include "plugins/PluginServices.h"
#include "script/PluginCommands.h"
#include "support/Sure.h"
#include "tools/interaction/DrawContextCommand.h"
#include "tools/interaction/StrokeCommand.h"
#include "tools/raster/ViewToImage.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"

#include <QScreen>
#include <QTest>

#include <maya/M3dView.h>

using support::lastOf;
using support::sure;

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
    run(QStringLiteral("if (`window -exists floating`) deleteUI floating"));
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

host::ModelPanel& ToolSession::floating() {
    EXPECT_TRUE(
        run(QStringLiteral("window -widthHeight 400 300 floating; paneLayout -parent floating pane;"
                           "modelPanel -parent pane -camera top second; showWindow floating")));
    host::ModelPanel* panel = host::ModelPanel::find(QStringLiteral("second"));
    panel->window()->move(900, 50);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(panel->window()));
    support::settle();
    return *panel;
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

void ToolSession::type(std::initializer_list<Qt::Key> keys) {
    for (const Qt::Key each : keys)
        hand_->type({each});
}

void ToolSession::pen(host::InputInjector::TabletPhase phase, QPoint viewPixel, double pressure,
                      bool eraser) {
    host::InputInjector::tablet(view().window()->windowHandle(), phase,
                                host::InputInjector::toScreen(&view(), viewPixel), pressure,
                                eraser);
    support::settle();
}

std::size_t ToolSession::sampled() {
    const Stroke* stroke = document()->currentStroke();
    return stroke ? stroke->points.size() : 0;
}

void ToolSession::drawTo(QPoint from, QPoint to) {
    moveTo(from);
    press();
    const Stroke* stroke = document()->currentStroke();
    ASSERT_NE(stroke, nullptr);
    const bool text = stroke->tool == Tool::Text;
    ASSERT_TRUE(waitFor([&] { return sampled() == (text ? 1U : 2U); }))
        << sampled() << " samples of tool " << static_cast<int>(stroke->tool);
    const StrokePoint before = lastOf(sure(document()->currentStroke()).points);
    moveTo(to);
    ASSERT_TRUE(waitFor([&] {
        const StrokePoint last = lastOf(sure(document()->currentStroke()).points);
        return last.x != before.x || last.y != before.y;
    })) << "no sample on the way to "
        << to.x() << ", " << to.y();
}

void ToolSession::drawLine(QPoint from, QPoint to) {
    drawTo(from, to);
    release();
}

QImage ToolSession::onScreen() {
    const QPoint corner = view().mapTo(window.get(), QPoint(0, 0));
    return window->screen()
        ->grabWindow(window->winId(), corner.x(), corner.y(), view().width(), view().height())
        .toImage();
}

} // namespace vellum::test
