// menuItem, radioMenuItemCollection.
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/Elements.h"
#include "ui/MenuSupport.h"
#include "ui/UiCommands.h"

#include <QAction>
#include <QActionGroup>
#include <QFont>
#include <QIcon>
#include <QMenu>

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

/// Flags that only keep a text for whoever asks.
const char* const keptTexts[] = {
    "-image",   "-imageOverlayLabel", "-optionBoxIcon",   "-docTag",
    "-version", "-radialPosition",    "-dragMenuCommand", "-dragDoubleClickCommand"};

QAction& actionOf(QObject* item) {
    auto* menu = qobject_cast<QMenu*>(item);
    return menu ? *menu->menuAction() : *qobject_cast<QAction*>(item);
}

/// Items of a radio collection are a QActionGroup; without a collection those of one menu are.
QActionGroup* radioGroup(QMenu& menu, const ParsedFlags& flags) {
    if (flags.isSet("-collection"))
        return command::findAs<QActionGroup>(flags.getString("-collection"),
                                             ElementKind::Collection);
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
    for (const char* flag : keptTexts) {
        if (flags.isSet(flag))
            action.setProperty(flag + 1, command::text(flags.getString(flag)));
    }
    for (const char* flag : {"-echoCommand", "-longDivider", "-enableCommandRepeat"}) {
        if (flags.isSet(flag))
            action.setProperty(flag + 1, flags.getBool(flag));
    }
    if (flags.isSet("-image"))
        action.setIcon(QIcon(command::text(flags.getString("-image"))));
    if (flags.isSet("-boldFont") || flags.isSet("-italicized")) {
        QFont font = action.font();
        font.setBold(flags.getBool("-boldFont", font.bold()));
        font.setItalic(flags.getBool("-italicized", font.italic()));
        action.setFont(font);
    }
}

Value queryKind(const QMenu* menu, const QAction& action, const ParsedFlags& flags) {
    if (flags.isSet("-subMenu"))
        return Value(menu != nullptr);
    if (flags.isSet("-tearOff"))
        return Value(menu && menu->isTearOffEnabled());
    if (flags.isSet("-divider"))
        return Value(action.isSeparator());
    if (flags.isSet("-isOptionBox") || flags.isSet("-optionBox"))
        return Value(action.property("optionBox").toBool());
    if (flags.isSet("-isRadioButton"))
        return Value(action.isCheckable() && action.actionGroup());
    if (flags.isSet("-isCheckBox"))
        return Value(action.isCheckable() && !action.actionGroup());
    if (flags.isSet("-allowOptionBoxes"))
        return Value(true);
    if (flags.isSet("-sourceType"))
        return Value("mel");
    throw ScriptError("menuItem: a flag to query is needed.");
}

Value queryItem(QObject* object, const ParsedFlags& flags) {
    const auto* menu = qobject_cast<QMenu*>(object);
    const QAction* action = &actionOf(object);
    for (const char* flag : keptTexts) {
        if (flags.isSet(flag))
            return Value(action->property(flag + 1).toString().toStdString());
    }
    if (flags.isSet("-echoCommand"))
        return Value(action->property("echoCommand").toBool());
    for (const char* flag : {"-longDivider", "-enableCommandRepeat"}) {
        const QVariant kept = action->property(flag + 1);
        if (flags.isSet(flag))
            return Value(!kept.isValid() || kept.toBool());
    }
    if (flags.isSet("-collection"))
        return action->actionGroup() ? command::path(action->actionGroup()) : Value("");
    if (flags.isSet("-postMenuCommand"))
        return Value(object->property("postMenuCommand").toString().toStdString());
    if (flags.isSet("-postMenuCommandOnce"))
        return Value(object->property("postMenuCommandOnce").toBool());
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
    if (flags.isSet("-dividerLabel"))
        return Value(action->text().toStdString());
    if (flags.isSet("-visible"))
        return Value(action->isVisible());
    if (flags.isSet("-data"))
        return Value(action->data().toInt());
    if (flags.isSet("-boldFont"))
        return Value(action->font().bold());
    if (flags.isSet("-italicized"))
        return Value(action->font().italic());
    return queryKind(menu, *action, flags);
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
        command::runElementScript(text, action->property("echoCommand").toBool());
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
    const int index = actions.indexOf(&actionOf(command::find(name, ElementKind::MenuItem)));
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

const Flags& itemFlags() {
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
                                    .flag("-i", "-image", {ArgKind::String})
                                    .flag("-iol", "-imageOverlayLabel", {ArgKind::String})
                                    .flag("-obi", "-optionBoxIcon", {ArgKind::String})
                                    .flag("-dtg", "-docTag", {ArgKind::String})
                                    .flag("-ver", "-version", {ArgKind::String})
                                    .flag("-rp", "-radialPosition", {ArgKind::String})
                                    .flag("-dmc", "-dragMenuCommand", {ArgKind::String})
                                    .flag("-ddc", "-dragDoubleClickCommand", {ArgKind::String})
                                    .flag("-ld", "-longDivider", {ArgKind::Boolean})
                                    .flag("-ecr", "-enableCommandRepeat", {ArgKind::Boolean})
                                    .flag("-stp", "-sourceType", {ArgKind::String})
                                    .flag("-pmc", "-postMenuCommand", {ArgKind::String})
                                    .flag("-pmo", "-postMenuCommandOnce", {ArgKind::Boolean})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    return syntax;
}

Value menuItemCommand(const CommandCall& call) {
    const ParsedFlags flags = itemFlags().parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::MenuItem) != nullptr);
    command::requireInterface("menuItem");
    if (!flags.isQuery() && flags.getString("-sourceType", "mel") != "mel")
        throw ScriptError("menuItem: commands are in mel here, not in '" +
                          flags.getString("-sourceType") + "'.");
    if (flags.isQuery())
        return queryItem(command::find(name, ElementKind::MenuItem), flags);
    if (flags.isEdit()) {
        QObject* item = command::find(name, ElementKind::MenuItem);
        setItemFlags(actionOf(item), flags);
        if (auto* menu = qobject_cast<QMenu*>(item))
            command::setPostCommand(*menu, flags);
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::MenuItem);
    QMenu* menu = &command::menuParent(flags, "menuItem");
    QObject* item = makeItem(*menu, flags);
    elements().add(item, name.empty() ? elements().uniqueName("menuItem") : command::text(name),
                   ElementKind::MenuItem, command::ownerOf(*menu));
    setItemFlags(actionOf(item), flags);
    if (auto* sub = qobject_cast<QMenu*>(item)) {
        command::setPostCommand(*sub, flags);
        elements().currentMenu = sub;
        elements().currentCollection = nullptr;
    }
    return command::path(item);
}

Value radioCollectionCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-p", "-parent", {ArgKind::String})
                                    .flag("-gl", "-global", {ArgKind::Boolean})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::Collection) != nullptr);
    command::requireInterface("radioMenuItemCollection");
    if (!flags.isCreate()) {
        const auto* group = command::findAs<QActionGroup>(name, ElementKind::Collection);
        if (flags.isEdit())
            return {}; // it has nothing that could be edited
        if (flags.isSet("-global"))
            return Value(!group->parent());
        throw ScriptError("radioMenuItemCollection: a flag to query is needed.");
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::Collection);
    QMenu* menu =
        flags.getBool("-global") ? nullptr : &command::menuParent(flags, "radioMenuItemCollection");
    auto* group = new QActionGroup(menu);
    elements().add(group,
                   name.empty() ? elements().uniqueName("radioMenuItemCollection")
                                : command::text(name),
                   ElementKind::Collection, menu ? command::ownerOf(*menu) : nullptr);
    elements().currentCollection = group;
    return command::path(group);
}

} // namespace

void registerMenuItemCommands() {
    script::registerCommand("menuItem", menuItemCommand);
    script::registerCommand("radioMenuItemCollection", radioCollectionCommand);
}

} // namespace host
