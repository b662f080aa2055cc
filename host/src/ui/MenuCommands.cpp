// menu, popupMenu.
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/Elements.h"
#include "ui/MainWindow.h"
#include "ui/MenuSupport.h"
#include "ui/ModelPanel.h"
#include "ui/OptionMenu.h"
#include "ui/UiCommands.h"

#include <QLayout>
#include <QMenuBar>
#include <QMouseEvent>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

namespace {

Elements& elements() {
    return Elements::instance();
}

QMenu* asMenu(QObject* object) {
    auto* option = qobject_cast<OptionMenu*>(object);
    return option ? &option->menu() : qobject_cast<QMenu*>(object);
}

} // namespace

namespace command {

QMenu* findMenu(const std::string& name) {
    for (const ElementKind kind :
         {ElementKind::Menu, ElementKind::MenuItem, ElementKind::Control}) {
        if (QMenu* menu = asMenu(elements().find(text(name), kind)))
            return menu;
    }
    return nullptr;
}

QMenu& menuNamed(const std::string& name) {
    if (QMenu* menu = findMenu(name))
        return *menu;
    throw ScriptError("Object '" + name + "' not found.");
}

QMenu& menuParent(const ParsedFlags& flags, const std::string& commandName) {
    if (flags.isSet("-parent"))
        return menuNamed(flags.getString("-parent"));
    if (QMenu* menu = asMenu(elements().currentMenu))
        return *menu;
    throw ScriptError(commandName + ": there is no current menu to put it in.");
}

QObject* ownerOf(QMenu& menu) {
    if (elements().contains(&menu))
        return &menu;
    return qobject_cast<OptionMenu*>(menu.parent());
}

void setPostCommand(QMenu& menu, const ParsedFlags& flags) {
    if (flags.isSet("-postMenuCommandOnce"))
        menu.setProperty("postMenuCommandOnce", flags.getBool("-postMenuCommandOnce"));
    if (!flags.isSet("-postMenuCommand"))
        return;
    const bool first = !menu.property("postMenuCommand").isValid();
    menu.setProperty("postMenuCommand", text(flags.getString("-postMenuCommand")));
    if (!first)
        return;
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] {
        const QString script = menu.property("postMenuCommand").toString();
        if (menu.property("postMenuCommandOnce").toBool())
            menu.setProperty("postMenuCommand", QString());
        runElementScript(script);
    });
}

} // namespace command

namespace {

void setMenuFlags(QMenu& menu, const ParsedFlags& flags) {
    if (flags.isSet("-label"))
        menu.setTitle(command::text(flags.getString("-label")));
    if (flags.isSet("-tearOff"))
        menu.setTearOffEnabled(flags.getBool("-tearOff"));
    if (flags.isSet("-enable"))
        menu.setEnabled(flags.getBool("-enable"));
    if (flags.isSet("-visible"))
        menu.menuAction()->setVisible(flags.getBool("-visible"));
    if (flags.isSet("-docTag"))
        menu.setProperty("docTag", command::text(flags.getString("-docTag")));
    command::setPostCommand(menu, flags);
}

void deleteItems(QMenu& menu) {
    for (QObject* item : elements().childrenOf(command::ownerOf(menu)))
        command::destroy(item);
}

/// The items and collections of a menu; scripts ask for the items.
QList<QObject*> itemsOf(QMenu& menu) {
    QList<QObject*> items;
    for (QObject* child : elements().childrenOf(command::ownerOf(menu))) {
        if (elements().kindOf(child) == ElementKind::MenuItem)
            items.append(child);
    }
    return items;
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
    if (flags.isSet("-allowOptionBoxes"))
        return Value(true);
    for (const char* flag : {"-postMenuCommand", "-docTag"}) {
        if (flags.isSet(flag))
            return Value(menu.property(flag + 1).toString().toStdString());
    }
    if (flags.isSet("-postMenuCommandOnce"))
        return Value(menu.property("postMenuCommandOnce").toBool());
    const QList<QObject*> items = itemsOf(menu);
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

Flags commonFlags() {
    return Flags()
        .flag("-p", "-parent", {ArgKind::String})
        .flag("-pmc", "-postMenuCommand", {ArgKind::String})
        .flag("-pmo", "-postMenuCommandOnce", {ArgKind::Boolean})
        .flag("-ni", "-numberOfItems")
        .flag("-ia", "-itemArray")
        .flag("-dai", "-deleteAllItems")
        .flag("-aob", "-allowOptionBoxes", {ArgKind::Boolean})
        .flag("-l", "-label", {ArgKind::String})
        .flag("-to", "-tearOff", {ArgKind::Boolean})
        .flag("-en", "-enable", {ArgKind::Boolean})
        .flag("-vis", "-visible", {ArgKind::Boolean})
        .flag("-dtg", "-docTag", {ArgKind::String})
        .flag("-ex", "-exists")
        .query()
        .edit()
        .objects(0, 1);
}

/// Existence, queries and edits of menus that are there; nothing when one is to be made.
std::optional<Value> existingMenu(const ParsedFlags& flags, const std::string& commandName) {
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(command::findMenu(name) != nullptr);
    command::requireInterface(commandName);
    if (flags.isQuery())
        return queryMenu(command::menuNamed(name), flags);
    if (flags.isEdit()) {
        QMenu& menu = command::menuNamed(name);
        if (flags.isSet("-deleteAllItems"))
            deleteItems(menu);
        setMenuFlags(menu, flags);
        return Value();
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::Menu);
    return std::nullopt;
}

Value finishMenu(QMenu& menu, QObject* parent, const ParsedFlags& flags, const char* stem) {
    const std::string name = flags.object();
    elements().add(&menu, name.empty() ? elements().uniqueName(stem) : command::text(name),
                   ElementKind::Menu, parent);
    setMenuFlags(menu, flags);
    elements().currentMenu = &menu;
    elements().currentCollection = nullptr;
    return command::path(&menu);
}

/// The menu bar of a window: the main window has one, others get one with their first menu.
QMenuBar& menuBarOf(QWidget& window) {
    if (auto* main = qobject_cast<QMainWindow*>(&window))
        return *main->menuBar();
    QLayout* layout = window.layout();
    if (!layout)
        throw ScriptError("menu: the window has no menu bar.");
    if (!layout->menuBar()) {
        auto* bar = new QMenuBar(&window);
        bar->setNativeMenuBar(false);
        layout->setMenuBar(bar);
    }
    return *qobject_cast<QMenuBar*>(layout->menuBar());
}

QWidget& menuWindow(const ParsedFlags& flags) {
    if (flags.isSet("-parent"))
        return *command::findAs<QWidget>(flags.getString("-parent"), ElementKind::Window);
    // Menus of a window with a menu bar come right after the window.
    QWidget* current = elements().currentLayout;
    if (current && current->window()->layout() && current->window()->layout()->menuBar())
        return *current->window();
    return *MainWindow::instance();
}

Value menuCommand(const CommandCall& call) {
    static const Flags syntax = commonFlags()
                                    .flag("-hm", "-helpMenu", {ArgKind::Boolean})
                                    .flag("-mn", "-mnemonic", {ArgKind::String})
                                    .flag("-fi", "-familyImage", {ArgKind::String})
                                    .flag("-ver", "-version", {ArgKind::String});
    const ParsedFlags flags = syntax.parse(call);
    if (std::optional<Value> done = existingMenu(flags, "menu"))
        return *done;
    QWidget& window = menuWindow(flags);
    QMenu* menu = menuBarOf(window).addMenu(QString());
    const Value result = finishMenu(*menu, &window, flags, "menu");
    if (!flags.isSet("-label"))
        menu->setTitle(elements().nameOf(menu));
    return result;
}

/// Opens a menu when its button is pressed over a control.
class PopupOpener : public QObject {
public:
    PopupOpener(QMenu& menu, QWidget& target, Qt::MouseButton button,
                Qt::KeyboardModifiers modifiers)
        : QObject(&menu), menu_(menu), button_(button), modifiers_(modifiers) {
        target.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        // The second press of two quick ones is a double click.
        if (event->type() != QEvent::MouseButtonPress &&
            event->type() != QEvent::MouseButtonDblClick)
            return QObject::eventFilter(watched, event);
        auto* press = static_cast<QMouseEvent*>(event);
        const Qt::KeyboardModifiers relevant =
            press->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
        if (press->button() != button_ || relevant != modifiers_)
            return QObject::eventFilter(watched, event);
        auto* widget = static_cast<QWidget*>(watched);
        menu_.popup(widget->mapToGlobal(press->pos()));
        return true;
    }

private:
    QMenu& menu_;
    Qt::MouseButton button_;
    Qt::KeyboardModifiers modifiers_;
};

Value popupMenuCommand(const CommandCall& call) {
    static const Flags syntax = commonFlags()
                                    .flag("-b", "-button", {ArgKind::Int})
                                    .flag("-sh", "-shiftModifier", {ArgKind::Boolean})
                                    .flag("-ctl", "-ctrlModifier", {ArgKind::Boolean})
                                    .flag("-alt", "-altModifier", {ArgKind::Boolean});
    const ParsedFlags flags = syntax.parse(call);
    if (std::optional<Value> done = existingMenu(flags, "popupMenu"))
        return *done;
    QWidget* parent = elements().currentLayout;
    if (flags.isSet("-parent"))
        parent = command::findAs<QWidget>(flags.getString("-parent"), ElementKind::Control);
    if (!parent)
        throw ScriptError("popupMenu: there is no control to attach it to.");
    const int number = flags.getInt("-button", 3);
    if (number < 1 || number > 3)
        throw ScriptError("popupMenu: there is no mouse button " + std::to_string(number) + ".");
    const Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton};
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    modifiers.setFlag(Qt::ShiftModifier, flags.getBool("-shiftModifier"));
    modifiers.setFlag(Qt::ControlModifier, flags.getBool("-ctrlModifier"));
    modifiers.setFlag(Qt::AltModifier, flags.getBool("-altModifier"));
    auto* menu = new QMenu(parent);
    auto* panel = qobject_cast<ModelPanel*>(parent);
    new PopupOpener(*menu, panel ? panel->viewWidget() : *parent, buttons[number - 1], modifiers);
    return finishMenu(*menu, parent, flags, "popupMenu");
}

} // namespace

void registerMenuCommands() {
    script::registerCommand("menu", menuCommand);
    script::registerCommand("popupMenu", popupMenuCommand);
}

} // namespace host
