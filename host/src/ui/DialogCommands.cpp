// confirmDialog and the host's own hostContactSheet.
#include "commands/ScriptJobs.h"
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/ContactSheet.h"
#include "ui/MainWindow.h"
#include "ui/SceneTime.h"
#include "ui/UiCommands.h"

#include <QMessageBox>
#include <QPushButton>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::Value;

QMessageBox::Icon iconNamed(const std::string& name) {
    if (name == "question")
        return QMessageBox::Question;
    if (name == "information")
        return QMessageBox::Information;
    if (name == "warning")
        return QMessageBox::Warning;
    return name == "critical" ? QMessageBox::Critical : QMessageBox::NoIcon;
}

/// Returns the label of the button, or the dismiss string when the box was closed.
Value confirmDialogCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-t", "-title", {ArgKind::String})
                                    .flag("-m", "-message", {ArgKind::String})
                                    .flag("-b", "-button", {ArgKind::String})
                                    .multiUse("-button")
                                    .flag("-db", "-defaultButton", {ArgKind::String})
                                    .flag("-cb", "-cancelButton", {ArgKind::String})
                                    .flag("-ds", "-dismissString", {ArgKind::String})
                                    .flag("-icn", "-icon", {ArgKind::String});
    const ParsedFlags flags = syntax.parse(call);
    command::requireInterface("confirmDialog");
    QMessageBox box(MainWindow::instance());
    box.setWindowTitle(command::text(flags.getString("-title", "Confirm")));
    box.setText(command::text(flags.getString("-message")));
    box.setIcon(iconNamed(flags.getString("-icon")));
    script::Strings labels = flags.allStrings("-button");
    if (labels.empty())
        labels.push_back("Confirm");
    for (const std::string& label : labels) {
        QPushButton* button = box.addButton(command::text(label), QMessageBox::AcceptRole);
        if (label == flags.getString("-defaultButton"))
            box.setDefaultButton(button);
        if (label == flags.getString("-cancelButton"))
            box.setEscapeButton(button);
    }
    box.exec();
    if (const QAbstractButton* pressed = box.clickedButton())
        return Value(pressed->text().remove('&').toStdString());
    return Value(flags.getString("-dismissString", "dismiss"));
}

Value contactSheetCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-s", "-start", {ArgKind::Int})
                                    .flag("-e", "-end", {ArgKind::Int})
                                    .flag("-by", "-byFrame", {ArgKind::Int})
                                    .flag("-c", "-columns", {ArgKind::Int})
                                    .flag("-w", "-width", {ArgKind::Int})
                                    .flag("-f", "-file", {ArgKind::String});
    const ParsedFlags flags = syntax.parse(call);
    command::requireInterface("hostContactSheet");
    ContactSheet sheet;
    sheet.first = flags.getInt("-start", int(sceneTime::first()));
    sheet.last = flags.getInt("-end", int(sceneTime::last()));
    sheet.step = flags.getInt("-byFrame", 1);
    sheet.columns = flags.getInt("-columns", 4);
    sheet.cellWidth = flags.getInt("-width", 320);
    const std::string file = flags.getString("-file");
    std::string error;
    if (!sheet.write(command::text(file), error))
        throw script::ScriptError("hostContactSheet: " + error);
    return Value(file);
}

} // namespace

void registerDialogCommands() {
    script::registerCommand("confirmDialog", confirmDialogCommand);
    script::registerCommand("hostContactSheet", contactSheetCommand);
}

void registerUiCommands() {
    registerToolCommands();
    registerWindowCommands();
    registerControlCommands();
    registerMenuCommands();
    registerMenuItemCommands();
    registerMenuSetCommands();
    registerPanelCommands();
    registerModelEditorCommand();
    registerTimeControlCommands();
    registerDialogCommands();
    // Script jobs live and die with the elements they were given.
    script::setElementPath([](const std::string& name) {
        const Elements& elements = Elements::instance();
        return elements.pathOf(elements.findAny(command::text(name))).toStdString();
    });
    Elements::instance().onRemoved = [](const QString& path) {
        script::uiDeleted(path.toStdString());
    };
}

} // namespace host
