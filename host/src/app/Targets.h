#pragma once

#include "app/SessionTarget.h"

#include <QPoint>
#include <QString>

class QWidget;

namespace host {

struct TargetPlace {
    QWidget* widget = nullptr; ///< null: nothing can be pressed there now
    QPoint position;           ///< in the widget, logical pixels
    QString why;               ///< why not
};

/// Looks for what a session names in the windows that a user could work with now: an open menu or
/// list before all others, a modal dialog before what it blocks. It must be enabled, in sight and
/// covered by nothing.
TargetPlace locate(const SessionTarget& target);

/// The visible windows of this title, object or class name.
QList<QWidget*> windowsNamed(const QString& name);

} // namespace host
