// menu, menuItem, radioMenuItemCollection, menuSet, setMenuMode.
#include "script/Commands.h"
#include "script/Flags.h"
#include "script/Interpreter.h"
#include "ui/CommandSupport.h"
#include "ui/Elements.h"
#include "ui/MainWindow.h"
#include "ui/MenuSets.h"
#include "ui/UiCommands.h"

#include <QAction>
#include <QActionGroup>
#include <QFont>
#include <QMenu>
#include <QMenuBar>
#include <memory>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

Elements& elements() {
    return Elements::instance();
}

/// A menu, or the sub-menu that a menu item is; null when there is none of that name.
QMenu* findMenu(const std::string& name) {
    QObject* object = elements().find(command::text(name), ElementKind::menu);
    if (!object)
        object = elements().find(command::text(name), ElementKind::menuItem);
    return qobject_cast<QMenu*>(object);
}

QMenu& menuNamed(const std::string& name) {
    if (QMenu* menu = findMenu(name))
        return *menu;
    throw ScriptError("Object '" + name + "' not found.");
}

QMenu* menuParent(const ParsedFlags& flags) {
    if (flags.isSet("-parent"))
        return &menuNamed(flags.getString("-parent"));
    auto* menu = qobject_cast<QMenu*>(elements().currentMenu.data());
    if (!menu)
        throw ScriptError("menuItem: there is no current menu to put the item in.");
    return menu;
}

void setMenuFlags(QMenu& menu, const ParsedFlags& flags) {
    if (flags.isSet("-label"))
        menu.setTitle(command::text(flags.getString("-label")));
    if (flags.isSet("-tearOff"))
        menu.setTearOffEnabled(flags.getBool("-tearOff"));
    if (flags.isSet("-enable"))
        menu.setEnabled(flags.getBool("-enable"));
    if (flags.isSet("-visible"))
        menu.menuAction()->setVisible(flags.getBool("-visible"));
    if (flags.isSet("-deleteAllItems")) {
        for (QObject* item : elements().childrenOf(&menu))
            command::destroy(item);
    }
}

Value queryMenu(QMenu& menu, const ParsedFlags& flags) {
    if (flags.isSet("-label"))
        return Value(menu.title().toStdString());
    if (flags.isSet("-tearOff"))
        return Value(menu.isTearOffEnabled());
    if (flags.isSet("-enable"))
        return Value(menu.isEnabled());
    if (flags.isSet("-visible"))
        return Value(menu.menuAction()->isVisible());
    const QList<QObject*> items = elements().childrenOf(&menu);
    if (flags.isSet("-numberOfItems"))
        return Value(int(items.size()));
    if (flags.isSet("-itemArray")) {
        script::Strings names;
        for (const QObject* item : items)
            names.push_back(elements().nameOf(item).toStdString());
        return Value(names);
    }
    throw ScriptError("menu: a flag to query is needed.");
}

Value menuCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-p", "-parent", {ArgKind::String})
                                    .flag("-l", "-label", {ArgKind::String})
                                    .flag("-to", "-tearOff", {ArgKind::Boolean})
                                    .flag("-en", "-enable", {ArgKind::Boolean})
                                    .flag("-vis", "-visible", {ArgKind::Boolean})
                                    .flag("-pmc", "-postMenuCommand", {ArgKind::String})
                                    .flag("-ni", "-numberOfItems")
                                    .flag("-ia", "-itemArray")
                                    .flag("-dai", "-deleteAllItems")
                                    .flag("-aob", "-allowOptionBoxes", {ArgKind::Boolean})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(findMenu(name) != nullptr);
    command::requireInterface("menu");
    if (flags.isQuery())
        return queryMenu(menuNamed(name), flags);
    if (flags.isEdit()) {
        setMenuFlags(menuNamed(name), flags);
        return {};
    }
    auto* window = MainWindow::instance();
    if (flags.isSet("-parent") &&
        command::find(flags.getString("-parent"), ElementKind::window) != window)
        throw ScriptError("menu: only the main window has a menu bar here.");
    if (!name.empty())
        command::requireNewName(name, ElementKind::menu);
    QMenu* menu = window->menuBar()->addMenu(QString());
    elements().add(menu, name.empty() ? elements().uniqueName("menu") : command::text(name),
                   ElementKind::menu, window);
    setMenuFlags(*menu, flags);
    if (flags.isSet("-postMenuCommand")) {
        const QString text = command::text(flags.getString("-postMenuCommand"));
        QObject::connect(menu, &QMenu::aboutToShow, menu,
                         [text] { command::runElementScript(text); });
    }
    elements().currentMenu = menu;
    elements().currentCollection = nullptr;
    return command::path(menu);
}

/// Items of a radio collection are a QActionGroup; without a collection those of one menu are.
QActionGroup* radioGroup(QMenu& menu, const ParsedFlags& flags) {
    if (flags.isSet("-collection"))
        return command::findAs<QActionGroup>(flags.getString("-collection"),
                                             ElementKind::collection);
    if (auto* group = qobject_cast<QActionGroup*>(elements().currentCollection.data()))
        return group;
    const QString name = QStringLiteral("ownRadioItems");
    auto* group = menu.findChild<QActionGroup*>(name, Qt::FindDirectChildrenOnly);
    if (!group) {
        group = new QActionGroup(&menu);
        group->setObjectName(name);
    }
    return group;
}

void setItemFlags(QAction& action, const ParsedFlags& flags) {
    if (flags.isSet("-label"))
        action.setText(command::text(flags.getString("-label")));
    if (flags.isSet("-annotation"))
        action.setStatusTip(command::text(flags.getString("-annotation")));
    if (flags.isSet("-enable"))
        action.setEnabled(flags.getBool("-enable"));
    if (flags.isSet("-command"))
        action.setProperty("command", command::text(flags.getString("-command")));
    for (const char* kind : {"-checkBox", "-radioButton"}) {
        if (flags.isSet(kind) && action.isCheckable())
            action.setChecked(flags.getBool(kind));
    }
    if (flags.isSet("-visible"))
        action.setVisible(flags.getBool("-visible"));
    if (flags.isSet("-data"))
        action.setData(flags.getInt("-data"));
    if (flags.isSet("-dividerLabel"))
        action.setText(command::text(flags.getString("-dividerLabel")));
    if (flags.isSet("-boldFont") || flags.isSet("-italicized")) {
        QFont font = action.font();
        font.setBold(flags.getBool("-boldFont", font.bold()));
        font.setItalic(flags.getBool("-italicized", font.italic()));
        action.setFont(font);
    }
}

Value queryItem(QObject* object, const ParsedFlags& flags) {
    auto* menu = qobject_cast<QMenu*>(object);
    QAction* action = menu ? menu->menuAction() : qobject_cast<QAction*>(object);
    if (!action)
        throw ScriptError("menuItem: not a menu item.");
    if (flags.isSet("-label"))
        return Value(action->text().toStdString());
    if (flags.isSet("-annotation"))
        return Value(action->statusTip().toStdString());
    if (flags.isSet("-enable"))
        return Value(action->isEnabled());
    if (flags.isSet("-command"))
        return Value(action->property("command").toString().toStdString());
    if (flags.isSet("-checkBox") || flags.isSet("-radioButton"))
        return Value(action->isChecked());
    if (flags.isSet("-subMenu"))
        return Value(menu != nullptr);
    if (flags.isSet("-divider"))
        return Value(action->isSeparator());
    if (flags.isSet("-dividerLabel"))
        return Value(action->text().toStdString());
    if (flags.isSet("-visible"))
        return Value(action->isVisible());
    if (flags.isSet("-data"))
        return Value(action->data().toInt());
    if (flags.isSet("-isOptionBox") || flags.isSet("-optionBox"))
        return Value(action->property("optionBox").toBool());
    if (flags.isSet("-isRadioButton"))
        return Value(action->isCheckable() && action->actionGroup());
    if (flags.isSet("-isCheckBox"))
        return Value(action->isCheckable() && !action->actionGroup());
    if (flags.isSet("-boldFont"))
        return Value(action->font().bold());
    if (flags.isSet("-italicized"))
        return Value(action->font().italic());
    throw ScriptError("menuItem: a flag to query is needed.");
}

/// What makes a plain action a radio or check item and runs its script.
QAction* finishItem(QMenu& menu, const ParsedFlags& flags, QAction* action) {
    if (flags.isSet("-radioButton")) {
        action->setCheckable(true);
        radioGroup(menu, flags)->addAction(action);
    } else if (flags.isSet("-checkBox")) {
        action->setCheckable(true);
    }
    QObject::connect(action, &QAction::triggered, action, [action](bool checked) {
        QString text = action->property("command").toString();
        text.replace(QLatin1String("#1"), QString::number(checked ? 1 : 0));
        command::runElementScript(text);
    });
    return action;
}

/// The action that a new item goes before: behind -insertAfter ("" puts it first), else none.
QAction* placeOf(const QMenu& menu, const ParsedFlags& flags) {
    if (!flags.isSet("-insertAfter"))
        return nullptr;
    const QList<QAction*> actions = menu.actions();
    const std::string name = flags.getString("-insertAfter");
    if (name.empty())
        return actions.value(0);
    QObject* item = command::find(name, ElementKind::menuItem);
    auto* sub = qobject_cast<QMenu*>(item);
    const int index = actions.indexOf(sub ? sub->menuAction() : qobject_cast<QAction*>(item));
    if (index < 0)
        throw ScriptError("menuItem: '" + name + "' is not in this menu.");
    return actions.value(index + 1);
}

/// An option box belongs to the item above it, whose label it repeats.
void makeOptionBox(const QMenu& menu, QAction& box) {
    const QList<QAction*> actions = menu.actions();
    const QAction* item = actions.value(actions.indexOf(&box) - 1);
    if (!item || item->isSeparator() || item->property("optionBox").toBool())
        throw ScriptError("menuItem: an option box needs an item before it.");
    box.setProperty("optionBox", true);
    box.setText(item->text() + QString::fromUtf8(" \xE2\x96\xA1"));
}

QObject* makeItem(QMenu& menu, const ParsedFlags& flags) {
    QAction* before = placeOf(menu, flags);
    if (flags.getBool("-subMenu")) {
        auto* sub = new QMenu(&menu);
        menu.insertMenu(before, sub);
        sub->setTearOffEnabled(flags.getBool("-tearOff"));
        return sub;
    }
    auto action = std::make_unique<QAction>(&menu);
    action->setSeparator(flags.getBool("-divider"));
    menu.insertAction(before, action.get());
    if (flags.getBool("-optionBox"))
        makeOptionBox(menu, *action);
    return finishItem(menu, flags, action.release());
}

Value menuItemCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-p", "-parent", {ArgKind::String})
                                    .flag("-l", "-label", {ArgKind::String})
                                    .flag("-c", "-command", {ArgKind::String})
                                    .flag("-ann", "-annotation", {ArgKind::String})
                                    .flag("-sm", "-subMenu", {ArgKind::Boolean})
                                    .flag("-to", "-tearOff", {ArgKind::Boolean})
                                    .flag("-d", "-divider", {ArgKind::Boolean})
                                    .flag("-cb", "-checkBox", {ArgKind::Boolean})
                                    .flag("-rb", "-radioButton", {ArgKind::Boolean})
                                    .flag("-cl", "-collection", {ArgKind::String})
                                    .flag("-en", "-enable", {ArgKind::Boolean})
                                    .flag("-ec", "-echoCommand", {ArgKind::Boolean})
                                    .flag("-ob", "-optionBox", {ArgKind::Boolean})
                                    .flag("-ia", "-insertAfter", {ArgKind::String})
                                    .flag("-dl", "-dividerLabel", {ArgKind::String})
                                    .flag("-vis", "-visible", {ArgKind::Boolean})
                                    .flag("-da", "-data", {ArgKind::Int})
                                    .flag("-bld", "-boldFont", {ArgKind::Boolean})
                                    .flag("-itl", "-italicized", {ArgKind::Boolean})
                                    .flag("-icb", "-isCheckBox")
                                    .flag("-irb", "-isRadioButton")
                                    .flag("-iob", "-isOptionBox")
                                    .flag("-aob", "-allowOptionBoxes", {ArgKind::Boolean})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::menuItem) != nullptr);
    command::requireInterface("menuItem");
    if (flags.isQuery())
        return queryItem(command::find(name, ElementKind::menuItem), flags);
    if (flags.isEdit()) {
        QObject* item = command::find(name, ElementKind::menuItem);
        auto* menu = qobject_cast<QMenu*>(item);
        setItemFlags(menu ? *menu->menuAction() : *qobject_cast<QAction*>(item), flags);
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::menuItem);
    QMenu* menu = menuParent(flags);
    QObject* item = makeItem(*menu, flags);
    elements().add(item, name.empty() ? elements().uniqueName("menuItem") : command::text(name),
                   ElementKind::menuItem, menu);
    auto* sub = qobject_cast<QMenu*>(item);
    setItemFlags(sub ? *sub->menuAction() : *qobject_cast<QAction*>(item), flags);
    if (sub) {
        elements().currentMenu = sub;
        elements().currentCollection = nullptr;
    }
    return command::path(item);
}

Value radioCollectionCommand(const CommandCall& call) {
    static const Flags syntax =
        Flags().flag("-p", "-parent", {ArgKind::String}).flag("-ex", "-exists").objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::collection) != nullptr);
    command::requireInterface("radioMenuItemCollection");
    if (!name.empty())
        command::requireNewName(name, ElementKind::collection);
    QMenu* menu = menuParent(flags);
    auto* group = new QActionGroup(menu);
    elements().add(group,
                   name.empty() ? elements().uniqueName("radioMenuItemCollection")
                                : command::text(name),
                   ElementKind::collection, menu);
    elements().currentCollection = group;
    return command::path(group);
}

Value menuSetCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-cms", "-currentMenuSet", {ArgKind::String})
                                    .flag("-am", "-addMenu", {ArgKind::String})
                                    .flag("-rm", "-removeMenu", {ArgKind::String})
                                    .flag("-ams", "-allMenuSets")
                                    .flag("-ex", "-exists", {ArgKind::String})
                                    .query();
    const ParsedFlags flags = syntax.parse(call);
    command::requireInterface("menuSet");
    MenuSets& sets = MenuSets::instance();
    if (flags.isQuery()) {
        if (flags.isSet("-allMenuSets")) {
            script::Strings names;
            for (const QString& set : sets.names())
                names.push_back(set.toStdString());
            return Value(names);
        }
        return Value(sets.current().toStdString());
    }
    if (flags.isSet("-exists"))
        return Value(sets.names().contains(command::text(flags.getString("-exists"))));
    const std::string set = flags.getString("-currentMenuSet");
    if (flags.isSet("-currentMenuSet") && !sets.setCurrent(command::text(set)))
        throw ScriptError("menuSet: there is no menu set '" + set + "'.");
    if (flags.isSet("-addMenu"))
        sets.add(command::findAs<QMenu>(flags.getString("-addMenu"), ElementKind::menu));
    if (flags.isSet("-removeMenu"))
        sets.remove(command::findAs<QMenu>(flags.getString("-removeMenu"), ElementKind::menu));
    return Value(sets.current().toStdString());
}

} // namespace

void registerMenuCommands() {
    script::registerCommand("menu", menuCommand);
    script::registerCommand("menuItem", menuItemCommand);
    script::registerCommand("radioMenuItemCollection", radioCollectionCommand);
    script::registerCommand("menuSet", menuSetCommand);
    script::defineProcedure(
        "setMenuMode", {script::Type::String}, [](const std::vector<Value>& arguments) {
            MenuSets& sets = MenuSets::instance();
            const std::string previous = sets.current().toStdString();
            const std::string wanted = arguments.at(0).toString();
            if (!wanted.empty() && !sets.setCurrent(command::text(wanted)))
                throw ScriptError("setMenuMode: there is no menu set '" + wanted + "'.");
            return Value(previous);
        });
}

} // namespace host
