#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <map>
#include <vector>

class QMenu;

namespace host {

/// Which menus of the main window show: those in the current set and those in none. The sets are
/// fixed; the animation set is current at first.
class MenuSets : public QObject {
    Q_OBJECT
public:
    static MenuSets& instance();

    QStringList names() const;
    QString labelOf(const QString& name) const;
    QString current() const { return current_; }
    bool setCurrent(const QString& name); ///< false for an unknown set
    void add(QMenu* menu);                ///< to the current set, once
    void remove(QMenu* menu);             ///< from the current set

Q_SIGNALS:
    void currentChanged(const QString& name);

private:
    MenuSets();
    void show();

    std::map<QString, std::vector<QPointer<QMenu>>> menus_;
    QString current_;
};

} // namespace host
