// What the tests of the interface share: a main window, the window system's pointer, and a tool
// that writes down what it is told.
#pragma once

#include "script/Interpreter.h"
#include "support/Hand.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/StartUp.h"
#include "ui/Tools.h"

#include <QCoreApplication>
#include <QTest>

#include <maya/MEvent.h>
#include <maya/MGlobal.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace uitest {

using support::settle;
using support::waitFor;

/// The calls a RecordingContext got, oldest first: "press 10 20 left", "drag …", "setup".
inline std::vector<std::string>& calls() {
    static std::vector<std::string> list;
    return list;
}

class RecordingContext : public MPxContext {
public:
    RecordingContext() {
        setTitleString("Recording Tool");
        setHelpString("writes down what happens");
        setImage("record.png", kImage1);
    }
    ~RecordingContext() override { calls().push_back("deleted"); }

    void toolOnSetup(MEvent& event) override {
        MPxContext::toolOnSetup(event);
        calls().push_back("setup");
        if (!onSetup.empty())
            MGlobal::executeCommand(onSetup.c_str());
    }
    void toolOffCleanup() override {
        calls().push_back("cleanup");
        MPxContext::toolOffCleanup();
    }
    MStatus doPress(MEvent& event) override { return note("press", event); }
    MStatus doDrag(MEvent& event) override { return note("drag", event); }
    MStatus doRelease(MEvent& event) override { return note("release", event); }
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& manager,
                    const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& manager,
                   const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& manager,
                      const MHWRender::MFrameContext& context) override;
    void deleteAction() override { calls().push_back("delete"); }
    void completeAction() override { calls().push_back("complete"); }
    void abortAction() override { calls().push_back("abort"); }
    void getClassName(MString& name) const override { name = "recordingTool"; }

    static bool takesModern; ///< whether the forms for Viewport 2.0 succeed
    static std::string onSetup;

private:
    static MStatus note(const char* what, MEvent& event);
};

/// A context command with a flag of its own, -level.
class RecordingCommand : public MPxContextCommand {
public:
    static void* creator() { return new RecordingCommand; }
    MPxContext* makeObj() override { return new RecordingContext; }
    MStatus appendSyntax() override { return syntax().addFlag("-lv", "-level", MSyntax::kLong); }
    MStatus doEditFlags() override {
        if (parser().isFlagSet("-lv"))
            parser().getFlagArgument("-lv", 0, level);
        return MS::kSuccess;
    }
    MStatus doQueryFlags() override {
        return parser().isFlagSet("-level") ? setResult(level) : MS::kFailure;
    }
    static int level;
};

/// A started host with a shown main window and the command "recordCtx".
class UiTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    host::script::Value run(const std::string& script) { return host::script::execute(script); }
    std::string runString(const std::string& script) { return run(script).toString(); }
    int runInt(const std::string& script) { return run(script).toInt(); }
    /// The message a script ends with; "" when it succeeds.
    static std::string errorOf(const std::string& script);

    host::ViewWidget& view() { return window->mainPanel().viewWidget(); }

    void moveTo(const QWidget& widget, QPointF position) { hand->moveTo(widget, position); }
    void press(Qt::MouseButton button = Qt::LeftButton) { hand->press(button); }
    void release(Qt::MouseButton button = Qt::LeftButton) { hand->release(button); }
    void key(Qt::Key key, bool down) { hand->key(key, down); }
    void type(std::vector<Qt::Key> keys) { hand->type(std::move(keys)); }

    std::unique_ptr<host::MainWindow> window;
    std::unique_ptr<support::Hand> hand;
};

} // namespace uitest
