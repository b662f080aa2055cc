// Tells the first of several things that happen before the event loop runs again.
#pragma once

#include <QObject>

#include <utility>

namespace host {

class TurnMark {
public:
    /// True the first time in this turn of the event loop.
    bool begin() {
        if (std::exchange(begun_, true))
            return false;
        QMetaObject::invokeMethod(
            &context_, [this] { begun_ = false; }, Qt::QueuedConnection);
        return true;
    }

private:
    QObject context_;
    bool begun_ = false;
};

} // namespace host
