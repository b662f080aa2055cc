// The place of an import that is not built yet. Not modal. Main thread only.
#pragma once

#include <QDialog>

namespace vellum {

class ReelviewProImportDialog : public QDialog {
    Q_OBJECT

public:
    explicit ReelviewProImportDialog(QWidget* parent);

public Q_SLOTS:
    /// Says that it is to be done, and changes nothing.
    void Import();
};

} // namespace vellum
