#pragma once

#include "ui/ViewWidget.h"

#include <QWidget>

#include <vector>

class QLabel;
class QMenu;
class QMenuBar;

namespace host {

/// A panel with a 3D view, a menu bar to choose its camera and renderer, and the camera's name
/// below. Registered as panel and as control (the editor of the same name).
class ModelPanel : public QWidget {
    Q_OBJECT
public:
    explicit ModelPanel(const QString& name, QWidget* parent = nullptr);
    ~ModelPanel() override;

    ViewWidget& viewWidget() { return *view_; }
    View& view() { return view_->view(); }
    QMenuBar& menuBar() { return *menuBar_; }
    QString name() const { return objectName(); }

    /// False, and nothing changes, when `camera` names no camera (transform or shape).
    bool lookThrough(const QString& camera);
    /// Name of the camera's transform; "" without one.
    QString cameraName() const;

    /// Null for an unknown name.
    static ModelPanel* find(const QString& name);
    static ModelPanel* of(const View* view);

    /// Brings names and the frame about the active view up to date.
    void updateLabels();

private:
    void fillCameraMenu();

    ViewWidget* view_;
    QMenuBar* menuBar_;
    QMenu* cameras_;
    QLabel* label_;
    std::vector<int> listeners_;
};

} // namespace host
