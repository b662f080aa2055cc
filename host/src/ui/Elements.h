#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QWidget;

namespace host {

/// What scripts call an interface element. Several kinds may share one name.
enum class ElementKind { Window, Layout, Control, Panel, Menu, MenuItem, Collection };

/// Dynamic property of elements that the program cannot do without: scripts cannot delete them.
constexpr const char* kBuiltIn = "builtIn";

/// Names of the interface elements that scripts and plug-ins can ask for: windows, layouts,
/// controls, panels, menus and their items. An element is a QObject that lives elsewhere; it
/// leaves the register when it is destroyed. Main thread only.
class Elements : public QObject {
public:
    static Elements& instance();

    /// `parent` is the element it stands in by name, or null for one at the top. A control, layout
    /// or panel is later wherever its widget is: in the nearest element around it, or at the top
    /// of a window that is none, as in a plug-in's own dialog.
    void add(QObject* object, const QString& name, ElementKind kind, const QObject* parent);

    /// By short name or by full path with '|' between elements; null when there is none. Of
    /// several with the same short name the first made is found. With an ancestor only widgets
    /// below that.
    QObject* find(const QString& name, ElementKind kind, const QWidget* ancestor = nullptr) const;
    /// Of any kind, the order of the enumeration deciding.
    QObject* findAny(const QString& name) const;

    bool contains(const QObject* object) const { return find(object) != nullptr; }
    ElementKind kindOf(const QObject* object) const; ///< of an element; control for others
    QString nameOf(const QObject* object) const;     ///< "" for no element
    QString pathOf(const QObject* object) const;     ///< "" for no element
    QStringList namesOf(ElementKind kind) const;     ///< in the order they were made
    QList<QObject*> childrenOf(const QObject* object) const;

    /// Takes an element and those below it out of the register.
    void forget(QObject* object);

    /// Called with the full path of every element that leaves the register.
    std::function<void(const QString& path)> onRemoved;

    /// `stem` followed by the first number that gives a new name.
    QString uniqueName(const QString& stem) const;

    /// Where new layouts and controls, respectively menu items, go when a call does not say.
    QPointer<QWidget> currentLayout;
    QPointer<QObject> currentMenu;
    QPointer<QObject> currentCollection;

private:
    struct Entry {
        QObject* object;
        QString name;
        ElementKind kind;
        QPointer<const QObject> parent;
        bool standsInWidgets; ///< has the parent that its widget has, not the one given
    };
    const Entry* find(const QObject* object) const;
    const QObject* parentOf(const Entry& entry) const;
    void remove(const QObject* object);

    std::vector<Entry> entries_;
};

} // namespace host
