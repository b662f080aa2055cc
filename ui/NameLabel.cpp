#include "ui/NameLabel.h"

#include "ui/NameText.h"

#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace vellum {

NameLabel::NameLabel(Weight weight, QWidget* parent) : QLabel(parent), weight_(weight) {
    setTextFormat(weight == Weight::Bold ? Qt::RichText : Qt::PlainText);
    setTextInteractionFlags(Qt::NoTextInteraction); // clicks are its parent's
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    if (weight == Weight::Bold) {
        QFont bold = font();
        bold.setBold(true);
        setFont(bold);
    }
}

void NameLabel::setName(const QString& name) {
    if (name == name_)
        return;
    name_ = name;
    line_ = oneLine(name);
    setText(weight_ == Weight::Bold ? QStringLiteral("<b>%1</b>").arg(name.toHtmlEscaped()) : name);
    updateToolTip();
}

int NameLabel::room() const {
    return contentsRect().width() - 2 * margin();
}

void NameLabel::updateToolTip() {
    const bool isCut = fontMetrics().horizontalAdvance(line_) > room() || line_ != name_;
    const QString tip = isCut ? toolTipText(name_) : QString();
    if (toolTip() != tip)
        setToolTip(tip);
}

QSize NameLabel::sizeHint() const {
    return {0, fontMetrics().height() + 2 * margin()};
}

QSize NameLabel::minimumSizeHint() const {
    return sizeHint();
}

void NameLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    updateToolTip();
}

void NameLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect().adjusted(margin(), 0, -margin(), 0);
    style()->drawItemText(&painter, area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                          palette(), isEnabled(),
                          fontMetrics().elidedText(line_, Qt::ElideRight, area.width()),
                          foregroundRole());
}

} // namespace vellum
