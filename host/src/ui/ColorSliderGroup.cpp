#include "ui/ColorSliderGroup.h"

#include "ui/CommandSupport.h"

#include <QColorDialog>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>

#include <maya/MQtUtil.h>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr int kSliderSteps = 1000;
constexpr int kWidest = 10000; // of a column

QColor toColor(const ColorSliderGroup::Components& rgb) {
    const auto part = [](double value) { return std::clamp(value, 0.0, 1.0); };
    return QColor::fromRgbF(part(rgb[0]), part(rgb[1]), part(rgb[2]));
}

/// Not by redF and its like, which give single precision in Qt 6.
ColorSliderGroup::Components toComponents(const QColor& color) {
    const QRgba64 parts = color.rgba64();
    constexpr double most = 0xffff;
    return {parts.red() / most, parts.green() / most, parts.blue() / most};
}

/// As wide as its column says, or less where there is no room for that. It paints its colour
/// itself: a style sheet of the window that it is moved into replaces palettes.
class Swatch : public QFrame {
public:
    using QFrame::QFrame;

    void setColor(const QColor& color) {
        color_ = color;
        update();
    }
    QSize sizeHint() const override {
        const int column = maximumWidth();
        return {column < QWIDGETSIZE_MAX ? column : minimumWidth(), minimumHeight()};
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), color_); }

private:
    QColor color_;
};

} // namespace

ColorSliderGroup::ColorSliderGroup(QWidget* parent)
    : QWidget(parent), label_(new QLabel(this)), port_(new Swatch(this)),
      slider_(new QSlider(Qt::Horizontal, this)) {
    port_->setObjectName(QStringLiteral("port"));
    port_->setAutoFillBackground(true);
    port_->setMinimumSize(MQtUtil::dpiScale(40), MQtUtil::dpiScale(16));
    port_->installEventFilter(this);
    slider_->setObjectName(QStringLiteral("slider"));
    slider_->setRange(0, kSliderSteps);
    auto* layout = new QHBoxLayout(this);
    // Nothing between and around the columns: their widths together are the group's.
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    label_->setContentsMargins(0, 0, MQtUtil::dpiScale(4), 0);
    layout->addWidget(label_);
    layout->addWidget(port_);
    layout->addWidget(slider_, 1);
    layout->addStretch();
    connect(slider_, &QSlider::valueChanged, this, &ColorSliderGroup::dragged);
    connect(slider_, &QSlider::sliderReleased, this, &ColorSliderGroup::moved);
    show(rgb_);
}

ColorSliderGroup::Components ColorSliderGroup::hsv() const {
    return {hue_, saturation_, std::max({rgb_[0], rgb_[1], rgb_[2]})};
}

void ColorSliderGroup::setRgb(const Components& rgb) {
    rgb_ = rgb;
    const auto [least, most] = std::minmax({rgb[0], rgb[1], rgb[2]});
    const double spread = most - least;
    if (most > 0)
        saturation_ = spread / most;
    if (spread > 0) {
        const double sixth = most == rgb[0]   ? (rgb[1] - rgb[2]) / spread
                             : most == rgb[1] ? (rgb[2] - rgb[0]) / spread + 2
                                              : (rgb[0] - rgb[1]) / spread + 4;
        hue_ = sixth * 60 + (sixth < 0 ? 360 : 0);
    }
    show(rgb_);
}

void ColorSliderGroup::setHsv(const Components& hsv) {
    const auto part = [&hsv](double shift) {
        // The usual unrolled hexagon: each component falls off around its own hue.
        const double k = std::fmod(shift + hsv[0] / 60, 6);
        return hsv[2] * (1 - hsv[1] * std::max(0.0, std::min({k, 4 - k, 1.0})));
    };
    const double hue = hsv[0];
    const double saturation = hsv[1];
    setRgb({part(5), part(3), part(1)});
    hue_ = hue;
    saturation_ = saturation;
}

QString ColorSliderGroup::label() const {
    return label_->text();
}

void ColorSliderGroup::setLabel(const QString& text) {
    label_->setText(text);
}

bool ColorSliderGroup::setColumnWidth(int column, int width) {
    QWidget* const columns[] = {label_, port_, slider_};
    if (column < 1 || column > 3 || width < 0)
        return false;
    // What scripts say of sizes is for a screen of the usual density.
    const int scaled = MQtUtil::dpiScale(std::min(width, kWidest));
    columns[column - 1]->setMaximumWidth(scaled);
    columns[column - 1]->setMinimumWidth(columns[column - 1] == port_ ? 0 : scaled);
    columns[column - 1]->updateGeometry();
    return true;
}

void ColorSliderGroup::show(const Components& rgb) {
    QPalette palette = port_->palette();
    palette.setColor(port_->backgroundRole(), toColor(rgb));
    port_->setPalette(palette);
    static_cast<Swatch*>(port_)->setColor(toColor(rgb));
    const QSignalBlocker quiet(slider_);
    slider_->setValue(qRound(hsv()[2] * kSliderSteps));
}

void ColorSliderGroup::dragged(int position) {
    setHsv({hue_, saturation_, double(position) / kSliderSteps});
    changed_ = true;
    if (slider_->isSliderDown())
        command::runElementScript(dragCommand);
    else
        moved(); // by a key, the wheel, or a click beside the handle
}

void ColorSliderGroup::moved() {
    if (!changed_)
        return;
    changed_ = false;
    command::runElementScript(changeCommand);
}

void ColorSliderGroup::pick() {
    if (dialog_)
        return;
    // A new one each time, so that it belongs to the window that the group is in by now.
    dialog_ = new QColorDialog(toColor(rgb_), this);
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setObjectName(QStringLiteral("colorDialog"));
    dialog_->setOption(QColorDialog::DontUseNativeDialog);
    const Components before = rgb_;
    connect(dialog_, &QColorDialog::currentColorChanged, this, [this](const QColor& color) {
        if (color == toColor(rgb_))
            return;
        setRgb(toComponents(color));
        command::runElementScript(dragCommand);
    });
    connect(dialog_, &QDialog::accepted, this,
            [this] { command::runElementScript(changeCommand); });
    connect(dialog_, &QDialog::rejected, this, [this, before] {
        if (rgb_ == before)
            return;
        setRgb(before);
        command::runElementScript(changeCommand);
    });
    dialog_->open();
}

bool ColorSliderGroup::eventFilter(QObject* watched, QEvent* event) {
    if (watched == port_ && event->type() == QEvent::MouseButtonRelease && isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (port_->rect().contains(static_cast<QMouseEvent*>(event)->pos()))
            pick();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace host
