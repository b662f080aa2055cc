#include "ui/ColorControl.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Script.h"

#include <maya/MQtUtil.h>

#include <algorithm>

namespace vellum {

namespace {

/// 0..255 of a fraction, truncated.
int component(double fraction) {
    return std::clamp(static_cast<int>(fraction * 255.0), 0, 255);
}

} // namespace

ColorControl::ColorControl(const QString& name, int width, int swatchHeight) : name_(name) {
    const QString window = name + QStringLiteral("Window");
    // What an earlier dialog left: its names would be refused.
    script::execute(command::deleteInterface(name));
    script::execute(command::deleteInterface(window));
    const int scaledWidth = MQtUtil::dpiScale(width);
    // Maya scales what scripts give it by itself.
    if (script::execute(command::createColorSlider(name, window, width)))
        widget_ = MQtUtil::findControl(toMaya(name));
    if (widget_) {
        widget_->setParent(nullptr); // before the window goes, which would take it along
        widget_->setFixedWidth(scaledWidth);
        // The parts of Maya's control have these names without being promised.
        if (auto* slider = widget_->findChild<QWidget*>(QStringLiteral("slider")))
            slider->hide();
        if (auto* swatch = widget_->findChild<QWidget*>(QStringLiteral("port")))
            swatch->setFixedHeight(MQtUtil::dpiScale(swatchHeight));
        widget_->setFocusPolicy(Qt::NoFocus);
    }
    script::execute(command::deleteInterface(window));
}

ColorControl::~ColorControl() {
    delete widget_.data();
}

QString ColorControl::path() const {
    const QString full = fromMaya(MQtUtil::fullName(widget_.data()));
    return full.isEmpty() ? name_ : full;
}

void ColorControl::setChangeCommand(const QString& command) {
    if (widget_)
        script::execute(command::setColorSliderCommand(path(), command));
}

void ColorControl::setDragCommand(const QString& command) {
    if (widget_)
        script::execute(command::setColorSliderDragCommand(path(), command));
}

void ColorControl::setColor(const QColor& color) {
    if (widget_)
        script::execute(command::setColorSliderValue(path(), color));
}

std::optional<QColor> ColorControl::color() const {
    if (!widget_)
        return std::nullopt;
    const auto parts = script::executeTriple(command::colorSliderValue(path()));
    if (!parts)
        return std::nullopt;
    return QColor(component((*parts)[0]), component((*parts)[1]), component((*parts)[2]));
}

} // namespace vellum
