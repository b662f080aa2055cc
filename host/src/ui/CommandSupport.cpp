#include "ui/CommandSupport.h"

#include "script/Interpreter.h"
#include "ui/MainWindow.h"

#include <QMenu>
#include <QWidget>

namespace host::command {

namespace {

int runningElementScripts = 0;

} // namespace

void requireInterface(const std::string& name) {
    if (!MainWindow::instance())
        throw script::ScriptError(name + ": there is no user interface.");
}

script::Value path(const QObject* object) {
    return script::Value(Elements::instance().pathOf(object).toStdString());
}

QObject* find(const std::string& name, ElementKind kind) {
    QObject* object = Elements::instance().find(text(name), kind);
    if (!object)
        throw script::ScriptError("Object '" + name + "' not found.");
    return object;
}

void requireNewName(const std::string& name, ElementKind kind) {
    if (Elements::instance().find(text(name), kind))
        throw script::ScriptError("Object's name '" + name + "' is not unique.");
}

void runElementScript(const QString& text, bool echo) {
    if (text.isEmpty())
        return;
    script::RunOptions options;
    options.echo = echo;
    ++runningElementScripts;
    script::run(text.toStdString(), nullptr, options);
    --runningElementScripts;
}

void destroy(QObject* object) {
    Elements::instance().forget(object);
    if (runningElementScripts == 0) {
        delete object;
        return;
    }
    if (auto* menu = qobject_cast<QMenu*>(object))
        menu->menuAction()->setVisible(false);
    else if (auto* widget = qobject_cast<QWidget*>(object))
        widget->hide();
    object->deleteLater();
}

} // namespace host::command
