#include "ui/FlatButton.h"

#include "plugin/base/QtCompat.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kSide = 30;
const QColor kHoverTint(255, 255, 255);

/// The opaque pixels in another colour.
void recolor(QImage& image, const QColor& color) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
}

} // namespace

FlatButton::FlatButton(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    setSide(kSide);
    defaultBackground_ = palette().color(backgroundRole());
    background_ = defaultBackground_;
    applyStyle();
}

void FlatButton::setSide(int side) {
    const int scaled = MQtUtil::dpiScale(side);
    setFixedSize(scaled, scaled);
}

void FlatButton::setImage(const QImage& image, int padding) {
    image_ = image;
    padding_ = padding;
    renderImage();
}

void FlatButton::setColors(const QColor& background, const QColor& tint) {
    const QColor shown = background.isValid() ? background : defaultBackground_;
    if (shown == background_ && tint == tint_)
        return; // a style sheet is dear, and refreshing is frequent
    background_ = shown;
    tint_ = tint;
    renderImage();
    applyStyle();
}

void FlatButton::setHoverHighlighting(bool on) {
    highlightsHover_ = on;
    if (!on)
        setHovered(false);
}

void FlatButton::setHovered(bool hovered) {
    if (hovered_ == hovered)
        return;
    hovered_ = hovered;
    renderImage();
}

void FlatButton::renderImage() {
    if (image_.isNull()) {
        clear();
        return;
    }
    const double ratio = devicePixelRatioF();
    const QSizeF room = QSizeF(size()) - QSizeF(1, 1) * MQtUtil::dpiScale(padding_);
    const QSize pixels = (room * ratio).toSize();
    if (pixels.isEmpty()) {
        clear();
        return;
    }
    QImage scaled = image_.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (tint_.isValid())
        recolor(scaled, tint_);
    else if (hovered_)
        recolor(scaled, kHoverTint);
    QPixmap pixmap = QPixmap::fromImage(scaled);
    pixmap.setDevicePixelRatio(ratio);
    setPixmap(pixmap);
}

void FlatButton::applyStyle() {
    setStyleSheet(QStringLiteral("QLabel { background-color : %1; border-radius: 0; "
                                 "border-width: %2; border-color: %3; border-style: solid }")
                      .arg(background_.name(), QString::number(0), defaultBackground_.name()));
}

bool FlatButton::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Enter:
        setHovered(highlightsHover_);
        break;
    case QEvent::Leave:
    case QEvent::Hide: // a button that hides under the pointer is not left
        setHovered(false);
        break;
    case QEvent::Show:
    case QEvent::ScreenChangeInternal:
        renderImage(); // the screen may have another scale
        break;
    default:
        break;
    }
    return QLabel::event(event);
}

void FlatButton::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    renderImage();
}

void FlatButton::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QLabel::mousePressEvent(event);
        return;
    }
    pressed_ = true;
    event->accept();
    Q_EMIT pressed();
}

// Nothing of this object is touched after the last signal: what it brings about may delete it.
void FlatButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pressed_) {
        QLabel::mouseReleaseEvent(event);
        return;
    }
    pressed_ = false;
    event->accept();
    const bool inside = rect().contains(qt::position(event).toPoint());
    const QPointer<FlatButton> self(this);
    Q_EMIT released();
    if (self && inside)
        Q_EMIT clicked();
}

} // namespace vellum
