// The widgets of the 3D views that a tool's event filter sits on. Main thread only.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace vellum {

/// The widget of the active 3D view; null without one.
QWidget* activeViewWidget();

class WatchedViews {
public:
    /// `filter` gets the events; it has to outlive this.
    explicit WatchedViews(QObject* filter) : filter_(filter) {}
    ~WatchedViews() { clear(); }
    WatchedViews(const WatchedViews&) = delete;
    WatchedViews& operator=(const WatchedViews&) = delete;

    void addActiveView();
    void clear();
    bool contains(const QObject* widget) const;
    const QList<QPointer<QWidget>>& widgets() const { return widgets_; }

private:
    QObject* filter_;
    QList<QPointer<QWidget>> widgets_; ///< null once a view has been closed
};

} // namespace vellum
