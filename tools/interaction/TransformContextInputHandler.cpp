#include "tools/interaction/TransformContextInputHandler.h"

#include "plugin/base/QtCompat.h"
#include "plugin/base/Settings.h"
#include "tools/interaction/TransformContext.h"

#include <QAction>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <maya/MQtUtil.h>

namespace vellum {

namespace {
constexpr int kPanZoomKey = Qt::Key_Backslash;
} // namespace

TransformContextInputHandler::~TransformContextInputHandler() {
    context_ = nullptr; // its owner is going as well
    activate(false);
}

void TransformContextInputHandler::activate(bool active) {
    if (active == active_ && !active)
        return;
    active_ = active;
    panZoomKeyHeld_ = false;
    views_.clear();
    if (mainWindow_)
        mainWindow_->removeEventFilter(this);
    if (!active) {
        if (menu_)
            menu_->close();
        return;
    }
    mainWindow_ = MQtUtil::mainWindow();
    if (mainWindow_)
        mainWindow_->installEventFilter(this);
    watchActiveView();
}

bool TransformContextInputHandler::eventFilter(QObject* watched, QEvent* event) {
    bool consumed = false;
    if (watched == mainWindow_.data()) {
        filterKey(*event);
    } else if (views_.contains(watched)) {
        auto& view = *static_cast<QWidget*>(watched);
        if (event->type() == QEvent::MouseButtonPress)
            consumed = filterMouse(view, *static_cast<QMouseEvent*>(event));
        else if (view.window() != mainWindow_)
            filterKey(*event); // keys pressed there do not come by the main window
    }
    return consumed || QObject::eventFilter(watched, event);
}

void TransformContextInputHandler::filterKey(const QEvent& event) {
    if (event.type() == QEvent::WindowDeactivate) {
        panZoomKeyHeld_ = false; // its release goes to another window
    } else if (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease) {
        const auto& key = static_cast<const QKeyEvent&>(event);
        if (key.key() == kPanZoomKey && !key.isAutoRepeat())
            panZoomKeyHeld_ = event.type() == QEvent::KeyPress;
    }
}

bool TransformContextInputHandler::filterMouse(QWidget& view, const QMouseEvent& event) {
    if (!isPlainRightPress(event) || !settings().transformToolContextMenu || panZoomKeyHeld_)
        return false;
    makeActiveView(view);
    menuPosition_ = (qt::position(&event) * view.devicePixelRatioF()).toPoint();
    if (menu_)
        menu_->close();
    menu_ = makeMenu(mainWindow_);
    menu_->setAttribute(Qt::WA_DeleteOnClose);
    menu_->popup(QCursor::pos());
    return true;
}

QMenu* TransformContextInputHandler::makeMenu(QWidget* parent) {
    using Handler = TransformContextInputHandler;
    auto* menu = new QMenu(parent);
    const auto add = [menu, this](const char* label, void (Handler::*slot)()) {
        return menu->addAction(QString::fromLatin1(label), this, slot);
    };
    if (context_ && context_->isTransforming()) {
        add("Apply Transform", &Handler::Apply);
        add("Revert Transform", &Handler::Revert);
        menu->addSeparator();
        add("Flip Horizontal", &Handler::FlipHorizontal);
        add("Flip Vertical", &Handler::FlipVertical);
    } else {
        add("Transform", &Handler::Transform);
        add("Transform Copy", &Handler::TransformCopy);
        menu->addSeparator();
        add("Cut", &Handler::Cut);
        add("Copy", &Handler::Copy);
        const bool canPaste = context_ && context_->canPaste();
        add("Paste", &Handler::Paste)->setEnabled(canPaste);
        add("Paste and Transform", &Handler::PasteAndTransform)->setEnabled(canPaste);
    }
    menu->addSeparator();
    add("Cancel", &Handler::Cancel);
    return menu;
}

void TransformContextInputHandler::Transform() {
    if (context_)
        context_->transform(false);
}

void TransformContextInputHandler::TransformCopy() {
    if (context_)
        context_->transform(true);
}

void TransformContextInputHandler::FlipHorizontal() {
    if (context_)
        context_->flip(true);
}

void TransformContextInputHandler::FlipVertical() {
    if (context_)
        context_->flip(false);
}

void TransformContextInputHandler::Cut() {
    if (context_)
        context_->cut();
}

void TransformContextInputHandler::Copy() {
    if (context_)
        context_->copy();
}

void TransformContextInputHandler::Paste() {
    if (context_)
        context_->paste(false);
}

void TransformContextInputHandler::PasteAndTransform() {
    if (context_)
        context_->paste(true);
}

void TransformContextInputHandler::Apply() {
    if (context_)
        context_->completeAction();
}

void TransformContextInputHandler::Revert() {
    if (context_)
        context_->deleteAction();
}

void TransformContextInputHandler::Cancel() {
    if (context_)
        context_->abortAction();
}

} // namespace vellum
