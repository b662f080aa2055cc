#include "app/Program.h"

#include "app/Replay.h"
#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "plugins/PluginLoader.h"
#include "render/Renderer.h"
#include "render/Views.h"
#include "scene/files/FileIO.h"
#include "script/Interpreter.h"
#include "ui/MainWindow.h"
#include "ui/StartUp.h"
#include "ui/Theme.h"
#include "ui/XTestInput.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <QWindow>

#include <cstdlib>
#include <exception>

namespace host {

namespace {

/// VELLUM_REPLAY_SPEED: a factor on every session's speed.
double replaySpeed() {
    bool ok = false;
    const double speed = qEnvironmentVariable("VELLUM_REPLAY_SPEED").toDouble(&ok);
    return ok && speed > 0 ? speed : 1.0;
}

/// Qt ends the process when it finds no display; a message of our own comes first.
bool displayMissing() {
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    const bool mayBeWayland = platform.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    const bool mayBeX = platform.isEmpty() || platform.startsWith(QLatin1String("xcb"));
    return mayBeX && !mayBeWayland && !XTestInput::serverAnswers();
}

} // namespace

Program::Program(Options options) : options_(std::move(options)) {
}
Program::~Program() = default;

int Program::run(int argc, char** argv) {
    script::setQuitHandler([this](int code, bool force, bool) { quit(code, force); });
    Renderer renderer = Renderer::Viewport2;
    rendererFromName(options_.renderer, renderer);
    setDefaultRenderer(renderer);
    return options_.batch ? runBatch(argc, argv) : runWindow(argc, argv);
}

int Program::runBatch(int argc, char** argv) {
    // Text on pictures needs fonts, and so a QGuiApplication, but no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    prepareApplication();
    QGuiApplication application(argc, argv);
    StartUpOptions startUpOptions;
    startUpOptions.batch = true;
    startUp(startUpOptions);
    const bool done = prepare();
    idle::drainAll();
    shutDown();
    return done ? code_ : 1;
}

int Program::runWindow(int argc, char** argv) {
    if (displayMissing()) {
        report::error("cannot open a display; --batch works without one");
        return 1;
    }
    prepareApplication();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    theme::apply(application);
    startUp();
    window_ = std::make_unique<MainWindow>();
    QObject::connect(window_.get(), &MainWindow::closed, &application, [this] { finish(code_); });
    if (options_.size)
        window_->resize(*options_.size);
    window_->show();
    window_->activateWindow();
    // Scripts and replays count on a window that is there.
    QTimer::singleShot(0, &application, [this] { act(); });
    const int code = quitAsked_ ? code_ : QApplication::exec();
    replay_.reset();
    shutDown();
    window_.reset();
    return code;
}

bool Program::prepare() {
    for (const std::string& plugin : options_.plugins) {
        std::string error;
        if (pluginLoader().load(plugin, error).empty()) {
            report::error(error);
            return false;
        }
    }
    if (!options_.open.empty()) {
        try {
            fileIO().open(
                QFileInfo(QString::fromStdString(options_.open)).absoluteFilePath().toStdString());
        } catch (const std::exception& error) {
            report::error(error.what());
            return false;
        }
    }
    for (const Options::Script& script : options_.scripts) {
        if (quitAsked_)
            return true;
        const bool done = script.isFile ? script::runFile(script.text) : script::run(script.text);
        if (!done)
            return false;
    }
    return true;
}

void Program::act() {
    const QWindow* window = window_->windowHandle();
    if (!window || !window->isExposed()) {
        QTimer::singleShot(10, window_.get(), [this] { act(); });
        return;
    }
    if (!prepare()) {
        finish(1);
        return;
    }
    if (quitAsked_)
        return;
    if (options_.replay.empty()) {
        takePicture();
        return;
    }
    try {
        replay_ =
            std::make_unique<Replay>(Session::read(options_.replay), window_.get(), replaySpeed());
    } catch (const std::exception& error) {
        report::error(error.what());
        finish(1);
        return;
    }
    replay_->start([this](const std::string& error) {
        if (!error.empty()) {
            report::error(error);
            finish(1);
            return;
        }
        takePicture();
    });
}

void Program::takePicture() {
    if (options_.screenshot.empty())
        return;
    // Deferred scripts and the painting they cause come first.
    idle::drainAll();
    Views::instance().refreshAll(true);
    QTimer::singleShot(0, window_.get(), [this] {
        // What scripts deleted is gone and the rest has taken its place.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::sendPostedEvents();
        Views::instance().refreshAll(true);
        const QString path = QString::fromStdString(options_.screenshot);
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (!window_->grab().save(path)) {
            report::error("cannot write " + options_.screenshot);
            finish(1);
            return;
        }
        finish(code_);
    });
}

void Program::quit(int code, bool force) {
    code_ = code;
    if (!window_) {
        quitAsked_ = true;
        return;
    }
    if (!force && !window_->askToSave())
        return;
    quitAsked_ = true;
    // The script that quits is finished first.
    QTimer::singleShot(0, window_.get(), [this] { window_->closeForced(); });
}

void Program::finish(int code) {
    quitAsked_ = true;
    code_ = code;
    QCoreApplication::exit(code);
}

} // namespace host
