// What a click on a panel issues. Which commands these are is worked out by functions without
// widgets, from the control, the settings and the selection; the panels only carry them out. Main
// thread only.
#pragma once

#include <QString>

#include <vector>

namespace vellum {

struct PanelCommand {
    enum class When {
        Now,
        Idle, ///< when Maya is idle next; no echo but an error's
    };

    QString script; ///< empty: nothing is issued
    bool echo = false;
    bool undo = false;
    When when = When::Now;

    /// Shown in the script history, without undo: settings and tools.
    static PanelCommand echoed(const QString& script) { return {script, true, false, When::Now}; }
    /// Not shown, with undo: changes of layers.
    static PanelCommand undoable(const QString& script) { return {script, false, true, When::Now}; }
    /// Shown, with undo.
    static PanelCommand echoedUndoable(const QString& script) {
        return {script, true, true, When::Now};
    }
    /// Neither: what only arranges for more to happen later.
    static PanelCommand silent(const QString& script) { return {script, false, false, When::Now}; }
    static PanelCommand onIdle(const QString& script) { return {script, false, false, When::Idle}; }
};

using PanelCommands = std::vector<PanelCommand>;

/// In order; one that fails has said so itself and does not keep the next from being issued. The
/// panel that asked may be gone afterwards, with all its widgets.
void issue(const PanelCommands& commands);

} // namespace vellum
