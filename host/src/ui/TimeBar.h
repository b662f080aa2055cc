#pragma once

#include <QWidget>

class QDoubleSpinBox;
class QToolButton;

namespace host {

/// Below the time slider: the playback range, the playback buttons and the current time.
class TimeBar : public QWidget {
    Q_OBJECT
public:
    explicit TimeBar(QWidget* parent = nullptr);
    ~TimeBar() override;

    QDoubleSpinBox& currentField() { return *current_; }

    /// Brings the fields up to date; by itself it happens when time or range change.
    void showTime();

private:
    QToolButton* addButton(int icon, const QString& tip);
    QDoubleSpinBox* addField(const QString& tip);

    QDoubleSpinBox* first_;
    QDoubleSpinBox* last_;
    QDoubleSpinBox* current_;
    QToolButton* play_;
    int timeListener_ = 0;
};

} // namespace host
