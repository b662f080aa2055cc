// The palette of tools, drawing colour, ghost switches and frame operations. Main thread only.
#pragma once

#include "plugin/base/Tool.h"
#include "plugin/base/ToolTable.h"
#include "ui/ColorControl.h"
#include "ui/PanelCommand.h"
#include "ui/PanelDialog.h"

#include <array>
#include <optional>

class QBoxLayout;

namespace vellum {

class FlatButton;
class ToolOptionsDialog;

class ToolboxDialog : public PanelDialog {
    Q_OBJECT

public:
    explicit ToolboxDialog(QWidget* parent);

    /// Takes tool, colour and ghost switches as they stand.
    void refresh();
    /// That of the pop-up, while it is open.
    void refreshToolOptions();

    /// What the colour control shows.
    std::optional<QColor> pickedColor() const { return picker_.color(); }

public Q_SLOTS:
    void SetPencilTool() { choose(Tool::Pencil); }
    void SetBrushTool() { choose(Tool::Brush); }
    void SetEraserTool() { choose(Tool::Eraser); }
    void SetTextTool() { choose(Tool::Text); }
    void SetLineTool() { choose(Tool::Line); }
    void SetArrowTool() { choose(Tool::Arrow); }
    void SetEllipseTool() { choose(Tool::Ellipse); }
    void SetRectangleTool() { choose(Tool::Rectangle); }
    void ToggleGhostPrevious();
    void ToggleGhostNext();
    void InsertKey();
    void DuplicateKey();
    void DeleteKey();
    void CutKey();
    void CopyKey();
    void PasteKey();
    /// These two take the number that the sending menu entry carries.
    void SetGhostPreviousCount();
    void SetGhostNextCount();
    void ShowGhostingSettings();
    /// `position` in this dialog.
    void ShowContextMenu(const QPoint& position);

protected:
    void refreshForShow() override { refresh(); }
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    using Slot = void (ToolboxDialog::*)();

    void addTools(QBoxLayout& rows);
    void connectTool(FlatButton& button, const ToolInfo& tool);
    void addGhosts(QBoxLayout& rows);
    void addFrameOperations(QBoxLayout& rows);
    FlatButton* addButton(QBoxLayout& row, const char* icon, int padding, int side,
                          const char* toolTip);
    void addDashes(QBoxLayout& rows);

    void run(const PanelCommands& commands);
    void choose(Tool tool);
    void showOptions(const FlatButton& button, Tool tool);
    void showGhostMenu(int current, Slot setCount, const QPoint& globalPosition);

    QColor idle_; ///< backgrounds of buttons
    QColor active_;
    std::array<FlatButton*, kDrawToolCount> tools_{}; ///< by number; children, as all here
    FlatButton* ghostPrevious_ = nullptr;
    FlatButton* ghostNext_ = nullptr;
    ColorControl picker_;
    bool choosesColor_ = false;            ///< the swatch was clicked, which opens Maya's chooser
    ToolOptionsDialog* options_ = nullptr; ///< the pop-up
};

} // namespace vellum
