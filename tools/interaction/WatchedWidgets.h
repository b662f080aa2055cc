// The widgets that an event filter sits on. Main thread only.
#pragma once

#include <QList>
#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace vellum {

/// Maya makes the view active in which a button goes down, but not of a press that a filter takes.
/// The pointer has to be over `view`.
void makeActiveView(QWidget& view);

/// A press that asks for a menu. Not while another button is down: the menu would take its release.
bool isPlainRightPress(const QMouseEvent& event);

class WatchedWidgets {
public:
    /// `filter` gets the events; it has to outlive this.
    explicit WatchedWidgets(QObject* filter) : filter_(filter) {}
    ~WatchedWidgets() { clear(); }
    WatchedWidgets(const WatchedWidgets&) = delete;
    WatchedWidgets& operator=(const WatchedWidgets&) = delete;

    void add(QWidget* widget); ///< nothing when null or there already
    void clear();
    bool contains(const QObject* widget) const;
    const QList<QPointer<QWidget>>& widgets() const { return widgets_; }

private:
    QObject* filter_;
    QList<QPointer<QWidget>> widgets_; ///< null once a view has been closed
};

} // namespace vellum
