// The menus of the main window and what they do with scene files.
#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "scene/core/SceneState.h"
#include "scene/files/FileIO.h"
#include "script/Interpreter.h"
#include "ui/Elements.h"
#include "ui/MainWindow.h"
#include "ui/MenuSets.h"
#include "ui/ModelPanel.h"
#include "ui/Playback.h"
#include "ui/SceneTime.h"
#include "ui/ScriptLine.h"
#include "ui/Tools.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include <exception>

namespace host {

namespace {

const char* const sceneFilter = "Scenes (*.ma *.mb);;Maya ASCII (*.ma);;Maya Binary (*.mb)";

/// Runs a file operation; what it throws is shown to the user.
template <class Operation> bool reported(Operation operation) {
    try {
        operation();
        return true;
    } catch (const std::exception& error) {
        report::error(error.what());
        return false;
    }
}

void runScript(const char* text) {
    script::RunOptions options;
    options.echo = true;
    script::run(text, nullptr, options);
}

/// Hotkeys that work in every window of the program, floating views and torn-off menus included.
void setHotkeys(QAction& action, const QList<QKeySequence>& keys) {
    action.setShortcuts(keys);
    action.setShortcutContext(Qt::ApplicationShortcut);
}

} // namespace

QMenu* MainWindow::addMenu(const QString& name, const QString& label) {
    QMenu* menu = menuBar()->addMenu(label);
    menu->setTearOffEnabled(true);
    Elements::instance().add(menu, name, ElementKind::Menu, this);
    return menu;
}

void MainWindow::buildMenus() {
    menuBar()->setNativeMenuBar(false);
    buildFileMenu();
    buildEditMenu();

    buildMenuSetChooser();

    QMenu* display = addMenu(QStringLiteral("mainDisplayMenu"), tr("Display"));
    display->addAction(tr("Refresh All Views"), this, [] { runScript("refresh -force"); });

    QMenu* playback = addMenu(QStringLiteral("mainPlaybackMenu"), tr("Playback"));
    QAction* play = playback->addAction(tr("Play / Stop"), this, [] {
        Playback& player = Playback::instance();
        player.isPlaying() ? player.stop() : player.start(Playback::Direction::Forward);
    });
    setHotkeys(*play, {QKeySequence(Qt::ALT | Qt::Key_V)});
    QAction* next = playback->addAction(tr("Step Forward"), this,
                                        [] { sceneTime::setCurrent(sceneTime::current() + 1); });
    setHotkeys(*next, {QKeySequence(Qt::ALT | Qt::Key_Period)});
    QAction* previous = playback->addAction(
        tr("Step Back"), this, [] { sceneTime::setCurrent(sceneTime::current() - 1); });
    setHotkeys(*previous, {QKeySequence(Qt::ALT | Qt::Key_Comma)});
    QAction* every = playback->addAction(tr("Play Every Frame"));
    every->setCheckable(true);
    connect(every, &QAction::toggled, this,
            [](bool on) { Playback::instance().setEveryFrame(on); });

    QMenu* windows = addMenu(QStringLiteral("mainWindowMenu"), tr("Windows"));
    QAction* scriptEntry =
        windows->addAction(tr("Script Line"), this, [this] { scriptLine().input().setFocus(); });
    scriptEntry->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_QuoteLeft));
    auto* openMenus = new QAction(this); // Alt is Qt's own
    openMenus->setShortcut(QKeySequence(Qt::Key_F10));
    connect(openMenus, &QAction::triggered, this,
            [this] { menuBar()->setActiveAction(menuBar()->actions().constFirst()); });
    addAction(openMenus);
    QMenu* help = addMenu(QStringLiteral("mainHelpMenu"), tr("Help"));
    help->addAction(tr("About"), this, &MainWindow::showAbout);
}

void MainWindow::buildMenuSetChooser() {
    // Menus of other sets than the current one are hidden; here the set is chosen.
    MenuSets& sets = MenuSets::instance();
    auto* chooser = new QComboBox(menuBar());
    chooser->setObjectName(QStringLiteral("menuSetChooser"));
    chooser->setFocusPolicy(Qt::NoFocus);
    const auto showCurrent = [chooser] {
        chooser->setCurrentIndex(chooser->findData(MenuSets::instance().current()));
    };
    const auto fill = [chooser, showCurrent] {
        const MenuSets& all = MenuSets::instance();
        chooser->clear();
        for (const QString& set : all.names())
            chooser->addItem(all.labelOf(set), set);
        showCurrent();
    };
    fill();
    connect(&sets, &MenuSets::setsChanged, chooser, fill);
    connect(&sets, &MenuSets::currentChanged, chooser, showCurrent);
    connect(chooser, QOverload<int>::of(&QComboBox::activated), chooser, [chooser](int index) {
        MenuSets::instance().setCurrent(chooser->itemData(index).toString());
    });
    menuBar()->setCornerWidget(chooser);
}

void MainWindow::buildFileMenu() {
    QMenu* file = addMenu(QStringLiteral("mainFileMenu"), tr("File"));
    const struct {
        QString text;
        QKeySequence keys;
        std::function<void()> action;
    } entries[] = {
        {tr("New Scene"), QKeySequence(Qt::CTRL | Qt::Key_N), [this] { newScene(); }},
        {tr("Open Scene..."), QKeySequence(Qt::CTRL | Qt::Key_O), [this] { openScene(); }},
        {tr("Save Scene"), QKeySequence(Qt::CTRL | Qt::Key_S), [this] { save(); }},
        {tr("Save Scene As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
         [this] { saveAs(); }},
        {tr("Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); }},
    };
    for (const auto& entry : entries) {
        if (&entry == std::end(entries) - 1)
            file->addSeparator();
        QAction* action = file->addAction(entry.text);
        action->setShortcut(entry.keys);
        connect(action, &QAction::triggered, this, entry.action);
    }
}

void MainWindow::buildEditMenu() {
    QMenu* edit = addMenu(QStringLiteral("mainEditMenu"), tr("Edit"));
    undo_ = edit->addAction(tr("Undo"), this, [] { runScript("undo"); });
    setHotkeys(*undo_, {QKeySequence(Qt::CTRL | Qt::Key_Z), QKeySequence(Qt::Key_Z)});
    redo_ = edit->addAction(tr("Redo"), this, [] { runScript("redo"); });
    setHotkeys(*redo_, {QKeySequence(Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y),
                        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    edit->addSeparator();
    QAction* remove = edit->addAction(tr("Delete"), this, [] {
        if (MPxContext* tool = Tools::instance().current())
            tool->deleteAction();
    });
    remove->setShortcut(QKeySequence(Qt::Key_Delete));
    QAction* select = edit->addAction(tr("Select Tool"), this,
                                      [] { Tools::instance().setCurrent(Tools::selectTool); });
    select->setShortcut(QKeySequence(Qt::Key_Q));
    // Only the texts follow the queue: a disabled action would swallow its shortcut.
    connect(edit, &QMenu::aboutToShow, this, &MainWindow::updateEditMenu);
}

void MainWindow::updateEditMenu() {
    const UndoQueue& queue = undoQueue();
    const auto label = [](const QString& verb, bool can, const std::string& what) {
        if (!can)
            return verb;
        const QString text = QString::fromStdString(what).simplified();
        return text.isEmpty() ? verb : verb + QStringLiteral(" \"") + text.left(40) + '"';
    };
    undo_->setText(label(tr("Undo"), queue.canUndo(), queue.undoLabel()));
    redo_->setText(label(tr("Redo"), queue.canRedo(), queue.redoLabel()));
}

void MainWindow::showAbout() {
    QMessageBox::about(this, tr("vellum-host"),
                       tr("The workbench of Vellum2: a stand-in for Autodesk Maya that runs the "
                          "plug-in on machines without it."));
}

void MainWindow::updateTitle() {
    const std::string& path = fileIO().sceneName();
    const QString name = path.empty() ? tr("untitled") : QString::fromStdString(path);
    const QString star = sceneModified() ? QStringLiteral("*") : QString();
    const QString title = tr("vellum-host: %1%2").arg(name, star);
    if (title != windowTitle())
        setWindowTitle(title);
}

bool MainWindow::askToSave() {
    if (!sceneModified())
        return true;
    const std::string& path = fileIO().sceneName();
    const QString name =
        path.empty() ? tr("untitled scene") : QFileInfo(QString::fromStdString(path)).fileName();
    QMessageBox box(QMessageBox::Question, tr("Save Changes"), tr("Save changes to %1?").arg(name),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, this);
    box.setObjectName(QStringLiteral("saveChangesBox"));
    box.setDefaultButton(QMessageBox::Yes);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return save();
    case QMessageBox::No:
        return true;
    default:
        return false;
    }
}

// What could not be read of a file is gone for good once it is written over.
bool MainWindow::askToSaveOverDamage() {
    if (!fileIO().savesOverDamage())
        return true;
    const QString name = QFileInfo(QString::fromStdString(fileIO().sceneName())).fileName();
    QMessageBox box(QMessageBox::Warning, tr("Save Over Damaged File"),
                    tr("Not everything in %1 could be read. Saving over it loses the rest for "
                       "good.\n\nSave over it all the same?")
                        .arg(name),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setObjectName(QStringLiteral("saveOverDamageBox"));
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() != QMessageBox::Yes)
        return false;
    fileIO().acceptDamage();
    return true;
}

bool MainWindow::newScene() {
    return askToSave() && reported([] { fileIO().newScene(); });
}

bool MainWindow::openScene() {
    if (!askToSave())
        return false;
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Open Scene"), QString(), tr(sceneFilter), nullptr,
                                     QFileDialog::DontUseNativeDialog);
    return !path.isEmpty() && openScene(path);
}

bool MainWindow::openScene(const QString& path) {
    return reported([&] { fileIO().open(path.toStdString()); });
}

bool MainWindow::save() {
    if (fileIO().sceneName().empty())
        return saveAs();
    if (!askToSaveOverDamage())
        return false;
    const bool saved = reported([] { fileIO().save(); });
    updateTitle();
    return saved;
}

bool MainWindow::saveAs() {
    QFileDialog dialog(this, tr("Save Scene As"), QString(), tr(sceneFilter));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(fileIO().format() == FileFormat::MayaBinary ? QStringLiteral("mb")
                                                                        : QStringLiteral("ma"));
    if (!fileIO().sceneName().empty())
        dialog.selectFile(QString::fromStdString(fileIO().sceneName()));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    const QString path = dialog.selectedFiles().constFirst();
    const std::string oldName = fileIO().sceneName();
    const FileFormat oldFormat = fileIO().format();
    fileIO().setSceneName(path.toStdString());
    fileIO().setFormat(path.endsWith(QLatin1String(".mb"), Qt::CaseInsensitive)
                           ? FileFormat::MayaBinary
                           : FileFormat::MayaAscii);
    const bool saved = askToSaveOverDamage() && reported([] { fileIO().save(); });
    if (!saved) {
        fileIO().setSceneName(oldName);
        fileIO().setFormat(oldFormat);
    }
    updateTitle();
    return saved;
}

} // namespace host
