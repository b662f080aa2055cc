// The preferences. Modal. The colour of the time slider's markers changes at once and goes back
// when the dialog is cancelled; everything else changes on OK. Main thread only.
#pragma once

#include <QColor>
#include <QDialog>

#include <memory>

namespace vellum {

struct PreferencesForm;

class PreferencesDialog : public QDialog {
    Q_OBJECT

public:
    explicit PreferencesDialog(QWidget* parent);
    ~PreferencesDialog() override;

    void accept() override;
    void reject() override;

public Q_SLOTS:
    void SelectTimelineFrameColor();
    void SetDefaultTimelineFrameColor();

private:
    void showTimelineFrameColor(const QColor& color);

    std::unique_ptr<PreferencesForm> form_;
    QColor colorAtOpening_;
};

} // namespace vellum
