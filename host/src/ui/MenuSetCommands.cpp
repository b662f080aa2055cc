// menuSet, setMenuMode.
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/MenuSets.h"
#include "ui/UiCommands.h"

#include <QMenu>

#include <climits>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

const Flags& menuSetFlags() {
    static const Flags syntax =
        Flags()
            .flag("-cms", "-currentMenuSet", {ArgKind::String})
            .flag("-am", "-addMenu", {ArgKind::String})
            .flag("-im", "-insertMenu", {ArgKind::String, ArgKind::Unsigned})
            .flag("-mm", "-moveMenu", {ArgKind::String, ArgKind::Unsigned})
            .flag("-rm", "-removeMenu", {ArgKind::String})
            .flag("-ma", "-menuArray")
            .flag("-nm", "-numberOfMenus")
            .flag("-ams", "-allMenuSets")
            .flag("-nms", "-numberOfMenuSets")
            .flag("-mms", "-moveMenuSet", {ArgKind::String, ArgKind::Unsigned})
            .flag("-rms", "-removeMenuSet", {ArgKind::String})
            .flag("-l", "-label", {ArgKind::String})
            .flag("-p", "-permanent", {ArgKind::Boolean})
            .flag("-hbv", "-hotBoxVisible", {ArgKind::Boolean})
            .flag("-ex", "-exists", {ArgKind::String})
            .queryWithArguments("-ex")
            .query()
            .edit()
            .objects(0, 1);
    return syntax;
}

MenuSets& sets() {
    return MenuSets::instance();
}

QString setNamed(const std::string& name) {
    if (!sets().contains(command::text(name)))
        throw ScriptError("menuSet: there is no menu set '" + name + "'.");
    return command::text(name);
}

QMenu* menuOf(const std::string& name) {
    return command::findAs<QMenu>(name, ElementKind::Menu);
}

Value queryMenuSet(const QString& set, const ParsedFlags& flags) {
    const auto texts = [](const QStringList& list) {
        script::Strings result;
        for (const QString& text : list)
            result.push_back(text.toStdString());
        return Value(result);
    };
    if (flags.isSet("-exists"))
        return Value(sets().contains(command::text(flags.getString("-exists"))));
    if (flags.isSet("-allMenuSets"))
        return texts(sets().names());
    if (flags.isSet("-numberOfMenuSets"))
        return Value(int(sets().names().size()));
    if (flags.isSet("-label"))
        return Value(sets().labelOf(set).toStdString());
    if (flags.isSet("-permanent"))
        return Value(sets().isPermanent(set));
    if (flags.isSet("-hotBoxVisible"))
        return Value(sets().inHotBox(set));
    if (flags.isSet("-numberOfMenus"))
        return Value(int(sets().menusOf(set).size()));
    if (flags.isSet("-menuArray")) {
        QStringList names;
        for (const QMenu* menu : sets().menusOf(set))
            names.append(Elements::instance().nameOf(menu));
        return texts(names);
    }
    return Value(sets().current().toStdString());
}

void changeMenus(const QString& set, const ParsedFlags& flags) {
    if (flags.isSet("-addMenu"))
        sets().insert(set, menuOf(flags.getString("-addMenu")), INT_MAX);
    if (flags.isSet("-insertMenu"))
        sets().insert(set, menuOf(flags.getString("-insertMenu")),
                      flags.getInt("-insertMenu", 0, 1));
    if (flags.isSet("-moveMenu")) {
        QMenu* menu = menuOf(flags.getString("-moveMenu"));
        if (!sets().menusOf(set).contains(menu))
            throw ScriptError("menuSet: '" + flags.getString("-moveMenu") +
                              "' is not in the menu set '" + set.toStdString() + "'.");
        sets().insert(set, menu, flags.getInt("-moveMenu", 0, 1));
    }
    if (flags.isSet("-removeMenu") && !sets().remove(set, menuOf(flags.getString("-removeMenu"))))
        throw ScriptError("menuSet: '" + flags.getString("-removeMenu") +
                          "' is not in the menu set '" + set.toStdString() + "'.");
}

Value menuSetCommand(const CommandCall& call) {
    const ParsedFlags flags = menuSetFlags().parse(call);
    command::requireInterface("menuSet");
    const std::string name = flags.object();
    const bool makes = flags.isCreate() && !name.empty() && !sets().contains(command::text(name));
    if (flags.isCreate() && flags.isSet("-exists"))
        return queryMenuSet({}, flags);
    if (makes)
        sets().make(command::text(name),
                    command::text(flags.isSet("-label") ? flags.getString("-label") : name));
    if (flags.isSet("-currentMenuSet") && !flags.isQuery())
        sets().setCurrent(setNamed(flags.getString("-currentMenuSet")));
    // Without a name all is about the current set.
    const QString set = name.empty() ? sets().current() : setNamed(name);
    if (flags.isQuery())
        return queryMenuSet(set, flags);
    if (flags.isSet("-label"))
        sets().setLabel(set, command::text(flags.getString("-label")));
    if (flags.isSet("-permanent"))
        sets().setPermanent(set, flags.getBool("-permanent"));
    if (flags.isSet("-hotBoxVisible"))
        sets().setInHotBox(set, flags.getBool("-hotBoxVisible"));
    changeMenus(set, flags);
    if (flags.isSet("-moveMenuSet"))
        sets().moveSet(setNamed(flags.getString("-moveMenuSet")),
                       flags.getInt("-moveMenuSet", 0, 1));
    if (flags.isSet("-removeMenuSet") &&
        !sets().removeSet(setNamed(flags.getString("-removeMenuSet"))))
        throw ScriptError("menuSet: the menu set '" + flags.getString("-removeMenuSet") +
                          "' is permanent.");
    return Value((makes ? set : sets().current()).toStdString());
}

/// With a set makes it current; returns the one that was.
Value setMenuModeCommand(const CommandCall& call) {
    static const Flags syntax = Flags().objects(0, 1);
    const std::string wanted = syntax.parse(call).object();
    command::requireInterface("setMenuMode");
    const std::string previous = sets().current().toStdString();
    if (!wanted.empty() && !sets().setCurrent(command::text(wanted)))
        throw ScriptError("setMenuMode: there is no menu set '" + wanted + "'.");
    return Value(previous);
}

} // namespace

void registerMenuSetCommands() {
    script::registerCommand("menuSet", menuSetCommand);
    script::registerCommand("setMenuMode", setMenuModeCommand);
}

} // namespace host
