#pragma once

#include <maya/MStatus.h>

namespace host {
class EventAccess;
} // namespace host

/// One event of the mouse in a 3D view, as a tool gets it. Positions are device pixels of the
/// view with the origin at the bottom left.
class MEvent {
public:
    enum ModifierType { shiftKey = 1 << 0, controlKey = 1 << 2 };
    enum MouseButtonType { kLeftMouse = 1 << 6, kMiddleMouse = kLeftMouse << 1 };

    MEvent();
    virtual ~MEvent();

    MStatus getPosition(short& x_pos, short& y_pos) const;
    /// The same event in pixels of the window, origin at the top left.
    MStatus getWindowPosition(short& x_pos, short& y_pos) const;
    MStatus setPosition(short x_pos, short y_pos);

    /// The button that was pressed or released, or is held during a drag. kFailure for an event
    /// without a button.
    MouseButtonType mouseButton(MStatus* ReturnStatus = NULL) const;
    ModifierType modifiers(MStatus* ReturnStatus = NULL) const;
    MStatus setModifiers(const ModifierType& modType);

    bool isModifierNone(MStatus* ReturnStatus = NULL) const;
    bool isModifierShift(MStatus* ReturnStatus = NULL) const;
    bool isModifierControl(MStatus* ReturnStatus = NULL) const;
    bool isModifierLeftMouseButton(MStatus* ReturnStatus = NULL) const;
    bool isModifierMiddleMouseButton(MStatus* ReturnStatus = NULL) const;
    bool isModifierKeyRelease(MStatus* ReturnStatus = NULL) const;

    static const char* className();

private:
    short x_ = 0, y_ = 0;
    short windowX_ = 0, windowY_ = 0;
    int button_ = 0;    ///< MouseButtonType, 0 for none
    int modifiers_ = 0; ///< of ModifierType
    int held_ = 0;      ///< other buttons held, of MouseButtonType
    bool keyRelease_ = false;
    friend class host::EventAccess;
};
