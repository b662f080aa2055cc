// What this is, and what a bug report has to tell. Modal. Main thread only.
#pragma once

#include <QDialog>
#include <QString>

namespace vellum {

/// Plain text of several paragraphs.
QString aboutText();

class AboutDialog : public QDialog {
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent);

public Q_SLOTS:
    void CopyToClipboard();
};

} // namespace vellum
