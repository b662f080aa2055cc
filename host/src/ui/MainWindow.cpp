#include "ui/MainWindow.h"

#include "foundation/Events.h"
#include "render/Views.h"
#include "scene/files/FileIO.h"
#include "script/Interpreter.h"
#include "ui/ContextState.h"
#include "ui/Elements.h"
#include "ui/HelpLine.h"
#include "ui/ModelPanel.h"
#include "ui/Playback.h"
#include "ui/SavedViews.h"
#include "ui/ScriptLine.h"
#include "ui/TimeBar.h"
#include "ui/TimeSlider.h"
#include "ui/Tools.h"
#include "ui/WindowKeys.h"

#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

namespace host {

namespace {

MainWindow* theWindow = nullptr;

} // namespace

MainWindow* MainWindow::instance() {
    return theWindow;
}

MainWindow::MainWindow() {
    theWindow = this;
    Elements& elements = Elements::instance();
    elements.add(this, QStringLiteral("MayaWindow"), ElementKind::Window, nullptr);
    setFocusPolicy(Qt::StrongFocus);
    buildMenus();
    buildCentre();
    buildToolBox();
    new DialogKeys(*this);

    script::setGlobalVariable("gMainWindow", script::Value("MayaWindow"));
    script::setGlobalVariable("gMainPane", script::Value("viewPanes"));
    script::setGlobalVariable("gPlayBackSlider",
                              script::Value(elements.pathOf(timeSlider_).toStdString()));

    toolListener_ = Tools::instance().addListener([this] { updateTool(); });
    updateTool();
    eventListeners_.push_back(events::listen("SceneOpened", savedViews::recall));
    for (const char* name : {"SceneOpened", "NewSceneOpened"})
        eventListeners_.push_back(events::listen(name, [this] { sceneChanged(); }));
    eventListeners_.push_back(events::listen("SceneSaved", [this] { updateTitle(); }));
    fileIO().setBeforeSave(savedViews::store);
    modifiedTimer_.setInterval(200);
    connect(&modifiedTimer_, &QTimer::timeout, this, &MainWindow::updateTitle);
    modifiedTimer_.start();
    updateTitle();
    resize(1120, 760);
}

MainWindow::~MainWindow() {
    Playback::instance().stop();
    fileIO().setBeforeSave({});
    for (const int listener : eventListeners_)
        events::removeListener(listener);
    Tools::instance().removeListener(toolListener_);
    script::setGlobalVariable("gPlayBackSlider", script::Value(""));
    script::setGlobalVariable("gMainWindow", script::Value(""));
    theWindow = nullptr;
}

void MainWindow::buildCentre() {
    Elements& elements = Elements::instance();
    auto* centre = new QWidget(this);
    elements.add(centre, QStringLiteral("mainWindowLayout"), ElementKind::Layout, this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);

    auto* panes = new QSplitter(centre);
    elements.add(panes, QStringLiteral("viewPanes"), ElementKind::Layout, centre);
    panel_ = new ModelPanel(QStringLiteral("modelPanel4"), panes);
    elements.add(panel_, QStringLiteral("modelPanel4"), ElementKind::Panel, panes);
    panes->addWidget(panel_);
    layout->addWidget(panes, 1);

    timeSlider_ = new TimeSlider(centre);
    elements.add(timeSlider_, QStringLiteral("timeControl1"), ElementKind::Control, centre);
    layout->addWidget(timeSlider_);
    for (QObject* element : {static_cast<QObject*>(centre), static_cast<QObject*>(panes),
                             static_cast<QObject*>(panel_), static_cast<QObject*>(timeSlider_)})
        element->setProperty(kBuiltIn, true);
    timeBar_ = new TimeBar(centre);
    layout->addWidget(timeBar_);
    scriptLine_ = new ScriptLine(centre);
    layout->addWidget(scriptLine_);
    helpLine_ = new HelpLine(centre);
    helpLine_->setObjectName(QStringLiteral("helpLine"));
    helpLine_->setProperty("role", "help");
    layout->addWidget(helpLine_);
    setCentralWidget(centre);
    Views::instance().setActive(&panel_->view());
    panel_->updateLabels();
}

void MainWindow::buildToolBox() {
    auto* bar = new QToolBar(tr("Tool Box"), this);
    bar->setObjectName(QStringLiteral("toolBox"));
    bar->setMovable(false);
    bar->setOrientation(Qt::Vertical);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(Qt::LeftToolBarArea, bar);

    select_ = new QToolButton(bar);
    select_->setText(QStringLiteral("\u25B3"));
    select_->setToolTip(tr("Select Tool (Q)"));
    select_->setCheckable(true);
    select_->setFixedSize(34, 34);
    select_->setFocusPolicy(Qt::NoFocus);
    connect(select_, &QToolButton::clicked, this, [this] {
        Tools::instance().setCurrent(Tools::selectTool);
        updateTool();
    });
    lastTool_ = new QToolButton(bar);
    lastTool_->setObjectName(QStringLiteral("currentTool"));
    lastTool_->setCheckable(true);
    lastTool_->setFixedSize(34, 34);
    lastTool_->setIconSize(QSize(24, 24));
    lastTool_->setFocusPolicy(Qt::NoFocus);
    connect(lastTool_, &QToolButton::clicked, this, [this] {
        Tools::instance().setCurrent(lastToolName_);
        updateTool();
    });
    bar->addWidget(select_);
    lastToolAction_ = bar->addWidget(lastTool_);
    lastToolAction_->setVisible(false);
}

// Made once for each picture: Qt keeps what it has drawn of an icon, by the icon.
QIcon MainWindow::toolIcon(const QString& file) {
    const auto known = toolIcons_.constFind(file);
    if (known != toolIcons_.constEnd())
        return *known;
    QIcon icon(file);
    if (!icon.availableSizes().isEmpty())
        toolIcons_.insert(file, icon);
    return icon;
}

void MainWindow::updateTool() {
    Tools& tools = Tools::instance();
    const MPxContext* tool = tools.current();
    const bool selecting = tools.currentName() == Tools::selectTool;
    if (tool && !selecting)
        lastToolName_ = tools.currentName();
    if (!tools.find(lastToolName_))
        lastToolName_.clear();
    select_->setChecked(selecting);
    lastToolAction_->setVisible(!lastToolName_.empty());
    if (const MPxContext* last = tools.find(lastToolName_)) {
        const ContextState& state = ContextState::of(*last);
        const QString title = QString::fromStdString(state.title);
        const QIcon icon = toolIcon(QString::fromStdString(state.images[0]));
        const bool hasIcon = !icon.pixmap(24, 24).isNull();
        lastTool_->setIcon(hasIcon ? icon : QIcon());
        lastTool_->setText(hasIcon ? QString() : title.left(2));
        lastTool_->setToolTip(title);
        lastTool_->setChecked(!selecting);
    }
    showHelp(tool ? QString::fromStdString(ContextState::of(*tool).help) : QString());
}

void MainWindow::showHelp(const QString& text) {
    helpLine_->setHelp(text);
}

void MainWindow::sceneChanged() {
    timeSlider_->setRange({});
    timeSlider_->update();
    timeBar_->showTime();
    updateTitle();
    for (View* view : Views::instance().all()) {
        if (ModelPanel* panel = ModelPanel::of(view))
            panel->updateLabels();
    }
    Views::instance().refreshAll();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (!windowKeyPressed(*this, *event))
        QMainWindow::keyPressEvent(event);
}

void MainWindow::keyReleaseEvent(QKeyEvent* event) {
    if (!windowKeyReleased(*event))
        QMainWindow::keyReleaseEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!forced_ && !askToSave()) {
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT closed();
}

void MainWindow::closeForced() {
    forced_ = true;
    close();
}

} // namespace host
