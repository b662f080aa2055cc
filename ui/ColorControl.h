// Maya's own colour control as a swatch in a dialog of ours: a click on it opens Maya's colour
// chooser. Main thread only.
#pragma once

#include <QColor>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <optional>

namespace vellum {

class ColorControl {
public:
    /// `name` is the control's in Maya, unique in the process; sizes are before the screen's
    /// scale. Where Maya makes none, widget() is null, setting does nothing and there is no colour.
    ColorControl(const QString& name, int width, int swatchHeight);
    /// Deletes the widget, so that the name is free again.
    ~ColorControl();
    ColorControl(const ColorControl&) = delete;
    ColorControl& operator=(const ColorControl&) = delete;

    /// To be put into a layout.
    QWidget* widget() const { return widget_.data(); }

    /// Script that Maya runs when the user has chosen a colour.
    void setChangeCommand(const QString& command);
    /// Script that Maya runs at each step while the user looks for a colour. When he cancels, the
    /// colour from before is back and the change command runs.
    void setDragCommand(const QString& command);

    /// Does not run the change command.
    void setColor(const QColor& color);
    std::optional<QColor> color() const;

private:
    /// As Maya knows it now: a control that was put elsewhere changes its path.
    QString path() const;

    QString name_;
    QPointer<QWidget> widget_;
};

} // namespace vellum
