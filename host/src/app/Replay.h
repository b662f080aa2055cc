#pragma once

#include "app/Session.h"
#include "ui/InputInjector.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace host {

/// Plays a session into the program through the window system: a pen's samples are tablet events
/// beside real pointer motion. Pauses are kept: each step comes no sooner after the one before it
/// than it was recorded, and only after that one's event has been delivered, so a slow machine
/// stretches a session but never loses a part of it.
class Replay : public QObject {
    Q_OBJECT
public:
    /// Coordinates are those of the active 3D view's widget, or of `window` when the session says
    /// so. The factor multiplies the session's own speed.
    Replay(Session session, QWidget* window, double speed);
    ~Replay() override;

    /// Called once, later: with "" when everything was played, else with what went wrong. The
    /// buttons and keys that were held are let go first.
    void start(std::function<void(const std::string&)> finished);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Waiting { No, Motion, Event };

    void next();
    void perform(const SessionStep& step);
    void pressButton(const SessionStep& step);
    void releaseButton(const SessionStep& step);
    void pressKey(const SessionStep& step);
    void sendKey(const SessionStep& step);
    /// Expects an event, unless the press before it opened or closed a modal dialog: then the one
    /// it belongs to may be blocked or gone.
    void expectRelease();
    void movePointer(QPoint target);
    void moveOnto(const SessionStep& step);
    void placeWindow(const SessionStep& step);
    void takePicture(const SessionStep& step);
    void failAt(const SessionStep& step, const QString& why);
    /// Asks again and again, for as long as an event may take, until it answers without a reason
    /// why not; then goes on to `next`, else ends the replay with the reason.
    void poll(const SessionStep& step, const std::function<QString()>& whyNot,
              const std::function<void()>& next);
    void expect(Waiting what, QPoint position = {});
    void settle();
    void schedule();
    std::string lostEvents() const;
    void finish(const std::string& error);
    void letGo();
    QWidget* target() const;
    QPoint toScreen(QPointF position) const;
    bool reachesUs(QPoint position) const;

    Session session_;
    QWidget* window_;
    double speed_;
    std::function<void(const std::string&)> finished_;
    std::unique_ptr<InputInjector> input_; ///< null when done
    std::size_t index_ = 0;
    QElapsedTimer sinceStep_;
    QTimer stepTimer_;
    QTimer lostTimer_;
    QTimer interruptTimer_; ///< looks whether Ctrl+C or a signal to end came
    Waiting waiting_ = Waiting::No;
    QPoint expected_;
    std::vector<int> lostLines_; ///< of steps whose event did not arrive
    Qt::MouseButtons held_;
    const QWidget* modalAtPress_ = nullptr; ///< only compared
    QList<Qt::Key> keysHeld_;
    bool penDown_ = false;
    bool done_ = false;
};

} // namespace host
