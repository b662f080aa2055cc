// What the ghosting and the retiming dialog issue.
#pragma once

#include "ui/PanelCommand.h"

#include <QColor>
#include <QString>

namespace vellum {

struct GhostingChoice {
    int previousCount; ///< 1..9
    int nextCount;
    bool colorOverride;
    QColor previousColor;
    QColor nextColor;
};

/// All of it, changed or not.
PanelCommands ghostingCommands(const GhostingChoice& choice);

/// Of the button with this text, "3f" or "-1f" or "+2f"; nothing for one without a number.
PanelCommands retimeCommands(const QString& buttonText, bool relative, bool moveToNext);

} // namespace vellum
