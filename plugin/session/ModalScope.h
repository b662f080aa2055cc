// Modal dialogs run an event loop of their own, in which anything may happen, the plug-in's unload
// included, whose code is on the stack then. Main thread only.
#pragma once

namespace vellum {

/// Lives around every exec() and every static dialog function. While one lives, the plug-in refuses
/// to be unloaded.
class ModalScope {
public:
    ModalScope();
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

    static bool anyOpen();
};

} // namespace vellum
