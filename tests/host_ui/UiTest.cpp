#include "host_ui/UiTest.h"

#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "plugins/PluginServices.h"
#include "scene/files/FileIO.h"

#include <QApplication>
#include <QWindow>

#include <maya/MUIDrawManager.h>

namespace uitest {

bool RecordingContext::takesModern = true;
std::string RecordingContext::onSetup;
int RecordingCommand::level = 0;

MStatus RecordingContext::note(const char* what, MEvent& event) {
    short x = 0, y = 0;
    event.getPosition(x, y);
    std::string line = std::string(what) + " " + std::to_string(x) + " " + std::to_string(y);
    line += event.mouseButton() == MEvent::kLeftMouse ? " left" : " middle";
    if (event.isModifierShift())
        line += " shift";
    if (event.isModifierControl())
        line += " control";
    calls().push_back(line);
    return MS::kSuccess;
}

MStatus RecordingContext::doPress(MEvent& event, MHWRender::MUIDrawManager&,
                                  const MHWRender::MFrameContext&) {
    return takesModern ? note("press2", event) : MStatus(MS::kFailure);
}

MStatus RecordingContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& manager,
                                 const MHWRender::MFrameContext&) {
    if (!takesModern)
        return MS::kFailure;
    manager.beginDrawable();
    manager.setColor(MColor(1.0F, 0.0F, 0.0F));
    manager.rect2d(MPoint(40, 40), MVector(0, 1, 0), 20, 20, true);
    manager.setColor(MColor(0.0F, 0.0F, 0.0F, 0.5F));
    manager.rect2d(MPoint(140, 40), MVector(0, 1, 0), 20, 20, true);
    manager.endDrawable();
    return note("drag2", event);
}

MStatus RecordingContext::doRelease(MEvent& event, MHWRender::MUIDrawManager&,
                                    const MHWRender::MFrameContext&) {
    return takesModern ? note("release2", event) : MStatus(MS::kFailure);
}

void UiTest::SetUp() {
    host::startUp();
    host::fileIO().newScene();
    MGlobal::executeCommand("playbackOptions -minTime 1 -maxTime 48; currentTime 1");
    calls().clear();
    RecordingContext::takesModern = true;
    RecordingContext::onSetup.clear();
    ASSERT_TRUE(host::pluginServices().registerContextCommand(
        "recordCtx", RecordingCommand::creator, "", nullptr, nullptr));
    window = std::make_unique<host::MainWindow>();
    window->resize(480, 380);
    window->move(0, 0);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    window->setFocus();
    hand = std::make_unique<support::Hand>();
    ASSERT_TRUE(hand->isReal()) << "these tests need an X server with XTEST";
}

void UiTest::TearDown() {
    host::Tools::instance().leave();
    host::pluginServices().deregisterContextCommand("recordCtx", "");
    window.reset();
    host::fileIO().newScene();
    host::idle::drainAll();
    settle();
}

std::string UiTest::errorOf(const std::string& script) {
    try {
        host::script::execute(script);
        return {};
    } catch (const host::script::ScriptError& error) {
        return error.what();
    }
}

} // namespace uitest
