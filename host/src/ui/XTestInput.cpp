#include "ui/XTestInput.h"

#include <Qt>

#include <map>

// After Qt: X's header defines words such as None and Bool.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace host {

namespace {

Display* xDisplay(void* display) {
    return static_cast<Display*>(display);
}

KeySym keySym(int qtKey) {
    static const std::map<int, KeySym> special = {
        {Qt::Key_Escape, XK_Escape},
        {Qt::Key_Tab, XK_Tab},
        {Qt::Key_Backspace, XK_BackSpace},
        {Qt::Key_Return, XK_Return},
        {Qt::Key_Enter, XK_KP_Enter},
        {Qt::Key_Insert, XK_Insert},
        {Qt::Key_Delete, XK_Delete},
        {Qt::Key_Home, XK_Home},
        {Qt::Key_End, XK_End},
        {Qt::Key_Left, XK_Left},
        {Qt::Key_Up, XK_Up},
        {Qt::Key_Right, XK_Right},
        {Qt::Key_Down, XK_Down},
        {Qt::Key_PageUp, XK_Page_Up},
        {Qt::Key_PageDown, XK_Page_Down},
        {Qt::Key_Shift, XK_Shift_L},
        {Qt::Key_Control, XK_Control_L},
        {Qt::Key_Alt, XK_Alt_L},
        {Qt::Key_Meta, XK_Super_L},
        {Qt::Key_AltGr, XK_ISO_Level3_Shift},
    };
    const auto found = special.find(qtKey);
    if (found != special.end())
        return found->second;
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return XK_F1 + KeySym(qtKey - Qt::Key_F1);
    if (qtKey >= Qt::Key_Dead_Grave && qtKey <= Qt::Key_Dead_Cedilla) // in X's order
        return XK_dead_grave + KeySym(qtKey - Qt::Key_Dead_Grave);
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return XK_a + KeySym(qtKey - Qt::Key_A);
    // Both number printable characters as Latin-1 does.
    return qtKey >= 0x20 && qtKey <= 0xff ? KeySym(qtKey) : NoSymbol;
}

} // namespace

bool XTestInput::serverAnswers() {
    Display* display = XOpenDisplay(nullptr);
    if (display)
        XCloseDisplay(display);
    return display != nullptr;
}

std::unique_ptr<XTestInput> XTestInput::open() {
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return nullptr;
    int event = 0, error = 0, major = 0, minor = 0;
    if (!XTestQueryExtension(display, &event, &error, &major, &minor)) {
        XCloseDisplay(display);
        return nullptr;
    }
    XTestGrabControl(display, True); // also while another program has grabbed the server
    return std::unique_ptr<XTestInput>(new XTestInput(display));
}

XTestInput::~XTestInput() {
    if (repeatStopped_)
        XAutoRepeatOn(xDisplay(display_));
    XCloseDisplay(xDisplay(display_));
}

void XTestInput::move(int x, int y) {
    XTestFakeMotionEvent(xDisplay(display_), -1, x, y, CurrentTime);
    XSync(xDisplay(display_), False);
}

void XTestInput::button(int number, bool down) {
    XTestFakeButtonEvent(xDisplay(display_), unsigned(number), down ? True : False, CurrentTime);
    XSync(xDisplay(display_), False);
}

bool XTestInput::key(int qtKey, bool down) {
    const KeySym symbol = keySym(qtKey);
    const KeyCode code = symbol == NoSymbol ? 0 : XKeysymToKeycode(xDisplay(display_), symbol);
    if (!code)
        return false;
    XTestFakeKeyEvent(xDisplay(display_), code, down ? True : False, CurrentTime);
    XSync(xDisplay(display_), False);
    return true;
}

bool XTestInput::needsShift(int qtKey) const {
    const KeySym symbol = keySym(qtKey);
    const KeyCode code = symbol == NoSymbol ? 0 : XKeysymToKeycode(xDisplay(display_), symbol);
    constexpr unsigned lower = 0, upper = 1;
    return code && XkbKeycodeToKeysym(xDisplay(display_), code, 0, lower) != symbol &&
           XkbKeycodeToKeysym(xDisplay(display_), code, 0, upper) == symbol;
}

bool XTestInput::keyRepeats() const {
    XKeyboardState state;
    XGetKeyboardControl(xDisplay(display_), &state);
    return state.global_auto_repeat == AutoRepeatModeOn;
}

void XTestInput::stopKeyRepeat() {
    if (!keyRepeats())
        return;
    XAutoRepeatOff(xDisplay(display_));
    XSync(xDisplay(display_), False);
    repeatStopped_ = true;
}

void XTestInput::pointer(int& x, int& y) const {
    Window root = 0, child = 0;
    int windowX = 0, windowY = 0;
    unsigned mask = 0;
    XQueryPointer(xDisplay(display_), DefaultRootWindow(xDisplay(display_)), &root, &child, &x, &y,
                  &windowX, &windowY, &mask);
}

} // namespace host
