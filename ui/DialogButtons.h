// The row at the bottom of the modal dialogs. Main thread only.
#pragma once

class QDialog;
class QHBoxLayout;
class QPushButton;

namespace vellum {

struct DialogButtons {
    QHBoxLayout* row; ///< for the dialog's layout
    QPushButton* ok;  ///< the default button
    QPushButton* cancel;
};

/// "OK" and "Cancel" at the right end; what they do is connected by the dialog.
DialogButtons makeDialogButtons(QDialog& dialog);

} // namespace vellum
