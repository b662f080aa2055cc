#include "app/Targets.h"

#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QWindow>

#include <algorithm>

namespace host {

namespace {

/// Something that can be pointed at: a widget, or a part of one.
struct Candidate {
    QWidget* widget;
    QRect area;
    bool enabled;
};

using Candidates = std::vector<Candidate>;

/// A text as a user sees it: without markup, marks of mnemonics and shortcuts.
QString asSeen(const QString& text) {
    QString plain =
        Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    plain = plain.section('\t', 0, 0);
    QString seen;
    for (int i = 0; i < plain.size(); ++i) {
        if (plain.at(i) == '&' && i + 1 < plain.size())
            ++i;
        seen += plain.at(i);
    }
    return seen.simplified();
}

bool isTip(const QString& tip, const QString& name) {
    return !tip.isEmpty() && (asSeen(tip) == name || asSeen(tip.section('\n', 0, 0)) == name);
}

bool isClass(const QWidget& widget, const QString& name) {
    const QString type = QString::fromLatin1(widget.metaObject()->className());
    return type == name || type.section(QStringLiteral("::"), -1) == name;
}

QString textOf(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return group->title();
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget))
        return field->placeholderText();
    return widget.isWindow() ? widget.windowTitle() : QString();
}

/// How a widget is known by this name, the strongest first; -1: it is not.
int knownBy(const QWidget& widget, const QString& name) {
    if (asSeen(textOf(widget)) == name)
        return 0;
    if (isTip(widget.toolTip(), name) || asSeen(widget.accessibleName()) == name)
        return 1;
    if (widget.objectName() == name)
        return 2;
    return isClass(widget, name) ? 3 : -1;
}

template <class Bar> void addActions(Bar& bar, const QString& name, Candidates& found) {
    for (QAction* action : bar.actions()) {
        if (action->isVisible() && !action->isSeparator() && asSeen(action->text()) == name)
            found.push_back({&bar, bar.actionGeometry(action), action->isEnabled()});
    }
}

void addItems(QAbstractItemView& view, const QString& name, Candidates& found) {
    const QAbstractItemModel* model = view.model();
    for (int row = 0; model && row < model->rowCount(view.rootIndex()); ++row) {
        const QModelIndex index = model->index(row, 0, view.rootIndex());
        const QRect area = view.visualRect(index);
        if (index.data().toString() == name && !area.isEmpty())
            found.push_back({view.viewport(), area, index.flags().testFlag(Qt::ItemIsEnabled)});
    }
}

/// The entries, tabs and actions that a widget shows.
void addParts(QWidget& widget, const QString& name, Candidates& found) {
    if (auto* menu = qobject_cast<QMenu*>(&widget)) {
        addActions(*menu, name, found);
    } else if (auto* bar = qobject_cast<QMenuBar*>(&widget)) {
        addActions(*bar, name, found);
    } else if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) {
        addItems(*view, name, found);
    } else if (auto* tabs = qobject_cast<QTabBar*>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            if (asSeen(tabs->tabText(i)) == name)
                found.push_back({tabs, tabs->tabRect(i), tabs->isTabEnabled(i)});
        }
    }
}

/// A label stands for the field that it describes.
QWidget& described(QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    QWidget* field = label ? label->buddy() : nullptr;
    return field && field->isVisible() ? *field : widget;
}

QList<QWidget*> visibleWindows() {
    QList<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const QWindow* handle = window->windowHandle();
        if (window->isVisible() && !window->isMinimized() && handle && handle->isExposed())
            windows.append(window);
    }
    return windows;
}

QList<QWidget*> windowsOf(const SessionTarget& target) {
    if (!target.window.isEmpty())
        return windowsNamed(target.window);
    for (QWidget* first : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
        if (first)
            return {first};
    }
    return visibleWindows();
}

Candidates thingsNamed(const SessionTarget& target) {
    constexpr std::size_t ways = 4;
    Candidates known[ways];
    for (QWidget* window : windowsOf(target)) {
        QList<QWidget*> widgets = window->findChildren<QWidget*>();
        widgets.prepend(window);
        for (QWidget* widget : widgets) {
            if (!widget->isVisible() || widget->window() != window)
                continue;
            addParts(*widget, target.name, known[0]);
            const int way = knownBy(*widget, target.name);
            if (way < 0)
                continue;
            QWidget& thing = described(*widget);
            known[way].push_back({&thing, thing.rect(), thing.isEnabled()});
        }
    }
    const auto found = std::find_if(std::begin(known), std::end(known),
                                    [](const Candidates& some) { return !some.empty(); });
    return found == std::end(known) ? Candidates() : *found;
}

/// In a menu that hangs from the entry before, or for the first one in an open menu or the bar.
Candidates menuEntriesNamed(const SessionTarget& target) {
    Candidates found;
    for (QWidget* window : visibleWindows()) {
        auto* menu = qobject_cast<QMenu*>(window);
        if (menu && (target.window.isEmpty() ? menu == QApplication::activePopupWidget()
                                             : asSeen(menu->title()) == target.window))
            addActions(*menu, target.name, found);
    }
    if (target.window.isEmpty() && !QApplication::activePopupWidget())
        addActions(*MainWindow::instance()->menuBar(), target.name, found);
    return found;
}

Candidates onTimeSlider(double frame) {
    TimeSlider& slider = MainWindow::instance()->timeSlider();
    const double left = slider.xOf(frame), right = slider.xOf(frame + 1);
    const bool shown = frame >= slider.firstFrame() && frame <= slider.lastFrame();
    const QRect area(int(left), 0, std::max(1, int(right - left)), slider.height() / 2);
    return shown ? Candidates{{&slider, area, true}} : Candidates();
}

TargetPlace refused(const QString& why) {
    return {nullptr, {}, why};
}

QString quoted(const QString& name) {
    return '\'' + name + '\'';
}

TargetPlace placeIn(const Candidate& thing, const SessionTarget& target, const QString& name) {
    const QRect inSight = thing.widget->visibleRegion().boundingRect() & thing.area;
    if (inSight.isEmpty())
        return refused(name + " is out of sight");
    if (!thing.enabled)
        return refused(name + " is disabled");
    QPoint place = inSight.center();
    if (target.spot) {
        QPointF spot = target.spot->position;
        if (target.spot->percent)
            spot = {thing.area.width() * spot.x() / 100, thing.area.height() * spot.y() / 100};
        place = thing.area.topLeft() + spot.toPoint();
    }
    // What lets the pointer through belongs to what is under it.
    const QWidget* there = QApplication::widgetAt(thing.widget->mapToGlobal(place));
    const bool reached = there && (there == thing.widget || thing.widget->isAncestorOf(there) ||
                                   there->isAncestorOf(thing.widget));
    if (!reached)
        return refused(name + " is covered" +
                       (there ? " by " + quoted(there->window()->windowTitle()) : QString()));
    return {thing.widget, place, {}};
}

} // namespace

QList<QWidget*> windowsNamed(const QString& name) {
    QList<QWidget*> found;
    for (QWidget* window : visibleWindows()) {
        if (asSeen(window->windowTitle()) == name || window->objectName() == name ||
            isClass(*window, name))
            found.append(window);
    }
    return found;
}

TargetPlace locate(const SessionTarget& target) {
    Candidates found;
    QString name = quoted(target.name);
    if (target.kind == SessionTarget::Kind::TimeSlider) {
        name = QStringLiteral("frame %1").arg(target.frame);
        found = onTimeSlider(target.frame);
    } else if (target.kind == SessionTarget::Kind::MenuEntry) {
        found = menuEntriesNamed(target);
    } else {
        if (!target.window.isEmpty() && windowsNamed(target.window).isEmpty())
            return refused(QStringLiteral("there is no window ") + quoted(target.window));
        found = thingsNamed(target);
    }
    if (found.empty())
        return refused(name + " is not there");
    const auto corner = [](const Candidate& one) {
        const QPoint place = one.widget->mapToGlobal(one.area.topLeft());
        return std::pair(place.y(), place.x());
    };
    std::stable_sort(found.begin(), found.end(),
                     [&](const Candidate& a, const Candidate& b) { return corner(a) < corner(b); });
    if (target.ordinal == 0 && found.size() > 1)
        return refused(name +
                       QStringLiteral(" is there %1 times; a number says which").arg(found.size()));
    if (target.ordinal > int(found.size()))
        return refused(name + QStringLiteral(" is there only %1 times").arg(found.size()));
    return placeIn(found[std::size_t(std::max(0, target.ordinal - 1))], target, name);
}

} // namespace host
