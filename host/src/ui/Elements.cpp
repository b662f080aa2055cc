#include "ui/Elements.h"

#include <QWidget>

#include <algorithm>

namespace host {

namespace {

const QChar separator('|');

bool isBelow(const QObject* object, const QObject* ancestor) {
    for (; object; object = object->parent()) {
        if (object == ancestor)
            return true;
    }
    return false;
}

bool isWindow(const QObject* object) {
    return object->isWidgetType() && static_cast<const QWidget*>(object)->isWindow();
}

} // namespace

Elements& Elements::instance() {
    static Elements elements;
    return elements;
}

void Elements::add(QObject* object, const QString& name, ElementKind kind, const QObject* parent) {
    object->setObjectName(name);
    const bool standsInWidgets = object->isWidgetType() && kind != ElementKind::Window &&
                                 kind != ElementKind::Menu && kind != ElementKind::MenuItem;
    entries_.push_back({object, name, kind, parent, standsInWidgets});
    connect(object, &QObject::destroyed, this, [this](QObject* gone) { remove(gone); });
}

void Elements::remove(const QObject* object) {
    if (!find(object))
        return;
    const QString path = pathOf(object);
    // What waits for its deletion no longer takes new elements.
    if (currentLayout == object)
        currentLayout.clear();
    if (currentMenu == object)
        currentMenu.clear();
    if (currentCollection == object)
        currentCollection.clear();
    entries_.erase(std::remove_if(entries_.begin(), entries_.end(),
                                  [object](const Entry& entry) { return entry.object == object; }),
                   entries_.end());
    if (onRemoved)
        onRemoved(path);
}

const Elements::Entry* Elements::find(const QObject* object) const {
    const auto it = std::find_if(entries_.begin(), entries_.end(),
                                 [object](const Entry& entry) { return entry.object == object; });
    return it == entries_.end() ? nullptr : &*it;
}

const QObject* Elements::parentOf(const Entry& entry) const {
    if (!entry.standsInWidgets)
        return entry.parent;
    const QObject* object = entry.object;
    while (!isWindow(object) && object->parent()) {
        object = object->parent();
        if (find(object))
            return object;
    }
    return nullptr;
}

QObject* Elements::find(const QString& name, ElementKind kind, const QWidget* ancestor) const {
    const bool isPath = name.contains(separator);
    for (const Entry& entry : entries_) {
        // An interface's layouts and panels are controls too, as are the windows' contents.
        const bool kindFits = entry.kind == kind ||
                              (kind == ElementKind::Control && (entry.kind == ElementKind::Layout ||
                                                                entry.kind == ElementKind::Panel));
        if (!kindFits || (ancestor && !isBelow(entry.object, ancestor)))
            continue;
        if (isPath ? pathOf(entry.object) == name : entry.name == name)
            return entry.object;
    }
    return nullptr;
}

QObject* Elements::findAny(const QString& name) const {
    for (const ElementKind kind :
         {ElementKind::Window, ElementKind::Layout, ElementKind::Control, ElementKind::Panel,
          ElementKind::Menu, ElementKind::MenuItem, ElementKind::Collection}) {
        if (QObject* object = find(name, kind))
            return object;
    }
    return nullptr;
}

ElementKind Elements::kindOf(const QObject* object) const {
    const Entry* entry = find(object);
    return entry ? entry->kind : ElementKind::Control;
}

QString Elements::nameOf(const QObject* object) const {
    const Entry* entry = find(object);
    return entry ? entry->name : QString();
}

QString Elements::pathOf(const QObject* object) const {
    QStringList parts;
    for (const Entry* entry = find(object); entry; entry = find(parentOf(*entry)))
        parts.prepend(entry->name);
    return parts.join(separator);
}

QStringList Elements::namesOf(ElementKind kind) const {
    QStringList names;
    for (const Entry& entry : entries_) {
        if (entry.kind == kind)
            names.append(entry.name);
    }
    return names;
}

QList<QObject*> Elements::childrenOf(const QObject* object) const {
    QList<QObject*> children;
    for (const Entry& entry : entries_) {
        if (parentOf(entry) == object)
            children.append(entry.object);
    }
    return children;
}

void Elements::forget(QObject* object) {
    for (QObject* child : childrenOf(object))
        forget(child);
    remove(object);
}

QString Elements::uniqueName(const QString& stem) const {
    for (int number = 1;; ++number) {
        QString name = stem + QString::number(number);
        if (!findAny(name))
            return name;
    }
}

} // namespace host
