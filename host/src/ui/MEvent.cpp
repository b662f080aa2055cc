#include "ui/ContextState.h"

#include <maya/MEvent.h>

namespace {

void succeed(MStatus* status) {
    if (status)
        *status = MStatus::kSuccess;
}

} // namespace

MEvent::MEvent() = default;
MEvent::~MEvent() = default;

MStatus MEvent::getPosition(short& x_pos, short& y_pos) const {
    x_pos = x_;
    y_pos = y_;
    return MStatus::kSuccess;
}

MStatus MEvent::getWindowPosition(short& x_pos, short& y_pos) const {
    x_pos = windowX_;
    y_pos = windowY_;
    return MStatus::kSuccess;
}

MStatus MEvent::setPosition(short x_pos, short y_pos) {
    x_ = x_pos;
    y_ = y_pos;
    return MStatus::kSuccess;
}

MEvent::MouseButtonType MEvent::mouseButton(MStatus* ReturnStatus) const {
    if (ReturnStatus)
        *ReturnStatus = button_ ? MStatus::kSuccess : MStatus::kFailure;
    return static_cast<MouseButtonType>(button_ ? button_ : int(kLeftMouse));
}

MEvent::ModifierType MEvent::modifiers(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return static_cast<ModifierType>(modifiers_);
}

MStatus MEvent::setModifiers(const ModifierType& modType) {
    modifiers_ = modType;
    return MStatus::kSuccess;
}

bool MEvent::isModifierNone(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return modifiers_ == 0 && held_ == 0;
}

bool MEvent::isModifierShift(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return (modifiers_ & shiftKey) != 0;
}

bool MEvent::isModifierControl(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return (modifiers_ & controlKey) != 0;
}

bool MEvent::isModifierLeftMouseButton(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return (held_ & kLeftMouse) != 0;
}

bool MEvent::isModifierMiddleMouseButton(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return (held_ & kMiddleMouse) != 0;
}

bool MEvent::isModifierKeyRelease(MStatus* ReturnStatus) const {
    succeed(ReturnStatus);
    return keyRelease_;
}

const char* MEvent::className() {
    return "MEvent";
}

namespace host {

MEvent EventAccess::make(int x, int y, int windowX, int windowY, int button, int modifiers,
                         int held) {
    MEvent event;
    event.x_ = static_cast<short>(x);
    event.y_ = static_cast<short>(y);
    event.windowX_ = static_cast<short>(windowX);
    event.windowY_ = static_cast<short>(windowY);
    event.button_ = button;
    event.modifiers_ = modifiers;
    event.held_ = held;
    return event;
}

} // namespace host
