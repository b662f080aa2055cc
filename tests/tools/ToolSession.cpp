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
#include "ui/InputInjector.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <maya/M3dView.h>

namespace vellum::test {

namespace {

// Sees whether an event came to a widget.
class Witness : public QObject {
public:
    Witness(QObject* watched, QEvent::Type type) : type_(type) {
        qApp->installEventFilter(this);
        watched_ = watched;
    }
    bool seen() const { return seen_; }

private:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == type_ && (!watched_ || object == watched_))
            seen_ = true;
        return false;
    }

    QObject* watched_ = nullptr;
    QEvent::Type type_;
    bool seen_ = false;
};

} // namespace

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
    hand_ = host::InputInjector::create();
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
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 5000)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

void ToolSession::act(const std::function<void()>& what, QEvent::Type expected, QWidget* receiver) {
    const Witness witness(receiver, expected);
    what();
    EXPECT_TRUE(waitFor([&] { return witness.seen(); })) << "event " << expected << " never came";
}

void ToolSession::moveTo(QPoint viewPixel) {
    const QPoint screen = host::InputInjector::toScreen(&view(), viewPixel);
    if (hand_->position() == screen)
        return;
    act([&] { hand_->moveTo(screen); }, QEvent::MouseMove, &view());
}

void ToolSession::press(Qt::MouseButton button) {
    const Witness twice(&view(), QEvent::MouseButtonDblClick);
    const Witness once(&view(), QEvent::MouseButtonPress);
    hand_->press(button);
    EXPECT_TRUE(waitFor([&] { return once.seen() || twice.seen(); }));
}

void ToolSession::release(Qt::MouseButton button) {
    act([&] { hand_->release(button); }, QEvent::MouseButtonRelease, &view());
}

void ToolSession::key(Qt::Key code, bool down) {
    act([&] { EXPECT_TRUE(hand_->key(code, down)); }, down ? QEvent::KeyPress : QEvent::KeyRelease,
        nullptr);
}

} // namespace vellum::test
