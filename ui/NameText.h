// Names that users typed or files brought, as widgets show them: on one line, never as markup, and
// never so long that a window grows. Main thread only.
#pragma once

#include <QString>

namespace vellum {

/// Line breaks, tabs and other controls as blanks; the first thousand characters or so: no screen
/// shows more.
QString oneLine(const QString& name);

/// For the text of a menu's entry: a few words wide, ampersands doubled.
QString menuText(const QString& name);

/// For a tool tip, which takes what looks like markup for it.
QString toolTipText(const QString& name);

} // namespace vellum
