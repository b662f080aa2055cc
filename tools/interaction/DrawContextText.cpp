// The part of DrawContext that lets a text be typed, from the release to the commit.
#include "document/Changes.h"
#include "document/DocumentEnvironment.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/Report.h"
#include "tools/interaction/DrawContext.h"

#include <QKeyEvent>

namespace vellum {

namespace {

// In one line; nobody shall have to type again what is lost in the view.
QString quoted(const QString& text) {
    return QStringLiteral("\"%1\"").arg(text.simplified());
}

bool hasLayer(const LayerManager& document, const QString& camera, quint64 id) {
    for (int i = 0; i < document.cameraLayerCount(camera); ++i) {
        if (document.layer(camera, i)->id() == id)
            return true;
    }
    return false;
}

} // namespace

bool DrawContext::isTyping() const {
    return handler_.textTarget() == this && isTextStroke();
}

bool DrawContext::typeKey(const QKeyEvent& event) {
    Stroke* stroke = strokeInProgress();
    if (!isTextStroke())
        return false;
    const QString before = stroke->text;
    QString& text = stroke->text;
    text.chop(composing_);
    composing_ = 0;
    switch (event.key()) {
    case Qt::Key_Escape:
        // The user knows that it has nowhere to go.
        if (refused_ && !settleText())
            discardText();
        else if (isTyping())
            commitText();
        return true;
    case Qt::Key_Backspace:
        // A character outside the basic plane is two units.
        if (text.size() > 1 && text.at(text.size() - 1).isLowSurrogate())
            text.chop(1);
        text.chop(1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        text += QLatin1Char('\n');
        break;
    default:
        if (isWritten(event.text()))
            text += event.text();
        break;
    }
    textChanged(*stroke, before);
    return true;
}

void DrawContext::typeText(const QString& text, const QString& composing) {
    Stroke* stroke = strokeInProgress();
    if (!isTextStroke())
        return;
    const QString before = stroke->text;
    stroke->text.chop(composing_);
    stroke->text += text + composing;
    composing_ = composing.size();
    textChanged(*stroke, before);
}

void DrawContext::textChanged(Stroke& stroke, const QString& before) {
    stroke.dirty = true;
    tell(stroke.text == before ? Change::View : Change::Text, document_.get());
}

bool DrawContext::commitText() {
    refused_ = false;
    return settleText();
}

bool DrawContext::settleText() {
    if (!isTyping()) {
        handler_.setTextTarget(nullptr);
        return true;
    }
    const QString obstacle = obstacleToText();
    const bool empty = strokeInProgress()->text.isEmpty();
    if (!obstacle.isEmpty() && !empty) {
        tellRefused(obstacle);
        return false;
    }
    handler_.setTextTarget(nullptr); // an input method settles what is being composed
    typeText(QString(), QString());
    if (obstacle.isEmpty() && merge()) {
        forgetStroke();
        return true;
    }
    if (empty) {
        discardStroke();
        forgetStroke();
        return true;
    }
    handler_.setTextTarget(this);
    tellRefused(QStringLiteral("its command failed"));
    return false;
}

// Why the text cannot be merged; empty when it can.
QString DrawContext::obstacleToText() const {
    documentEnvironment().settleCameraNames();
    const QString& camera = document_->strokeCamera();
    if (!node())
        return QStringLiteral("its drawing does not exist");
    if (!documentEnvironment().cameraExists(camera))
        return QStringLiteral("its camera does not exist");
    if (!hasLayer(*document_, camera, layer_))
        return QStringLiteral("its layer does not exist");
    const auto begunOn = document_->strokePlace(camera);
    if (!begunOn)
        return QStringLiteral("its frame does not exist");
    const int active = document_->activeLayerIndex(camera);
    if (document_->layerState(camera, active) == LayerState::Locked)
        return QStringLiteral("the active layer is locked");
    if (begunOn->layer != active && !document_->currentFrame(camera))
        return QStringLiteral("the active layer has no frame at or before the current time");
    return {};
}

void DrawContext::tellRefused(const QString& reason) {
    if (!refused_) {
        report::error(QStringLiteral("Text %1 is not committed: %2. Press Escape to discard it.")
                          .arg(quoted(strokeInProgress()->text), reason));
    }
    refused_ = true;
}

void DrawContext::discardText() {
    report::warning(QStringLiteral("Text %1 is discarded.").arg(quoted(strokeInProgress()->text)));
    handler_.setTextTarget(nullptr);
    discardStroke();
    forgetStroke();
}

} // namespace vellum
