#include "ui/MenuSets.h"

#include "foundation/Events.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace host {

MenuSets::MenuSets() {
    const struct {
        const char* name;
        const char* label;
    } sets[] = {
        {"animationMenuSet", "Animation"}, {"commonMenuSet", "Common"},
        {"modelingMenuSet", "Modeling"},   {"riggingMenuSet", "Rigging"},
        {"dynamicsMenuSet", "FX"},         {"renderingMenuSet", "Rendering"},
    };
    for (const auto& set : sets)
        sets_.push_back({QLatin1String(set.name), QLatin1String(set.label), true, true, {}});
    current_ = sets_.front().name;
}

MenuSets& MenuSets::instance() {
    static MenuSets menuSets;
    return menuSets;
}

const MenuSets::Set* MenuSets::find(const QString& name) const {
    const auto it = std::find_if(sets_.begin(), sets_.end(),
                                 [&name](const Set& set) { return set.name == name; });
    return it == sets_.end() ? nullptr : &*it;
}

MenuSets::Set* MenuSets::find(const QString& name) {
    return const_cast<Set*>(static_cast<const MenuSets*>(this)->find(name));
}

QStringList MenuSets::names() const {
    QStringList result;
    for (const Set& set : sets_)
        result.append(set.name);
    return result;
}

bool MenuSets::setCurrent(const QString& name) {
    if (!contains(name))
        return false;
    if (name != current_) {
        current_ = name;
        show();
        Q_EMIT currentChanged(name);
        events::emit("MenuModeChanged");
    }
    return true;
}

bool MenuSets::make(const QString& name, const QString& label) {
    if (contains(name))
        return false;
    sets_.push_back({name, label, false, true, {}});
    Q_EMIT setsChanged();
    return true;
}

bool MenuSets::removeSet(const QString& name) {
    const Set* set = find(name);
    if (!set || set->permanent || sets_.size() == 1)
        return false;
    for (QMenu* menu : menusOf(name))
        menu->menuAction()->setVisible(true);
    sets_.erase(sets_.begin() + (set - sets_.data()));
    if (current_ == name)
        setCurrent(sets_.front().name);
    show();
    Q_EMIT setsChanged();
    return true;
}

bool MenuSets::moveSet(const QString& name, int index) {
    const Set* set = find(name);
    if (!set)
        return false;
    Set moved = *set;
    sets_.erase(sets_.begin() + (set - sets_.data()));
    sets_.insert(sets_.begin() + std::clamp(index, 0, int(sets_.size())), std::move(moved));
    Q_EMIT setsChanged();
    return true;
}

QString MenuSets::labelOf(const QString& name) const {
    const Set* set = find(name);
    return set ? set->label : QString();
}

void MenuSets::setLabel(const QString& name, const QString& label) {
    find(name)->label = label;
    Q_EMIT setsChanged();
}

bool MenuSets::isPermanent(const QString& name) const {
    return find(name)->permanent;
}

void MenuSets::setPermanent(const QString& name, bool permanent) {
    find(name)->permanent = permanent;
}

bool MenuSets::inHotBox(const QString& name) const {
    return find(name)->inHotBox;
}

void MenuSets::setInHotBox(const QString& name, bool shown) {
    find(name)->inHotBox = shown;
}

QList<QMenu*> MenuSets::menusOf(const QString& name) const {
    QList<QMenu*> menus;
    for (const QPointer<QMenu>& menu : find(name)->menus) {
        if (menu)
            menus.append(menu);
    }
    return menus;
}

void MenuSets::insert(const QString& name, QMenu* menu, int index) {
    auto& menus = find(name)->menus;
    // Menus that were deleted do not count as places.
    menus.erase(
        std::remove_if(menus.begin(), menus.end(),
                       [menu](const QPointer<QMenu>& other) { return !other || other == menu; }),
        menus.end());
    menus.insert(menus.begin() + std::clamp(index, 0, int(menus.size())), menu);
    show();
}

bool MenuSets::remove(const QString& name, QMenu* menu) {
    auto& menus = find(name)->menus;
    const auto it = std::find(menus.begin(), menus.end(), menu);
    if (it == menus.end())
        return false;
    menus.erase(it);
    menu->menuAction()->setVisible(true);
    show();
    return true;
}

void MenuSets::show() {
    for (const Set& set : sets_) {
        for (const QPointer<QMenu>& menu : set.menus) {
            if (menu)
                menu->menuAction()->setVisible(false);
        }
    }
    for (QMenu* menu : menusOf(current_)) {
        menu->menuAction()->setVisible(true);
        // The bar shows them in the order of the set, behind those that always show.
        if (auto* bar = qobject_cast<QMenuBar*>(menu->parentWidget()))
            bar->addAction(menu->menuAction());
    }
}

} // namespace host
