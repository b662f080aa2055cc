#include "tools/interaction/TransformContextInputHandler.h"

#include "plugin/base/Settings.h"
#include "tools/interaction/TransformContext.h"

#include <QAction>
#include <QMenu>

namespace vellum {

TransformContextInputHandler::~TransformContextInputHandler() {
    context_ = nullptr; // its owner is going as well
    activate(false);
}

bool TransformContextInputHandler::isMenuEnabled() const {
    return settings().transformToolContextMenu;
}

QMenu* TransformContextInputHandler::makeMenuAt(QPoint viewPixel) {
    menuPosition_ = viewPixel;
    return makeMenu(mainWindow_);
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
