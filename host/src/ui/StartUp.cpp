#include "ui/StartUp.h"

#include "commands/CoreCommands.h"
#include "commands/SceneCommands.h"
#include "commands/ScriptJobs.h"
#include "foundation/Events.h"
#include "foundation/Idle.h"
#include "render/RenderCommands.h"
#include "scene/core/TimeState.h"
#include "scene/files/FileIO.h"
#include "script/Interpreter.h"
#include "ui/MainWindow.h"
#include "ui/Playback.h"
#include "ui/Tools.h"
#include "ui/UiCommands.h"

#include <QApplication>
#include <QMetaObject>
#include <QTimer>

#include <maya/MSceneMessage.h>

#include <clocale>

namespace host {

namespace {

bool started = false;

/// The program is not idle while a button is held, unless in a dialog that opened meanwhile, nor
/// while it plays.
bool isIdle() {
    if (QApplication::activeModalWidget())
        return true;
    return QGuiApplication::mouseButtons() == Qt::NoButton && !Playback::instance().isPlaying();
}

void drainWhenIdle(QCoreApplication& application) {
    constexpr int patienceMs = 20;
    if (isIdle())
        idle::drain();
    else
        QTimer::singleShot(patienceMs, &application,
                           [&application] { drainWhenIdle(application); });
}

// Work posted for later, from any thread, runs from the event loop. It goes through a timer:
// work that always posts more must not keep the loop among its posted events for ever.
void wakeIdle() {
    if (QCoreApplication* application = QCoreApplication::instance())
        QMetaObject::invokeMethod(
            application,
            [application] {
                QTimer::singleShot(0, application, [application] { drainWhenIdle(*application); });
            },
            Qt::QueuedConnection);
}

} // namespace

void prepareApplication() {
    // Textures made in one view's context are drawn in the others'.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
#endif
    QCoreApplication::setApplicationName(QStringLiteral("vellum-host"));
}

void startUp(const StartUpOptions& options) {
    if (started)
        return;
    started = true;
    // Scripts and files write numbers with a point whatever the user's language.
    std::setlocale(LC_NUMERIC, "C");
    script::setBatchMode(options.batch);
    script::registerCoreCommands();
    registerSceneCommands();
    registerRenderCommands();
    registerUiCommands();
    if (!options.batch) {
        idle::setWakeUp(wakeIdle);
        Playback::instance(); // plays when the API says so
    }
    Tools::instance().addSelectTool();
    fileIO().newScene();
}

bool isStarted() {
    return started;
}

void shutDown() {
    if (!started)
        return;
    events::emit("quitApplication");
    messages::tell(MSceneMessage::kMayaExiting);
    timeline::play(0);
    script::killAllScriptJobs();
    Tools::instance().clear();
    idle::setWakeUp({});
    started = false;
}

} // namespace host
