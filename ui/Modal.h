// Modal dialogs and pop-up menus. While either is open, panels and drawings may come and go. Main
// thread only.
#pragma once

#include <QColor>
#include <QMenu>
#include <QPoint>

#include <optional>

class QDialog;
class QString;
class QWidget;

namespace vellum {

/// Runs the dialog; afterwards the view has the keyboard. True when it was accepted. Maya may have
/// deleted the dialog, and whoever opened it, meanwhile.
bool runModal(QDialog* dialog);

/// Qt's colour dialog, not the desktop's. An empty answer when the user cancels.
std::optional<QColor> chooseColor(const QColor& initial, const QString& title, QWidget* parent);

/// Shows the menu, a child of Maya's main window from here on, and deletes it when it has been
/// closed. It does not wait: what the menu was opened from may be gone when an entry is chosen, so
/// entries carry what they need by value.
void popUp(QMenu* menu, const QPoint& globalPosition);

/// Closes and deletes the menu that popUp() has open, if any: its entries run our code.
void closePopUp();

} // namespace vellum
