// The widgets of the preferences and their settings. Main thread only.
#pragma once

#include "plugin/base/Settings.h"

#include <vector>

class QCheckBox;
class QDialog;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace vellum {

class FlatButton;

/// The widgets are children of the dialog it is laid out in.
struct PreferencesForm {
    explicit PreferencesForm(QDialog& dialog);

    void read(const Settings& from);
    /// All but the colour of the markers, which the swatch holds.
    void write(Settings& to) const;

    struct Switch {
        QCheckBox* box;
        bool Settings::*setting;
    };

    FlatButton* timelineFrameColorBtn;
    QPushButton* timelineFrameColorDefaultBtn;
    std::vector<Switch> switches;
    QRadioButton* animLayerTypeRB;
    QRadioButton* staticLayerTypeRB;
    QSpinBox* defaultStaticFrameTimeSB;
    QPushButton* ok;
    QPushButton* cancel;
};

} // namespace vellum
