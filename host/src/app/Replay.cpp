#include "app/Replay.h"

#include "app/ScreenPicture.h"
#include "app/Targets.h"
#include "foundation/Idle.h"
#include "render/View.h"
#include "render/Views.h"
#include "script/Interpreter.h"
#include "ui/QtCompat.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <csignal>

namespace host {

namespace {

constexpr int kLostAfterMs = 2000;
constexpr int kInterruptCheckMs = 50;
constexpr int kPollMs = 20;

// What the replay holds on the X server, keys and buttons and the key repeat, outlives the program
// unless it is let go: a signal to end ends the replay first.
volatile std::sig_atomic_t interrupted = 0;

void noteInterrupt(int) {
    interrupted = 1;
}

void catchInterrupts(bool caught) {
    interrupted = 0;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, caught ? noteInterrupt : SIG_DFL);
}

} // namespace

Replay::Replay(Session session, QWidget* window, double speed)
    : session_(std::move(session)), window_(window), speed_(session_.speed * speed),
      input_(InputInjector::create()) {
    stepTimer_.setSingleShot(true);
    stepTimer_.setTimerType(Qt::PreciseTimer);
    connect(&stepTimer_, &QTimer::timeout, this, &Replay::next);
    lostTimer_.setSingleShot(true);
    lostTimer_.setInterval(kLostAfterMs);
    connect(&lostTimer_, &QTimer::timeout, this, [this] {
        lostLines_.push_back(session_.steps[index_ - 1].line);
        settle();
    });
    interruptTimer_.setInterval(kInterruptCheckMs);
    connect(&interruptTimer_, &QTimer::timeout, this, [this] {
        if (interrupted)
            finish("interrupted");
    });
}

Replay::~Replay() {
    letGo();
    catchInterrupts(false);
}

void Replay::start(std::function<void(const std::string&)> finished) {
    finished_ = std::move(finished);
    // The pointer events are sent beside the pen's; Qt must not make up a second set of them.
    QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, false);
    qApp->installEventFilter(this);
    window_->activateWindow();
    const auto types = [](const SessionStep& step) {
        return step.kind == SessionStep::Kind::KeyDown;
    };
    if (std::any_of(session_.steps.begin(), session_.steps.end(), types))
        input_->stopKeyRepeat();
    catchInterrupts(true);
    interruptTimer_.start();
    sinceStep_.start();
    stepTimer_.start(int(session_.steps.front().time * 1000 / speed_));
}

QWidget* Replay::target() const {
    if (session_.space == Session::Space::Window)
        return window_;
    const View* view = Views::instance().active();
    return view && view->surface().widget ? view->surface().widget : window_;
}

QPoint Replay::toScreen(QPointF position) const {
    const QWidget* widget = target();
    if (!session_.surface.isEmpty()) {
        const QSizeF size = QSizeF(widget->size()) * widget->devicePixelRatioF();
        const double scale = std::min(size.width() / session_.surface.width(),
                                      size.height() / session_.surface.height());
        position = {(size.width() - session_.surface.width() * scale) / 2 + position.x() * scale,
                    (size.height() - session_.surface.height() * scale) / 2 + position.y() * scale};
    }
    return InputInjector::toScreen(widget, position);
}

bool Replay::reachesUs(QPoint position) const {
    if (held_ != Qt::NoButton)
        return true; // the window of the press keeps the pointer
    const QPointF logical = QPointF(position) / window_->devicePixelRatioF();
    return QApplication::topLevelAt(logical.toPoint()) != nullptr;
}

void Replay::next() {
    if (done_)
        return;
    if (index_ == session_.steps.size()) {
        finish(lostLines_.empty() ? "" : lostEvents());
        return;
    }
    const SessionStep step = session_.steps[index_++];
    sinceStep_.restart();
    waiting_ = Waiting::No;
    perform(step);
}

std::string Replay::lostEvents() const {
    std::string text = session_.file + ": " + std::to_string(lostLines_.size()) +
                       " events of the session did not arrive, line";
    for (const int line : lostLines_)
        text += " " + std::to_string(line);
    return text;
}

void Replay::expect(Waiting what, QPoint position) {
    waiting_ = what;
    expected_ = position;
    lostTimer_.start();
}

void Replay::settle() {
    waiting_ = Waiting::No;
    lostTimer_.stop();
    // Whatever the event caused is handled before the next step.
    QTimer::singleShot(0, this, &Replay::schedule);
}

void Replay::schedule() {
    if (done_)
        return;
    double pause = 0;
    if (index_ > 0 && index_ < session_.steps.size())
        pause = (session_.steps[index_].time - session_.steps[index_ - 1].time) / speed_;
    const double left = pause * 1000 - double(sinceStep_.nsecsElapsed()) / 1e6;
    stepTimer_.start(std::max(0, int(std::ceil(left))));
}

void Replay::movePointer(QPoint target) {
    if (input_->position() == target) {
        settle();
        return;
    }
    if (reachesUs(target))
        expect(Waiting::Motion, target);
    input_->moveTo(target);
    if (waiting_ == Waiting::No)
        settle();
}

void Replay::perform(const SessionStep& step) {
    using Kind = SessionStep::Kind;
    switch (step.kind) {
    case Kind::Move:
        movePointer(toScreen(step.position));
        return;
    case Kind::TabletMove: {
        const QPoint position = toScreen(step.position);
        InputInjector::tablet(target()->window()->windowHandle(), InputInjector::TabletPhase::Move,
                              position, step.pressure, step.eraser);
        movePointer(position);
        return;
    }
    case Kind::TabletPress: {
        const QPoint position = toScreen(step.position);
        input_->moveTo(position);
        InputInjector::tablet(target()->window()->windowHandle(), InputInjector::TabletPhase::Press,
                              position, step.pressure, step.eraser);
        penDown_ = true;
        held_ |= Qt::LeftButton;
        expect(Waiting::Event);
        input_->press(Qt::LeftButton);
        return;
    }
    case Kind::TabletRelease: {
        InputInjector::tablet(target()->window()->windowHandle(),
                              InputInjector::TabletPhase::Release, toScreen(step.position), 0,
                              step.eraser);
        penDown_ = false;
        held_ &= ~Qt::MouseButtons(Qt::LeftButton);
        expect(Waiting::Event);
        input_->release(Qt::LeftButton);
        return;
    }
    case Kind::Press:
        pressButton(step);
        return;
    case Kind::Release:
        releaseButton(step);
        return;
    case Kind::KeyDown:
    case Kind::KeyUp:
        pressKey(step);
        return;
    case Kind::Wheel:
        expect(Waiting::Event);
        input_->wheel(step.notches);
        return;
    case Kind::MoveOnto:
        moveOnto(step);
        return;
    case Kind::Place:
        placeWindow(step);
        return;
    case Kind::Picture:
        takePicture(step);
        return;
    case Kind::Command:
        break;
    }
    if (script::run(step.script))
        settle();
    else
        failAt(step, QStringLiteral("the command failed"));
}

void Replay::failAt(const SessionStep& step, const QString& why) {
    finish(session_.file + ":" + std::to_string(step.line) + ": " + why.toStdString());
}

void Replay::poll(const SessionStep& step, const std::function<QString()>& whyNot,
                  const std::function<void()>& next) {
    if (done_)
        return;
    const QString why = whyNot();
    if (why.isEmpty()) {
        next();
    } else if (sinceStep_.elapsed() > kLostAfterMs) {
        failAt(step, why);
    } else {
        QTimer::singleShot(kPollMs, this, [=] { poll(step, whyNot, next); });
    }
}

void Replay::moveOnto(const SessionStep& step) {
    // What has just been opened may still move: it counts where it is twice.
    const auto place = std::make_shared<QPoint>(-1, -1);
    const auto look = [step, place] {
        const TargetPlace found = locate(step.target);
        if (!found.widget)
            return found.why;
        const QPoint before = *place;
        *place = InputInjector::toScreen(found.widget, QPointF(found.position) *
                                                           found.widget->devicePixelRatioF());
        return *place == before ? QString() : QStringLiteral("'%1' moves").arg(step.target.name);
    };
    poll(step, look, [this, place] { movePointer(*place); });
}

void Replay::pressKey(const SessionStep& step) {
    if (step.shiftOf != Qt::Key_unknown && !input_->needsShift(step.shiftOf)) {
        settle();
        return;
    }
    if (step.kind == SessionStep::Kind::KeyUp) {
        sendKey(step);
        return;
    }
    // A dialog that has just been opened, or the window below one that was closed, gets the
    // keyboard a moment later.
    const auto look = [this] {
        const QWidget* modal = QApplication::activeModalWidget();
        const QWidget* active = QApplication::activeWindow();
        const bool ready =
            QApplication::activePopupWidget() || (modal ? active == modal : active != nullptr);
        return ready || sinceStep_.elapsed() > kLostAfterMs
                   ? QString()
                   : QStringLiteral("no window has the keyboard");
    };
    poll(step, look, [this, step] { sendKey(step); });
}

void Replay::sendKey(const SessionStep& step) {
    const bool down = step.kind == SessionStep::Kind::KeyDown;
    if (down) {
        keysHeld_.append(step.key);
        modalAtPress_ = QApplication::activeModalWidget();
        expect(Waiting::Event);
    } else {
        keysHeld_.removeAll(step.key);
        expectRelease();
    }
    if (!input_->key(step.key, down))
        failAt(step, QStringLiteral("the keyboard has no such key"));
    else if (waiting_ == Waiting::No)
        settle();
}

void Replay::expectRelease() {
    if (QApplication::activeModalWidget() == modalAtPress_)
        expect(Waiting::Event);
}

void Replay::pressButton(const SessionStep& step) {
    held_ |= step.button;
    modalAtPress_ = QApplication::activeModalWidget();
    expect(Waiting::Event);
    input_->press(step.button);
}

void Replay::releaseButton(const SessionStep& step) {
    held_ &= ~Qt::MouseButtons(step.button);
    expectRelease();
    input_->release(step.button);
    if (waiting_ == Waiting::No)
        settle();
}

/// A title bar belongs to the window manager, which there may be none of.
void Replay::placeWindow(const SessionStep& step) {
    const auto place = [this, step] {
        const QList<QWidget*> windows = windowsNamed(step.target.window);
        if (windows.size() != 1)
            return QStringLiteral("there is no window '%1'").arg(step.target.window);
        windows.first()->move(window_->mapToGlobal(step.position.toPoint()));
        return QString();
    };
    poll(step, place, [this] { settle(); });
}

void Replay::takePicture(const SessionStep& step) {
    idle::drainAll();
    Views::instance().refreshAll(true);
    // A picture counts when the screen has come to rest; what never does is taken as it is.
    const auto last = std::make_shared<QImage>();
    const auto look = [this, step, last] {
        const QImage now = grabScreen(step.target.window);
        if (now.isNull())
            return QStringLiteral("there is no window '%1'").arg(step.target.window);
        const bool rests = now == *last || sinceStep_.elapsed() > kLostAfterMs;
        *last = now;
        return rests ? QString() : QStringLiteral("the screen does not rest");
    };
    poll(step, look, [this, step, last] {
        QDir().mkpath(QFileInfo(step.file).absolutePath());
        if (last->save(step.file))
            settle();
        else
            failAt(step, QStringLiteral("cannot write '%1'").arg(step.file));
    });
}

bool Replay::eventFilter(QObject* watched, QEvent* event) {
    if (waiting_ == Waiting::No || !watched->isWindowType())
        return false;
    switch (event->type()) {
    case QEvent::MouseMove: {
        if (waiting_ != Waiting::Motion)
            break;
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPointF pixel = qt::globalPosition(*mouse) * window_->devicePixelRatioF();
        if (std::abs(pixel.x() - expected_.x()) < 1.5 && std::abs(pixel.y() - expected_.y()) < 1.5)
            settle();
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
        if (waiting_ == Waiting::Event)
            settle();
        break;
    default:
        break;
    }
    return false;
}

void Replay::letGo() {
    if (!input_)
        return;
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        if (held_ & button)
            input_->release(button);
    }
    held_ = Qt::NoButton;
    for (const Qt::Key key : keysHeld_)
        input_->key(key, false);
    keysHeld_.clear();
    if (penDown_ && target()->window()->windowHandle())
        InputInjector::tablet(target()->window()->windowHandle(),
                              InputInjector::TabletPhase::Release, input_->position(), 0, false);
    penDown_ = false;
}

void Replay::finish(const std::string& error) {
    if (done_)
        return;
    done_ = true;
    lostTimer_.stop();
    letGo();
    input_.reset(); // the keys repeat again
    interruptTimer_.stop();
    catchInterrupts(false);
    qApp->removeEventFilter(this);
    QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, true);
    // What the last event caused is finished before whoever waits goes on.
    QTimer::singleShot(0, this, [this, error] { finished_(error); });
}

} // namespace host
