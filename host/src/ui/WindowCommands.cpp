// window, showWindow, paneLayout, setParent, deleteUI.
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/ControlFlags.h"
#include "ui/Elements.h"
#include "ui/MainWindow.h"
#include "ui/Tools.h"
#include "ui/UiCommands.h"
#include "ui/WindowKeys.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QVBoxLayout>

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

/// A window that a script made. Closing deletes it unless it is retained. Shown in the middle of
/// the main window the first time, unless a script placed it, and above it always.
class ScriptWindow : public QWidget {
public:
    explicit ScriptWindow(bool retain) : QWidget(MainWindow::instance(), frame), retain_(retain) {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
    }

    void place(QPoint topLeft) {
        placed_ = true;
        move(topLeft);
    }
    QString closeCommand;

    /// A dialog, as X11's window managers keep no plain window above another.
    static constexpr Qt::WindowType kind = Qt::Dialog;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!windowKeyPressed(*this, *event))
            QWidget::keyPressEvent(event);
    }
    void keyReleaseEvent(QKeyEvent* event) override {
        if (!windowKeyReleased(*event))
            QWidget::keyReleaseEvent(event);
    }
    void showEvent(QShowEvent* event) override {
        if (!placed_ && !event->spontaneous())
            place(MainWindow::instance()->geometry().center() - rect().center());
        QWidget::showEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        event->accept();
        const QString command = closeCommand;
        if (!retain_) {
            Elements::instance().forget(this);
            deleteLater();
        }
        command::runElementScript(command);
    }

private:
    static constexpr Qt::WindowFlags frame = kind | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                             Qt::WindowMinMaxButtonsHint |
                                             Qt::WindowCloseButtonHint;
    bool retain_;
    bool placed_ = false;
};

/// What surrounds a window. Changing it hides a window for a moment, as Qt has it.
void setFrameFlags(QWidget& window, const ParsedFlags& flags) {
    const struct {
        const char* flag;
        Qt::WindowType type;
    } parts[] = {{"-minimizeButton", Qt::WindowMinimizeButtonHint},
                 {"-maximizeButton", Qt::WindowMaximizeButtonHint},
                 {"-titleBar", Qt::WindowTitleHint}};
    Qt::WindowFlags wanted = window.windowFlags();
    for (const auto& part : parts) {
        if (flags.isSet(part.flag))
            wanted.setFlag(part.type, flags.getBool(part.flag));
    }
    if (flags.isSet("-toolbox")) {
        wanted &= ~Qt::WindowFlags(Qt::WindowType_Mask);
        wanted |= flags.getBool("-toolbox") ? Qt::Tool : ScriptWindow::kind;
    }
    if (wanted == window.windowFlags())
        return;
    const bool shown = window.isVisible();
    window.setWindowFlags(wanted);
    window.setVisible(shown);
}

void setWindowPlace(QWidget& window, const ParsedFlags& flags) {
    QPoint place = window.pos();
    if (flags.isSet("-topLeftCorner")) // top first
        place = {flags.getInt("-topLeftCorner", 0, 1), flags.getInt("-topLeftCorner")};
    if (flags.isSet("-topEdge"))
        place.setY(flags.getInt("-topEdge"));
    if (flags.isSet("-leftEdge"))
        place.setX(flags.getInt("-leftEdge"));
    if (!flags.isSet("-topLeftCorner") && !flags.isSet("-topEdge") && !flags.isSet("-leftEdge"))
        return;
    if (auto* own = dynamic_cast<ScriptWindow*>(&window))
        own->place(place);
    else
        window.move(place);
}

void setWindowFlags(QWidget& window, const ParsedFlags& flags) {
    if (flags.isSet("-title"))
        window.setWindowTitle(command::text(flags.getString("-title")));
    QSize size = window.size();
    if (flags.isSet("-widthHeight"))
        size = {flags.getInt("-widthHeight"), flags.getInt("-widthHeight", 0, 1)};
    if (flags.isSet("-width"))
        size.setWidth(flags.getInt("-width"));
    if (flags.isSet("-height"))
        size.setHeight(flags.getInt("-height"));
    if (size != window.size())
        window.resize(size);
    if (flags.getBool("-resizeToFitChildren"))
        window.adjustSize();
    if (flags.isSet("-sizeable")) {
        const bool free = flags.getBool("-sizeable");
        window.setMinimumSize(free ? QSize(0, 0) : window.size());
        window.setMaximumSize(free ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) : window.size());
    }
    if (flags.isSet("-iconName"))
        window.setWindowIconText(command::text(flags.getString("-iconName")));
    setWindowPlace(window, flags);
    setFrameFlags(window, flags);
    auto* own = dynamic_cast<ScriptWindow*>(&window);
    if (own && flags.isSet("-closeCommand"))
        own->closeCommand = command::text(flags.getString("-closeCommand"));
    if (flags.isSet("-visible"))
        window.setVisible(flags.getBool("-visible"));
}

Value queryWindow(const QWidget& window, const ParsedFlags& flags) {
    if (flags.isSet("-title"))
        return Value(window.windowTitle().toStdString());
    if (flags.isSet("-visible"))
        return Value(window.isVisible());
    if (flags.isSet("-width"))
        return Value(window.width());
    if (flags.isSet("-height"))
        return Value(window.height());
    if (flags.isSet("-widthHeight"))
        return Value(script::Ints{window.width(), window.height()});
    if (flags.isSet("-topLeftCorner"))
        return Value(script::Ints{window.y(), window.x()});
    if (flags.isSet("-topEdge"))
        return Value(window.y());
    if (flags.isSet("-leftEdge"))
        return Value(window.x());
    if (flags.isSet("-sizeable"))
        return Value(window.minimumSize() != window.maximumSize());
    if (flags.isSet("-iconName"))
        return Value(window.windowIconText().toStdString());
    script::Strings menus;
    for (const QObject* child : elements().childrenOf(&window)) {
        if (elements().kindOf(child) == ElementKind::Menu)
            menus.push_back(elements().nameOf(child).toStdString());
    }
    if (flags.isSet("-menuArray"))
        return Value(menus);
    if (flags.isSet("-numberOfMenus"))
        return Value(int(menus.size()));
    if (flags.isSet("-menuBar"))
        return Value(qobject_cast<const QMainWindow*>(&window) ||
                     (window.layout() && window.layout()->menuBar()));
    throw ScriptError("window: a flag to query is needed.");
}

Value windowCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-t", "-title", {ArgKind::String})
                                    .flag("-wh", "-widthHeight", {ArgKind::Int, ArgKind::Int})
                                    .flag("-w", "-width", {ArgKind::Int})
                                    .flag("-h", "-height", {ArgKind::Int})
                                    .flag("-tlc", "-topLeftCorner", {ArgKind::Int, ArgKind::Int})
                                    .flag("-te", "-topEdge", {ArgKind::Int})
                                    .flag("-le", "-leftEdge", {ArgKind::Int})
                                    .flag("-s", "-sizeable", {ArgKind::Boolean})
                                    .flag("-rtf", "-resizeToFitChildren", {ArgKind::Boolean})
                                    .flag("-in", "-iconName", {ArgKind::String})
                                    .flag("-tb", "-titleBar", {ArgKind::Boolean})
                                    .flag("-mnb", "-minimizeButton", {ArgKind::Boolean})
                                    .flag("-mxb", "-maximizeButton", {ArgKind::Boolean})
                                    .flag("-tlb", "-toolbox", {ArgKind::Boolean})
                                    .flag("-cc", "-closeCommand", {ArgKind::String})
                                    .flag("-ret", "-retain")
                                    .flag("-mb", "-menuBar", {ArgKind::Boolean})
                                    .flag("-nm", "-numberOfMenus")
                                    .flag("-ma", "-menuArray")
                                    .flag("-vis", "-visible", {ArgKind::Boolean})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::Window) != nullptr);
    command::requireInterface("window");
    if (!flags.isCreate()) {
        auto* window = command::findAs<QWidget>(name, ElementKind::Window);
        if (flags.isQuery())
            return queryWindow(*window, flags);
        setWindowFlags(*window, flags);
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::Window);
    auto* window = new ScriptWindow(flags.isSet("-retain"));
    elements().add(window, name.empty() ? elements().uniqueName("window") : command::text(name),
                   ElementKind::Window, nullptr);
    window->resize(300, 280);
    if (flags.getBool("-menuBar")) {
        auto* bar = new QMenuBar(window);
        bar->setNativeMenuBar(false);
        window->layout()->setMenuBar(bar);
    }
    setWindowFlags(*window, flags);
    elements().currentLayout = window;
    return command::path(window);
}

Value showWindowCommand(const CommandCall& call) {
    static const Flags syntax = Flags().objects(0, 1);
    const std::string name = syntax.parse(call).object();
    command::requireInterface("showWindow");
    QWidget* window = name.empty() && elements().currentLayout
                          ? elements().currentLayout->window()
                          : command::findAs<QWidget>(name, ElementKind::Window);
    const bool shown = window->isVisible();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    if (shown) // a window that is new gets the focus, or not, from the window manager
        window->activateWindow();
    return {};
}

/// In which direction the panes of a configuration lie beside each other.
Qt::Orientation orientationOf(const std::string& configuration) {
    for (const char* name : {"single", "vertical2", "vertical3", "vertical4"}) {
        if (configuration == name)
            return Qt::Horizontal;
    }
    for (const char* name : {"horizontal2", "horizontal3", "horizontal4"}) {
        if (configuration == name)
            return Qt::Vertical;
    }
    throw ScriptError("paneLayout: the configuration '" + configuration +
                      "' is not available here.");
}

void setPaneLayout(QSplitter& splitter, const ParsedFlags& flags) {
    if (flags.isSet("-configuration")) {
        const std::string configuration = flags.getString("-configuration");
        splitter.setOrientation(orientationOf(configuration));
        splitter.setProperty("configuration", command::text(configuration));
    }
    command::setControl(splitter, flags);
}

Value queryPaneLayout(const QSplitter& splitter, const ParsedFlags& flags) {
    if (flags.isSet("-configuration"))
        return Value(splitter.property("configuration").toString().toStdString());
    script::Strings names;
    for (int i = 0; i < splitter.count(); ++i) {
        const QWidget* pane = splitter.widget(i);
        if (elements().contains(pane))
            names.push_back(elements().nameOf(pane).toStdString());
    }
    if (flags.isSet("-childArray"))
        return Value(names);
    if (flags.isSet("-numberOfChildren"))
        return Value(int(names.size()));
    if (std::optional<Value> answer = command::queryControl(splitter, flags))
        return *answer;
    throw ScriptError("paneLayout: a flag to query is needed.");
}

Flags paneLayoutFlags() {
    Flags flags;
    command::addControlFlags(flags);
    return flags.flag("-cn", "-configuration", {ArgKind::String})
        .flag("-nch", "-numberOfChildren")
        .flag("-ca", "-childArray")
        .query()
        .edit()
        .objects(0, 1);
}

Value paneLayoutCommand(const CommandCall& call) {
    static const Flags syntax = paneLayoutFlags();
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::Layout) != nullptr);
    command::requireInterface("paneLayout");
    if (!flags.isCreate()) {
        auto* splitter = command::findAs<QSplitter>(name, ElementKind::Layout);
        if (flags.isQuery())
            return queryPaneLayout(*splitter, flags);
        setPaneLayout(*splitter, flags);
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::Layout);
    QWidget& parent = command::layoutParent(flags, "paneLayout");
    const std::string configuration = flags.getString("-configuration", "single");
    auto splitter = std::make_unique<QSplitter>(orientationOf(configuration));
    splitter->setProperty("configuration", command::text(configuration));
    QSplitter* made = splitter.release();
    command::place(*made, parent, name, QStringLiteral("paneLayout"), ElementKind::Layout);
    command::setControl(*made, flags);
    elements().currentLayout = made;
    return command::path(made);
}

/// The menu or layout one level up; null at the top.
QObject* parentElement(const QObject* object) {
    const QString path = elements().pathOf(object);
    const int cut = path.lastIndexOf('|');
    return cut < 0 ? nullptr : elements().findAny(path.left(cut));
}

Value setParentMenu(const std::string& name) {
    QObject* menu = nullptr;
    if (name == "..") {
        menu = elements().currentMenu ? parentElement(elements().currentMenu) : nullptr;
        if (!qobject_cast<QMenu*>(menu))
            throw ScriptError("setParent: the current menu has no menu above it.");
    } else {
        menu = elements().find(command::text(name), ElementKind::Menu);
        if (!menu)
            menu = command::findAs<QMenu>(name, ElementKind::MenuItem);
    }
    elements().currentMenu = menu;
    elements().currentCollection = nullptr;
    return command::path(menu);
}

Value setParentCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-m", "-menu")
                                    .flag("-top", "-topLevel")
                                    .flag("-u", "-upLevel")
                                    .query()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.isSet("-upLevel") ? ".." : flags.object();
    if (flags.isQuery())
        return flags.isSet("-menu") ? command::path(elements().currentMenu)
                                    : command::path(elements().currentLayout);
    command::requireInterface("setParent");
    if (flags.isSet("-menu"))
        return setParentMenu(name);
    QObject* target = nullptr;
    if (flags.isSet("-topLevel"))
        target = elements().currentLayout ? elements().currentLayout->window() : nullptr;
    else if (name == "..")
        target = elements().currentLayout ? parentElement(elements().currentLayout) : nullptr;
    else
        target = elements().findAny(command::text(name));
    auto* widget = qobject_cast<QWidget*>(target);
    if (!widget)
        throw ScriptError("setParent: '" + name + "' is no window or layout.");
    elements().currentLayout = widget;
    return command::path(widget);
}

Value deleteUiCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-wnd", "-window")
                                    .flag("-m", "-menu")
                                    .flag("-mi", "-menuItem")
                                    .flag("-ctl", "-control")
                                    .flag("-lay", "-layout")
                                    .flag("-pnl", "-panel")
                                    .flag("-ed", "-editor")
                                    .flag("-rmc", "-radioMenuItemCollection")
                                    .flag("-tc", "-toolContext")
                                    .objects(1, -1);
    const ParsedFlags flags = syntax.parse(call);
    const struct {
        const char* flag;
        ElementKind kind;
    } kinds[] = {{"-window", ElementKind::Window},
                 {"-menu", ElementKind::Menu},
                 {"-menuItem", ElementKind::MenuItem},
                 {"-control", ElementKind::Control},
                 {"-layout", ElementKind::Layout},
                 {"-panel", ElementKind::Panel},
                 {"-editor", ElementKind::Panel},
                 {"-radioMenuItemCollection", ElementKind::Collection}};
    for (const std::string& name : flags.objectNames()) {
        if (flags.isSet("-toolContext")) {
            if (!Tools::instance().remove(name))
                throw ScriptError("Object '" + name + "' not found.");
            continue;
        }
        QObject* object = nullptr;
        bool kindGiven = false;
        for (const auto& kind : kinds) {
            if (flags.isSet(kind.flag)) {
                kindGiven = true;
                object = object ? object : elements().find(command::text(name), kind.kind);
            }
        }
        if (!kindGiven)
            object = elements().findAny(command::text(name));
        if (!object)
            throw ScriptError("Object '" + name + "' not found.");
        if (object == MainWindow::instance())
            throw ScriptError("deleteUI: the main window cannot be deleted.");
        if (object->property(kBuiltIn).toBool())
            throw ScriptError("deleteUI: '" + name + "' is part of the main window.");
        command::destroy(object);
    }
    return {};
}

} // namespace

void registerWindowCommands() {
    script::registerCommand("window", windowCommand);
    script::registerCommand("showWindow", showWindowCommand);
    script::registerCommand("paneLayout", paneLayoutCommand);
    script::registerCommand("setParent", setParentCommand);
    script::registerCommand("deleteUI", deleteUiCommand);
}

} // namespace host
