// window, showWindow, paneLayout, layout, control, setParent, deleteUI.
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/Elements.h"
#include "ui/MainWindow.h"
#include "ui/UiCommands.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QSplitter>
#include <QVBoxLayout>

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
/// the main window the first time, unless a script placed it.
class ScriptWindow : public QWidget {
public:
    explicit ScriptWindow(bool retain)
        : QWidget(MainWindow::instance(), Qt::Window), retain_(retain) {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
    }

    void place(QPoint topLeft) {
        placed_ = true;
        move(topLeft);
    }
    QString closeCommand;

protected:
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
                 {"-titleBar", Qt::WindowTitleHint},
                 {"-toolbox", Qt::Tool}};
    Qt::WindowFlags wanted = window.windowFlags();
    for (const auto& part : parts) {
        if (flags.isSet(part.flag))
            wanted.setFlag(part.type, flags.getBool(part.flag));
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
                                    .flag("-vis", "-visible", {ArgKind::Boolean})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::window) != nullptr);
    command::requireInterface("window");
    if (!flags.isCreate()) {
        auto* window = command::findAs<QWidget>(name, ElementKind::window);
        if (flags.isQuery())
            return queryWindow(*window, flags);
        setWindowFlags(*window, flags);
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::window);
    auto* window = new ScriptWindow(flags.isSet("-retain"));
    elements().add(window, name.empty() ? elements().uniqueName("window") : command::text(name),
                   ElementKind::window, nullptr);
    window->resize(300, 280);
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
                          : command::findAs<QWidget>(name, ElementKind::window);
    window->show();
    window->raise();
    return {};
}

/// Where a new layout or panel goes: -parent, or the current layout.
QWidget* layoutParent(const ParsedFlags& flags, const std::string& commandName) {
    if (flags.isSet("-parent")) {
        const std::string name = flags.getString("-parent");
        for (const ElementKind kind : {ElementKind::layout, ElementKind::window}) {
            if (auto* widget = qobject_cast<QWidget*>(elements().find(command::text(name), kind)))
                return widget;
        }
        throw ScriptError("Object '" + name + "' not found.");
    }
    if (!elements().currentLayout)
        throw ScriptError(commandName + ": there is no current layout to put it in.");
    return elements().currentLayout;
}

Value paneLayoutCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-cn", "-configuration", {ArgKind::String})
                                    .flag("-p", "-parent", {ArgKind::String})
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), ElementKind::layout) != nullptr);
    command::requireInterface("paneLayout");
    const std::string configuration = flags.getString("-configuration", "single");
    const bool vertical = configuration == "vertical2" || configuration == "single";
    if (!vertical && configuration != "horizontal2")
        throw ScriptError("paneLayout: the configuration '" + configuration +
                          "' is not available here.");
    if (flags.isQuery()) {
        auto* splitter = command::findAs<QSplitter>(name, ElementKind::layout);
        return Value(splitter->property("configuration").toString().toStdString());
    }
    const Qt::Orientation orientation = vertical ? Qt::Horizontal : Qt::Vertical;
    if (flags.isEdit()) {
        auto* splitter = command::findAs<QSplitter>(name, ElementKind::layout);
        splitter->setOrientation(orientation);
        splitter->setProperty("configuration", command::text(configuration));
        return {};
    }
    if (!name.empty())
        command::requireNewName(name, ElementKind::layout);
    QWidget* parent = layoutParent(flags, "paneLayout");
    auto* splitter = new QSplitter(orientation, parent);
    splitter->setProperty("configuration", command::text(configuration));
    elements().add(splitter,
                   name.empty() ? elements().uniqueName("paneLayout") : command::text(name),
                   ElementKind::layout, parent);
    if (parent->layout())
        parent->layout()->addWidget(splitter);
    splitter->setVisible(true);
    elements().currentLayout = splitter;
    return command::path(splitter);
}

/// `control` and `layout`: questions about any control or layout.
Value elementCommand(const CommandCall& call, ElementKind kind) {
    static const Flags syntax = Flags()
                                    .flag("-ex", "-exists")
                                    .flag("-vis", "-visible", {ArgKind::Boolean})
                                    .flag("-en", "-enable", {ArgKind::Boolean})
                                    .flag("-w", "-width", {ArgKind::Int})
                                    .flag("-h", "-height", {ArgKind::Int})
                                    .query()
                                    .edit()
                                    .objects(1, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(elements().find(command::text(name), kind) != nullptr);
    auto* widget = command::findAs<QWidget>(name, kind);
    if (flags.isQuery()) {
        if (flags.isSet("-visible"))
            return Value(widget->isVisible());
        if (flags.isSet("-enable"))
            return Value(widget->isEnabled());
        if (flags.isSet("-width"))
            return Value(widget->width());
        if (flags.isSet("-height"))
            return Value(widget->height());
        throw ScriptError(call.name + ": a flag to query is needed.");
    }
    if (flags.isSet("-visible"))
        widget->setVisible(flags.getBool("-visible"));
    if (flags.isSet("-enable"))
        widget->setEnabled(flags.getBool("-enable"));
    if (flags.isSet("-width"))
        widget->setFixedWidth(flags.getInt("-width"));
    if (flags.isSet("-height"))
        widget->setFixedHeight(flags.getInt("-height"));
    return {};
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
        menu = elements().find(command::text(name), ElementKind::menu);
        if (!menu)
            menu = command::findAs<QMenu>(name, ElementKind::menuItem);
    }
    elements().currentMenu = menu;
    elements().currentCollection = nullptr;
    return command::path(menu);
}

Value setParentCommand(const CommandCall& call) {
    static const Flags syntax =
        Flags().flag("-m", "-menu").flag("-top", "-topLevel").query().objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
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
                                    .objects(1, -1);
    const ParsedFlags flags = syntax.parse(call);
    const struct {
        const char* flag;
        ElementKind kind;
    } kinds[] = {{"-window", ElementKind::window},     {"-menu", ElementKind::menu},
                 {"-menuItem", ElementKind::menuItem}, {"-control", ElementKind::control},
                 {"-layout", ElementKind::layout},     {"-panel", ElementKind::panel}};
    for (const std::string& name : flags.objectNames()) {
        QObject* object = nullptr;
        bool kindGiven = false;
        for (const auto& kind : kinds) {
            if (flags.isSet(kind.flag)) {
                kindGiven = true;
                object = elements().find(command::text(name), kind.kind);
            }
        }
        if (!kindGiven)
            object = elements().findAny(command::text(name));
        if (!object)
            throw ScriptError("Object '" + name + "' not found.");
        if (object == MainWindow::instance())
            throw ScriptError("deleteUI: the main window cannot be deleted.");
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
    script::registerCommand("control", [](const CommandCall& call) {
        return elementCommand(call, ElementKind::control);
    });
    script::registerCommand("layout", [](const CommandCall& call) {
        return elementCommand(call, ElementKind::layout);
    });
}

} // namespace host
