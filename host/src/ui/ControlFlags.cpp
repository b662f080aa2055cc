#include "ui/ControlFlags.h"

#include "ui/CommandSupport.h"

#include <QLayout>
#include <QSplitter>
#include <QWidget>

namespace host::command {

using script::ArgKind;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

void addControlFlags(Flags& flags) {
    flags.flag("-ann", "-annotation", {ArgKind::String})
        .flag("-en", "-enable", {ArgKind::Boolean})
        .flag("-vis", "-visible", {ArgKind::Boolean})
        .flag("-m", "-manage", {ArgKind::Boolean})
        .flag("-w", "-width", {ArgKind::Int})
        .flag("-h", "-height", {ArgKind::Int})
        .flag("-p", "-parent", {ArgKind::String})
        .flag("-fpn", "-fullPathName")
        .flag("-io", "-isObscured")
        .flag("-ex", "-exists");
}

std::optional<Value> queryControl(const QWidget& widget, const ParsedFlags& flags) {
    if (flags.isSet("-annotation"))
        return Value(widget.toolTip().toStdString());
    if (flags.isSet("-enable"))
        return Value(widget.isEnabled());
    if (flags.isSet("-visible") || flags.isSet("-manage"))
        return Value(!widget.isHidden());
    if (flags.isSet("-isObscured"))
        return Value(!widget.isVisible() || widget.visibleRegion().isEmpty());
    if (flags.isSet("-width"))
        return Value(widget.width());
    if (flags.isSet("-height"))
        return Value(widget.height());
    if (flags.isSet("-fullPathName"))
        return path(&widget);
    if (flags.isSet("-parent")) {
        const QString full = Elements::instance().pathOf(&widget);
        const auto last = static_cast<int>(full.lastIndexOf('|'));
        return Value(full.left(std::max(last, 0)).toStdString());
    }
    return std::nullopt;
}

void setControl(QWidget& widget, const ParsedFlags& flags) {
    if (flags.isSet("-annotation"))
        widget.setToolTip(text(flags.getString("-annotation")));
    if (flags.isSet("-enable"))
        widget.setEnabled(flags.getBool("-enable"));
    for (const char* flag : {"-visible", "-manage"}) {
        if (flags.isSet(flag))
            widget.setVisible(flags.getBool(flag));
    }
    for (const char* flag : {"-width", "-height"}) {
        if (flags.isSet(flag) && flags.getInt(flag) < 0)
            throw ScriptError("The value " + std::to_string(flags.getInt(flag)) + " of " + flag +
                              " is less than 0.");
    }
    if (flags.isSet("-width"))
        widget.setFixedWidth(std::min(flags.getInt("-width"), QWIDGETSIZE_MAX));
    if (flags.isSet("-height"))
        widget.setFixedHeight(std::min(flags.getInt("-height"), QWIDGETSIZE_MAX));
}

QWidget& layoutParent(const ParsedFlags& flags, const std::string& commandName) {
    Elements& elements = Elements::instance();
    if (flags.isSet("-parent")) {
        const std::string name = flags.getString("-parent");
        for (const ElementKind kind : {ElementKind::Layout, ElementKind::Window}) {
            if (auto* widget = qobject_cast<QWidget*>(elements.find(text(name), kind)))
                return *widget;
        }
        throw ScriptError("Object '" + name + "' not found.");
    }
    if (!elements.currentLayout)
        throw ScriptError(commandName + ": there is no current layout to put it in.");
    return *elements.currentLayout;
}

void place(QWidget& widget, QWidget& parent, const std::string& name, const QString& stem,
           ElementKind kind) {
    Elements& elements = Elements::instance();
    if (auto* splitter = qobject_cast<QSplitter*>(&parent))
        splitter->addWidget(&widget);
    else if (parent.layout())
        parent.layout()->addWidget(&widget);
    else
        widget.setParent(&parent);
    elements.add(&widget, name.empty() ? elements.uniqueName(stem) : text(name), kind, &parent);
    widget.setVisible(true);
}

QString withValue(QString script, const QString& value) {
    return script.replace(QLatin1String("#1"), value);
}

} // namespace host::command
