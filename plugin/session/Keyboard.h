// Who has the keyboard: the view that is drawn in, unless the user types into a field. Main thread
// only.
#pragma once

class QWidget;

namespace vellum {

/// The widget of the active 3D view; null without one.
QWidget* activeViewWidget();

/// Activates the window of the active 3D view and puts the keyboard there, so that the keys of
/// tools and of Maya work again. Activating the window alone is not enough: it gives the keyboard
/// to whatever had it last, a script line maybe. A field that is typed into is left at once, so it
/// may run its commands. Nothing happens without a view, and while a modal dialog or a pop-up is
/// open.
void giveKeyboardToView();

} // namespace vellum
