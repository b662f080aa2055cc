#include "ui/MenuSets.h"

#include <QAction>
#include <QMenu>
#include <algorithm>

namespace host {

namespace {

const struct {
    const char* name;
    const char* label;
} sets[] = {
    {"animationMenuSet", "Animation"}, {"commonMenuSet", "Common"},
    {"modelingMenuSet", "Modeling"},   {"riggingMenuSet", "Rigging"},
    {"dynamicsMenuSet", "FX"},         {"renderingMenuSet", "Rendering"},
};

} // namespace

MenuSets::MenuSets() : current_(QLatin1String(sets[0].name)) {
}

MenuSets& MenuSets::instance() {
    static MenuSets menuSets;
    return menuSets;
}

QStringList MenuSets::names() const {
    QStringList result;
    for (const auto& set : sets)
        result.append(QLatin1String(set.name));
    return result;
}

QString MenuSets::labelOf(const QString& name) const {
    for (const auto& set : sets) {
        if (name == QLatin1String(set.name))
            return QLatin1String(set.label);
    }
    return QString();
}

bool MenuSets::setCurrent(const QString& name) {
    if (!names().contains(name))
        return false;
    if (name != current_) {
        current_ = name;
        show();
        Q_EMIT currentChanged(name);
    }
    return true;
}

void MenuSets::add(QMenu* menu) {
    auto& list = menus_[current_];
    if (std::find(list.begin(), list.end(), menu) == list.end())
        list.push_back(menu);
    show();
}

void MenuSets::remove(QMenu* menu) {
    auto& list = menus_[current_];
    list.erase(std::remove(list.begin(), list.end(), menu), list.end());
    menu->menuAction()->setVisible(true);
    show();
}

void MenuSets::show() {
    for (const bool inCurrent : {false, true}) {
        for (auto& [name, list] : menus_) {
            for (const QPointer<QMenu>& menu : list) {
                if (menu && (name == current_) == inCurrent)
                    menu->menuAction()->setVisible(inCurrent);
            }
        }
    }
}

} // namespace host
