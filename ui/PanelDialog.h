// What the floating panels share: their place on the screen, and that the keyboard stays with the
// view that is drawn in. Main thread only.
#pragma once

#include "plugin/base/Settings.h"

#include <QByteArray>
#include <QDialog>

namespace vellum {

class PanelDialog : public QDialog {
    Q_OBJECT

public:
    /// Where the place is kept, as QWidget::saveGeometry() gives it; null: nowhere.
    using Geometry = QByteArray Settings::*;

    enum class Keyboard {
        Never,    ///< the panel has no field to type into and never becomes the active window
        InFields, ///< only while the user types into one of its fields
    };
    enum class Restore {
        EveryShow,
        Once, ///< at construction; between closing and showing the window stays where it is anyway
    };

    /// Stores the place in the settings. Done whenever the panel is closed, however that happens;
    /// called before it is deleted while shown.
    void storeGeometry();

    /// Shows the panel, or brings one that is shown to the front. The keyboard stays where it is.
    void present();

protected:
    PanelDialog(Geometry geometry, Keyboard keyboard, QWidget* parent,
                Restore restore = Restore::EveryShow);

    /// After an action: the keys of tools and of Maya are meant for the view again.
    void actionDone();

    /// Before the panel shows: bring it up to date.
    virtual void refreshForShow() {}

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void restorePlace();

    Geometry geometry_;
    Restore restore_;
};

/// Takes the button for context help out of the title bar.
void removeContextHelpButton(QDialog& dialog);

} // namespace vellum
