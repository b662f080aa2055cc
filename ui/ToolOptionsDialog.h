// Size, opacity, tablet switch and font of one tool: as a panel, of the active tool; as a pop-up of
// the toolbox, of the tool it is told. Main thread only.
#pragma once

#include "plugin/base/Settings.h"
#include "plugin/base/Tool.h"
#include "ui/PanelDialog.h"

#include <optional>

class QCheckBox;
class QFontComboBox;
class QFormLayout;
class QKeyEvent;
class QLabel;
class QSlider;
class QSpinBox;

namespace vellum {

struct ToolInfo;

class ToolOptionsDialog : public PanelDialog {
    Q_OBJECT

public:
    enum class Form { StandAlone, PopUp };

    ToolOptionsDialog(Form form, Tool tool, QWidget* parent);

    /// Of the pop-up; the panel shows the active tool whatever it is told.
    void showTool(Tool tool);

    /// Takes the options as they stand. A value being typed stays unless the option has changed.
    void refresh();

public Q_SLOTS:
    void SetSize();
    void SetSize(int size);
    void SetOpacity();
    void SetOpacity(int percent);
    void SetTabletPressureEnabled(bool on);
    void SetFontFamily(const QString& family);

protected:
    void refreshForShow() override { refresh(); }
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// A number as a field to type into and a slider.
    struct Pair {
        QSpinBox* box = nullptr;
        QSlider* slider = nullptr;

        void set(int value, int largest) const;
        void setVisible(bool visible) const;
    };

    Pair addPair(const QString& label, const QString& name);
    void connectControls();
    void arrangeFor(const ToolInfo* tool);
    void showValues(const ToolInfo& tool, const ToolOptions& options);
    void showFont(const QString& family);

    /// The one the user types into; null when there is none.
    QWidget* typedField() const;
    void restoreField(const QWidget& field);
    /// Takes the value that is being typed.
    void leaveField();
    /// Leaves the field and gives the keyboard to the view.
    void done();
    bool passesOn(QKeyEvent& key);

    Form form_;
    Tool tool_;
    bool showing_ = false;             ///< the controls change because the settings did
    std::optional<Tool> arranged_;     ///< whose rows are in the form
    std::optional<ToolOptions> shown_; ///< what the controls were set to; empty: nothing yet
    QString familyBefore_;             ///< before the user began to type one
    QString fontTextBefore_;

    QFormLayout* rows_ = nullptr;
    Pair size_;
    Pair opacity_;
    QLabel* opacityLabel_ = nullptr;
    QLabel* tabletLabel_ = nullptr;
    QCheckBox* tablet_ = nullptr;
    QLabel* fontLabel_ = nullptr;
    QFontComboBox* fonts_ = nullptr;
};

} // namespace vellum
