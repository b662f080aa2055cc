#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <vector>

class QMenu;

namespace host {

/// Which menus of the main window show: those in the current set and those in none. The sets the
/// program begins with are permanent, the animation set is current at first.
class MenuSets : public QObject {
    Q_OBJECT
public:
    static MenuSets& instance();

    QStringList names() const; ///< in the order of the chooser
    bool contains(const QString& name) const { return find(name) != nullptr; }
    QString current() const { return current_; }
    bool setCurrent(const QString& name); ///< false for an unknown set

    bool make(const QString& name, const QString& label); ///< false when there is one already
    /// False for an unknown or permanent set. Its menus stay, in none if in no other.
    bool removeSet(const QString& name);
    bool moveSet(const QString& name, int index); ///< false for an unknown set

    // Of one set, which must exist.
    QString labelOf(const QString& name) const;
    void setLabel(const QString& name, const QString& label);
    bool isPermanent(const QString& name) const;
    void setPermanent(const QString& name, bool permanent);
    bool inHotBox(const QString& name) const;
    void setInHotBox(const QString& name, bool shown);
    QList<QMenu*> menusOf(const QString& name) const;
    /// Puts a menu at an index, or moves it there; beyond the end is the end.
    void insert(const QString& name, QMenu* menu, int index);
    bool remove(const QString& name, QMenu* menu); ///< false when it is not in the set

Q_SIGNALS:
    void currentChanged(const QString& name);
    void setsChanged(); ///< names, labels or their order

private:
    struct Set {
        QString name, label;
        bool permanent = false, inHotBox = true;
        std::vector<QPointer<QMenu>> menus;
    };
    MenuSets();
    const Set* find(const QString& name) const;
    Set* find(const QString& name);
    void show();

    std::vector<Set> sets_;
    QString current_;
};

} // namespace host
