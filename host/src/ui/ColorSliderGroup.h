#pragma once

#include <QColor>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <array>

class QColorDialog;
class QLabel;
class QSlider;

namespace host {

/// Label, color swatch ("port") and brightness slider ("slider"). A click on the swatch opens a
/// color dialog. The color keeps its full precision: only moving the slider changes its value.
class ColorSliderGroup : public QWidget {
    Q_OBJECT
public:
    explicit ColorSliderGroup(QWidget* parent = nullptr);

    using Components = std::array<double, 3>; ///< 0 to 1 each

    Components rgb() const { return rgb_; }
    Components hsv() const; ///< hue 0 to 360
    void setRgb(const Components& rgb);
    void setHsv(const Components& hsv);

    QString label() const;
    void setLabel(const QString& text);
    /// Width of label, swatch or slider (1 to 3), scaled for the screen; false for another column.
    /// The swatch is narrower when the group is.
    bool setColumnWidth(int column, int width);

    QString changeCommand; ///< when the user let go of the slider or chose a color
    QString dragCommand;   ///< while the user moves the slider or looks for a color

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const Components& rgb);
    void dragged(int position);
    void moved();
    void pick();

    QLabel* label_;
    QWidget* port_;
    QSlider* slider_;
    QPointer<QColorDialog> dialog_;
    Components rgb_ = {0, 0, 0};
    double hue_ = 0, saturation_ = 0; ///< kept while the color is black or grey
    bool changed_ = false;            ///< since the slider was taken
};

} // namespace host
