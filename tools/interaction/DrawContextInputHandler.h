// What the drawing tool is not told by Maya, beside what every tool is not: tablet pressure and
// eraser end, keys held for size and opacity, typing, and the time slider's menu. Main thread only.
#pragma once

#include "plugin/base/Tool.h"
#include "tools/interaction/ToolInputHandler.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QWidget>

class QKeyEvent;
class QMenu;
class QMouseEvent;
class QTabletEvent;

namespace vellum {

/// Gets what is typed while a text is being edited.
class TextTarget {
public:
    virtual ~TextTarget() = default;

    /// False when the key is not for the text; it then goes on to Maya.
    virtual bool typeKey(const QKeyEvent& event) = 0;
    /// From an input method. `composing` is not final: it stands behind the text until the next
    /// call replaces it.
    virtual void typeText(const QString& text, const QString& composing) = 0;
    /// Ends the text; the target calls setTextTarget(nullptr). False, after saying why, when the
    /// text has nowhere to go: it is still being typed then.
    virtual bool commitText() = 0;
    /// The same once more: what has been said of this text is not said again.
    virtual bool settleText() = 0;
};

/// Opacity factor, 0..1, of a tablet's raw pressure above 0: eased out above the middle, nothing
/// below 0.08, never a barely visible trace, full from 0.98 on.
float pressureCurve(float raw);

/// A key pressed together with Control, Alt or Meta, meant for Maya. AltGr, which types characters,
/// can come as Control and Alt together. A key that only modifies or composes is none.
bool isCommandKey(const QKeyEvent& event);

/// Whether a key writes something: keys such as Delete or Left have a control character or nothing
/// for their text.
bool isWritten(const QString& keyText);

class DrawContextInputHandler : public ToolInputHandler {
    Q_OBJECT

public:
    DrawContextInputHandler() = default;
    ~DrawContextInputHandler() override;

    void activate(bool active) override;
    void watchActiveView() override;

    /// Sees from now on what a pen does over any 3D view, also one not drawn in yet.
    void watchPens();

    /// The pen is lifted: full pressure and no eraser until it tells otherwise.
    void forgetPen();

    bool sizeKeyHeld() const { return sizeKey_.isHeld(); }
    bool opacityKeyHeld() const { return opacityKey_.isHeld(); }

    /// Typed keys go there from now on; null ends it. Not owned.
    void setTextTarget(TextTarget* target);
    const TextTarget* textTarget() const { return textTarget_; }

    /// The menus, built anew at every call. The caller owns them.
    QMenu* makeDrawMenu(QWidget* parent);
    QMenu* makeTimelineMenu(QWidget* parent);

public Q_SLOTS:
    void SetActiveLayer();
    void TransformTool();
    void SetPencilTool() { choose(Tool::Pencil); }
    void SetBrushTool() { choose(Tool::Brush); }
    void SetEraserTool() { choose(Tool::Eraser); }
    void SetTextTool() { choose(Tool::Text); }
    void SetLineTool() { choose(Tool::Line); }
    void SetArrowTool() { choose(Tool::Arrow); }
    void SetEllipseTool() { choose(Tool::Ellipse); }
    void SetRectangleTool() { choose(Tool::Rectangle); }
    void NewLayer();
    void LayerProperties();
    void InsertFrame();
    void DuplicateFrame();
    void DeleteFrame();
    void CutFrame();
    void CopyFrame();
    void PasteFrame();
    void ClearFrame();
    void StepForward();
    void StepBack();
    void ToggleGhostPrevious();
    void ToggleGhostNext();
    void GhostingSettings();
    void ShowToolbox();
    void ShowToolOptions();
    void ShowLayerManager();
    void ShowRetimingTool();
    void SetTimelineDisplayOn();
    void SetTimelineDisplaySelectionContext();
    void SetTimelineDisplayOff();
    void DeleteActiveLayer();
    void DeleteActiveCameraLayers();
    void ClearAll();

protected:
    bool filterView(QWidget& view, QEvent* event) override;
    bool filterMainWindow(QEvent* event) override;
    bool filterOther(QObject* watched, QEvent* event) override;
    bool filterKey(QEvent* event) override;
    bool isMenuEnabled() const override;
    QMenu* makeMenuAt(QPoint viewPixel) override;
    void releaseKeys() override;

private:
    static void choose(Tool tool);
    bool filterTyping(QEvent* event);
    void commitPendingText();
    void seeMouse(const QMouseEvent& event);
    void relatePenTo(const QMouseEvent& event);
    void readTablet(const QTabletEvent& event);
    bool filterTimeSlider(const QEvent& event);
    void readTabletOver(const QWidget& window, const QTabletEvent& event);
    bool keyPressed(const QKeyEvent& event);
    bool keyReleased(const QKeyEvent& event);
    bool wantsKey(const QKeyEvent& event) const;
    void acceptInputMethod(bool accept);

    WatchedWidgets windows_{this}; ///< of views outside the main window
    TextTarget* textTarget_ = nullptr;
    QPointer<QWidget> timeSlider_;
    QElapsedTimer sinceTablet_; ///< invalid until a pen is used
    bool penDown_ = false;
    bool pressureKnown_ = false; ///< told since the pen is down
    HeldKey sizeKey_{Qt::Key_B};
    HeldKey opacityKey_{Qt::Key_M};
};

} // namespace vellum
