#include "ui/ModelPanel.h"

#include "foundation/Events.h"
#include "render/Views.h"
#include "ui/Elements.h"

#include <QActionGroup>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QVBoxLayout>

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MQtUtil.h>
#include <maya/MSelectionList.h>

namespace host {

namespace {

QString transformName(const MDagPath& camera) {
    if (!camera.isValid())
        return QString();
    return MQtUtil::toQString(MFnDagNode(camera.transform()).name());
}

} // namespace

ModelPanel::ModelPanel(const QString& name, QWidget* parent)
    : QWidget(parent), view_(new ViewWidget(name, this)), menuBar_(new QMenuBar(this)),
      label_(new QLabel(this)) {
    setObjectName(name);
    menuBar_->setNativeMenuBar(false);
    cameras_ = menuBar_->addMenu(tr("Panels"));
    connect(cameras_, &QMenu::aboutToShow, this, &ModelPanel::fillCameraMenu);

    QMenu* show = menuBar_->addMenu(tr("Show"));
    QAction* grid = show->addAction(tr("Grid"));
    grid->setCheckable(true);
    QAction* gate = show->addAction(tr("Film Gate"));
    gate->setCheckable(true);
    connect(show, &QMenu::aboutToShow, this, [this, grid, gate] {
        grid->setChecked(view().gridShown());
        gate->setChecked(view().filmGateShown());
    });
    connect(grid, &QAction::triggered, this, [this](bool on) {
        view().setGridShown(on);
        view().refresh();
    });
    connect(gate, &QAction::triggered, this, [this](bool on) {
        view().setFilmGateShown(on);
        view().refresh();
    });

    QMenu* renderer = menuBar_->addMenu(tr("Renderer"));
    auto* group = new QActionGroup(this);
    for (const auto& [text, value] : {std::pair(tr("Viewport 2.0"), Renderer::Viewport2),
                                      std::pair(tr("Legacy Viewport"), Renderer::Legacy)}) {
        QAction* action = renderer->addAction(text);
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, value = value] {
            view().setRenderer(value);
            updateLabels();
        });
        connect(renderer, &QMenu::aboutToShow, action,
                [this, action, value = value] { action->setChecked(view().renderer() == value); });
    }

    label_->setAlignment(Qt::AlignCenter);
    label_->setProperty("role", "camera");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(menuBar_);
    layout->addWidget(view_, 1);
    layout->addWidget(label_);
    setAttribute(Qt::WA_StyledBackground);

    for (const char* event : {"ActiveViewChanged", "NameChanged"})
        listeners_.push_back(events::listen(event, [this] { updateLabels(); }));
    updateLabels();
}

ModelPanel::~ModelPanel() {
    for (const int listener : listeners_)
        events::removeListener(listener);
}

bool ModelPanel::lookThrough(const QString& camera) {
    MSelectionList list;
    MDagPath path;
    if (camera.contains('.') || // an attribute would lead to its camera
        !list.add(MQtUtil::toMString(camera)) || !list.getDagPath(0, path) ||
        !view().setCamera(path))
        return false;
    updateLabels();
    view().refresh();
    return true;
}

QString ModelPanel::cameraName() const {
    return transformName(view_->view().camera());
}

ModelPanel* ModelPanel::find(const QString& name) {
    return qobject_cast<ModelPanel*>(Elements::instance().find(name, ElementKind::Panel));
}

ModelPanel* ModelPanel::of(const View* view) {
    QWidget* widget = view ? view->surface().widget : nullptr;
    return widget ? qobject_cast<ModelPanel*>(widget->parentWidget()) : nullptr;
}

void ModelPanel::updateLabels() {
    const QString renderer =
        view().renderer() == Renderer::Legacy ? tr("  (Legacy Viewport)") : QString();
    label_->setText(cameraName() + renderer);
    const bool active = Views::instance().active() == &view();
    if (property("active").toBool() != active) {
        setProperty("active", active);
        style()->unpolish(this); // makes the style look at the property again
        style()->polish(this);
        update();
    }
}

void ModelPanel::fillCameraMenu() {
    cameras_->clear();
    QMenu* menu = cameras_;
    const QString current = cameraName();
    for (MItDag it(MItDag::kDepthFirst, MFn::kCamera); !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        const QString name = transformName(path);
        QAction* action = menu->addAction(name);
        action->setCheckable(true);
        action->setChecked(name == current);
        connect(action, &QAction::triggered, this, [this, path] {
            if (!view().setCamera(path))
                return;
            updateLabels();
            view().refresh();
        });
    }
}

} // namespace host
