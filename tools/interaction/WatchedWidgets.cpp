#include "tools/interaction/WatchedWidgets.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/session/Keyboard.h"

#include <algorithm>

namespace vellum {

void makeActiveView(QWidget& view) {
    if (activeViewWidget() == &view)
        return;
    view.activateWindow(); // which gets the focus back after the menu
    script::execute(command::focusPanelUnderPointer());
}

bool isPlainRightPress(const QMouseEvent& event) {
    return event.type() == QEvent::MouseButtonPress && event.button() == Qt::RightButton &&
           event.buttons() == Qt::RightButton && event.modifiers() == Qt::NoModifier;
}

void WatchedWidgets::add(QWidget* widget) {
    widgets_.removeAll(QPointer<QWidget>());
    if (!widget || contains(widget))
        return;
    widget->installEventFilter(filter_);
    widgets_.append(widget);
}

void WatchedWidgets::clear() {
    for (const QPointer<QWidget>& widget : widgets_) {
        if (widget)
            widget->removeEventFilter(filter_);
    }
    widgets_.clear();
}

bool WatchedWidgets::contains(const QObject* widget) const {
    return std::any_of(widgets_.begin(), widgets_.end(),
                       [widget](const QPointer<QWidget>& one) { return one.data() == widget; });
}

} // namespace vellum
