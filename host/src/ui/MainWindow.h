#pragma once

#include <QHash>
#include <QIcon>
#include <QMainWindow>
#include <QString>
#include <QTimer>

#include <map>
#include <string>
#include <vector>

class QAction;
class QMenu;
class QToolButton;

namespace host {

class HelpLine;
class ModelPanel;
class ScriptLine;
class TimeBar;
class TimeSlider;

/// The program's window. One at a time; scripts know it as $gMainWindow.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow();
    ~MainWindow() override;

    /// Null when there is none.
    static MainWindow* instance();

    ModelPanel& mainPanel() { return *panel_; }
    TimeSlider& timeSlider() { return *timeSlider_; }
    ScriptLine& scriptLine() { return *scriptLine_; }

    /// Asks what to do with unsaved changes: true when the scene may be replaced or left, at once
    /// when there are none.
    bool askToSave();
    bool askToSaveOverDamage();

    // The actions of the File menu; false when the user cancelled or it failed (reported).
    bool newScene();
    bool openScene(); ///< asks for the file
    bool openScene(const QString& path);
    bool save();
    bool saveAs();

    /// Closes without a question.
    void closeForced();

    void showHelp(const QString& text); ///< what the tool is for, until the next one
    /// Scene name, and a star while there are unsaved changes.
    void updateTitle();

Q_SIGNALS:
    void closed(); ///< by the user or by closeForced

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    void buildMenus();
    void buildMenuSetChooser();
    void buildFileMenu();
    void buildEditMenu();
    void buildCentre();
    void buildToolBox();
    QMenu* addMenu(const QString& name, const QString& label);
    void updateEditMenu();
    QIcon toolIcon(const QString& file);
    void updateTool();
    void sceneChanged();
    void showAbout();

    ModelPanel* panel_ = nullptr;
    TimeSlider* timeSlider_ = nullptr;
    TimeBar* timeBar_ = nullptr;
    ScriptLine* scriptLine_ = nullptr;
    HelpLine* helpLine_ = nullptr;
    QToolButton* select_ = nullptr;
    QToolButton* lastTool_ = nullptr;
    QAction* lastToolAction_ = nullptr;
    std::string lastToolName_;
    QHash<QString, QIcon> toolIcons_; ///< by the file of their picture
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QTimer modifiedTimer_; ///< nothing tells of a scene becoming modified
    bool forced_ = false;
    int toolListener_ = 0;
    std::vector<int> eventListeners_;
};

} // namespace host
