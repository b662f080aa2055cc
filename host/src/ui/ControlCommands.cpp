// optionMenu, colorSliderGrp, columnLayout; control and layout for any of them.
#include "ui/ColorSliderGroup.h"
#include "ui/ColumnLayout.h"
#include "ui/CommandSupport.h"
#include "ui/ControlFlags.h"
#include "ui/MainWindow.h"
#include "ui/OptionMenu.h"
#include "ui/UiCommands.h"

#include <QComboBox>
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

[[noreturn]] void nothingAsked(const std::string& commandName) {
    throw ScriptError(commandName + ": a flag to query is needed.");
}

/// Makes, edits or asks a control of one class, as every control command does.
template <class Widget, class Set, class Query>
Value controlCommand(const CommandCall& call, const Flags& syntax, const QString& stem, Set set,
                     Query query, ElementKind kind = ElementKind::Control) {
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(qobject_cast<Widget*>(elements().find(command::text(name), kind)) != nullptr);
    command::requireInterface(call.name);
    if (flags.isQuery()) {
        const auto* widget = command::findAs<Widget>(name, kind);
        if (std::optional<Value> answer = command::queryControl(*widget, flags))
            return *answer;
        return query(*widget, flags);
    }
    if (flags.isEdit()) {
        auto* widget = command::findAs<Widget>(name, kind);
        set(*widget, flags);
        command::setControl(*widget, flags);
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, kind);
    QWidget& parent = command::layoutParent(flags, call.name);
    auto widget = std::make_unique<Widget>();
    set(*widget, flags); // wrong arguments leave nothing behind
    Widget* made = widget.release();
    command::place(*made, parent, name, stem, kind);
    command::setControl(*made, flags);
    return command::path(made);
}

// ------------------------------------------------------------------------------- optionMenu

Flags optionMenuFlags() {
    Flags flags;
    command::addControlFlags(flags);
    return flags.flag("-l", "-label", {ArgKind::String})
        .flag("-cc", "-changeCommand", {ArgKind::String})
        .flag("-acc", "-alwaysCallChangeCommand")
        .flag("-bsp", "-beforeShowPopup", {ArgKind::String})
        .flag("-pmc", "-postMenuCommand", {ArgKind::String})
        .flag("-sl", "-select", {ArgKind::Int})
        .flag("-v", "-value", {ArgKind::String})
        .flag("-ni", "-numberOfItems")
        .flag("-ill", "-itemListLong")
        .flag("-ils", "-itemListShort")
        .flag("-dai", "-deleteAllItems")
        .flag("-mvi", "-maxVisibleItems", {ArgKind::Int})
        .query()
        .edit()
        .objects(0, 1);
}

void setOptionMenu(OptionMenu& option, const ParsedFlags& flags) {
    if (flags.isSet("-deleteAllItems")) {
        for (QObject* item : elements().childrenOf(&option))
            command::destroy(item);
    }
    if (flags.isSet("-select") && !option.setCurrent(flags.getInt("-select")))
        throw ScriptError("Item not found: " + std::to_string(flags.getInt("-select")));
    if (flags.isSet("-value") && !option.setCurrent(command::text(flags.getString("-value"))))
        throw ScriptError("Item not found: " + flags.getString("-value"));
    if (flags.isSet("-label"))
        option.setLabel(command::text(flags.getString("-label")));
    if (flags.isSet("-changeCommand"))
        option.changeCommand = command::text(flags.getString("-changeCommand"));
    for (const char* flag : {"-beforeShowPopup", "-postMenuCommand"}) {
        if (flags.isSet(flag))
            option.postMenuCommand = command::text(flags.getString(flag));
    }
    if (flags.isSet("-alwaysCallChangeCommand"))
        option.alwaysCall = true;
    if (flags.isSet("-maxVisibleItems"))
        option.box().setMaxVisibleItems(std::max(flags.getInt("-maxVisibleItems"), 1));
}

Value queryOptionMenu(const OptionMenu& option, const ParsedFlags& flags) {
    if (flags.isSet("-select"))
        return Value(option.current());
    if (flags.isSet("-value"))
        return Value(option.value().toStdString());
    if (flags.isSet("-label"))
        return Value(option.label().toStdString());
    const QList<QObject*> items = elements().childrenOf(&option);
    if (flags.isSet("-numberOfItems"))
        return Value(int(items.size()));
    if (flags.isSet("-alwaysCallChangeCommand"))
        return Value(option.alwaysCall);
    if (!flags.isSet("-itemListLong") && !flags.isSet("-itemListShort"))
        nothingAsked("optionMenu");
    script::Strings names;
    for (const QObject* item : items)
        names.push_back(
            (flags.isSet("-itemListLong") ? elements().pathOf(item) : elements().nameOf(item))
                .toStdString());
    return Value(names);
}

Value optionMenuCommand(const CommandCall& call) {
    static const Flags syntax = optionMenuFlags();
    const Value result = controlCommand<OptionMenu>(call, syntax, QStringLiteral("optionMenu"),
                                                    setOptionMenu, queryOptionMenu);
    const ParsedFlags flags = syntax.parse(call);
    if (flags.isCreate() && !flags.isSet("-exists")) { // items that follow go here
        elements().currentMenu =
            elements().find(command::text(result.toString()), ElementKind::Control);
        elements().currentCollection = nullptr;
    }
    return result;
}

// --------------------------------------------------------------------------- colorSliderGrp

Flags colorSliderFlags() {
    Flags flags;
    command::addControlFlags(flags);
    return flags.flag("-l", "-label", {ArgKind::String})
        .flag("-rgb", "-rgbValue", {ArgKind::Float, ArgKind::Float, ArgKind::Float})
        .flag("-hsv", "-hsvValue", {ArgKind::Float, ArgKind::Float, ArgKind::Float})
        .flag("-cc", "-changeCommand", {ArgKind::String})
        .flag("-dc", "-dragCommand", {ArgKind::String})
        .flag("-cw", "-columnWidth", {ArgKind::Int, ArgKind::Int})
        .multiUse("-cw")
        .flag("-cw3", "-columnWidth3", {ArgKind::Int, ArgKind::Int, ArgKind::Int})
        .query()
        .edit()
        .objects(0, 1);
}

void setColorSlider(ColorSliderGroup& group, const ParsedFlags& flags) {
    const auto components = [&flags](const char* flag) {
        return ColorSliderGroup::Components{flags.getFloat(flag, 0, 0), flags.getFloat(flag, 0, 1),
                                            flags.getFloat(flag, 0, 2)};
    };
    const auto setWidth = [&group](int column, int width) {
        if (!group.setColumnWidth(column, width))
            throw ScriptError("colorSliderGrp: there is no column " + std::to_string(column) +
                              " of width " + std::to_string(width) + ".");
    };
    for (int use = 0; use < flags.uses("-columnWidth"); ++use)
        setWidth(flags.getInt("-columnWidth", 0, 0, use), flags.getInt("-columnWidth", 0, 1, use));
    for (int column = 1; flags.isSet("-columnWidth3") && column <= 3; ++column)
        setWidth(column, flags.getInt("-columnWidth3", 0, column - 1));
    if (flags.isSet("-rgbValue"))
        group.setRgb(components("-rgbValue"));
    if (flags.isSet("-hsvValue"))
        group.setHsv(components("-hsvValue"));
    if (flags.isSet("-label"))
        group.setLabel(command::text(flags.getString("-label")));
    if (flags.isSet("-changeCommand"))
        group.changeCommand = command::text(flags.getString("-changeCommand"));
    if (flags.isSet("-dragCommand"))
        group.dragCommand = command::text(flags.getString("-dragCommand"));
}

Value queryColorSlider(const ColorSliderGroup& group, const ParsedFlags& flags) {
    if (flags.isSet("-label"))
        return Value(group.label().toStdString());
    if (!flags.isSet("-rgbValue") && !flags.isSet("-hsvValue"))
        nothingAsked("colorSliderGrp");
    const ColorSliderGroup::Components values =
        flags.isSet("-rgbValue") ? group.rgb() : group.hsv();
    return Value(script::Floats(values.begin(), values.end()));
}

Value colorSliderCommand(const CommandCall& call) {
    static const Flags syntax = colorSliderFlags();
    return controlCommand<ColorSliderGroup>(call, syntax, QStringLiteral("colorSliderGrp"),
                                            setColorSlider, queryColorSlider);
}

// ------------------------------------------------------------------------------ columnLayout

Flags columnLayoutFlags() {
    Flags flags;
    command::addControlFlags(flags);
    return flags.flag("-adj", "-adjustableColumn", {ArgKind::Boolean})
        .flag("-rs", "-rowSpacing", {ArgKind::Int})
        .flag("-nch", "-numberOfChildren")
        .flag("-ca", "-childArray")
        .query()
        .edit()
        .objects(0, 1);
}

void setColumnLayout(ColumnLayout& column, const ParsedFlags& flags) {
    if (flags.isSet("-rowSpacing"))
        column.layout()->setSpacing(std::max(flags.getInt("-rowSpacing"), 0));
    if (flags.isSet("-adjustableColumn"))
        column.layout()->setAlignment(
            flags.getBool("-adjustableColumn") ? Qt::AlignTop : Qt::AlignTop | Qt::AlignLeft);
}

Value queryChildren(const QWidget& layout, const ParsedFlags& flags) {
    script::Strings names;
    for (const QObject* child : elements().childrenOf(&layout))
        names.push_back(elements().nameOf(child).toStdString());
    return flags.isSet("-numberOfChildren") ? Value(int(names.size())) : Value(names);
}

Value queryColumnLayout(const ColumnLayout& column, const ParsedFlags& flags) {
    if (flags.isSet("-numberOfChildren") || flags.isSet("-childArray"))
        return queryChildren(column, flags);
    if (flags.isSet("-rowSpacing"))
        return Value(column.layout()->spacing());
    nothingAsked("columnLayout");
}

Value columnLayoutCommand(const CommandCall& call) {
    static const Flags syntax = columnLayoutFlags();
    const Value result =
        controlCommand<ColumnLayout>(call, syntax, QStringLiteral("columnLayout"), setColumnLayout,
                                     queryColumnLayout, ElementKind::Layout);
    const ParsedFlags flags = syntax.parse(call);
    if (flags.isCreate() && !flags.isSet("-exists"))
        elements().currentLayout = qobject_cast<QWidget*>(
            elements().find(command::text(result.toString()), ElementKind::Layout));
    return result;
}

// -------------------------------------------------------------------------- control, layout

/// Questions about any control or layout.
Value elementCommand(const CommandCall& call, ElementKind kind) {
    static const Flags syntax = [] {
        Flags flags;
        command::addControlFlags(flags);
        return flags.flag("-nch", "-numberOfChildren")
            .flag("-ca", "-childArray")
            .query()
            .edit()
            .objects(1, 1);
    }();
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), kind) != nullptr);
    auto* widget = command::findAs<QWidget>(name, kind);
    if (!flags.isQuery()) {
        command::setControl(*widget, flags);
        return {};
    }
    if (std::optional<Value> answer = command::queryControl(*widget, flags))
        return *answer;
    if (flags.isSet("-numberOfChildren") || flags.isSet("-childArray"))
        return queryChildren(*widget, flags);
    nothingAsked(call.name);
}

} // namespace

void registerControlCommands() {
    script::registerCommand("optionMenu", optionMenuCommand);
    script::registerCommand("colorSliderGrp", colorSliderCommand);
    script::registerCommand("columnLayout", columnLayoutCommand);
    script::registerCommand("control", [](const CommandCall& call) {
        return elementCommand(call, ElementKind::Control);
    });
    script::registerCommand("layout", [](const CommandCall& call) {
        return elementCommand(call, ElementKind::Layout);
    });
}

} // namespace host
