// An artist's desk: the whole product in one process, the plug-in loaded as a library, worked with
// pointer and keys, judged by what the screen shows.
#pragma once

#include "support/Hand.h"
#include "support/Session.h"

#include <QImage>
#include <QMessageBox>
#include <QPoint>
#include <QTemporaryDir>

#include <map>
#include <vector>

namespace host {
class ViewWidget;
}

namespace vellum::test {

/// On the demo shot, at frame 1, looking through shotCam.
class Desk : public Session {
protected:
    void SetUp() override;

    host::ViewWidget& view();
    int now() { return number(QStringLiteral("int($vlNow = `currentTime -q`)")); }
    bool isModified() { return number(QStringLiteral("file -q -modified")) == 1; }

    // --- What the user does --------------------------------------------------------------------

    void take(const char* tool); ///< "pencil", "brush" or "eraser"
    /// Presses at the first place and drags to the others, in pixels of the view from its top left;
    /// before each next move the screen must have followed. The button stays down.
    void drag(const std::vector<QPoint>& places);
    void stroke(const std::vector<QPoint>& places);
    void scrub(int frame); ///< a press on the time slider
    void chooseFromMenu(const QString& menu, const QString& entryStart);
    void lookThrough(const char* camera);
    /// Tries to close the window; the answer is given if a question comes. Whether one came.
    bool closeAsks(QMessageBox::StandardButton answer);

    // --- What the user sees --------------------------------------------------------------------

    /// The view as the X server has it now.
    QImage onScreen();
    /// The view once it has come to rest.
    QImage picture();
    /// Waits until the view looks like this.
    bool shows(const QImage& picture);

    QString file(const char* name) { return directory_.filePath(QLatin1String(name)); }
    void save(const QString& path);
    void open(const QString& path);

    support::Hand hand;

private:
    QTemporaryDir directory_;
};

/// Whether two pictures differ within two pixels of a place.
bool differAt(const QImage& a, const QImage& b, QPoint place);

} // namespace vellum::test
