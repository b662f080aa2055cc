// The script commands linked into the test and called through the script line: the status each
// returns, what it shows and asks of the interface, and everything it could change.
#pragma once

#include "document/DocumentEnvironment.h"
#include "plugin/LinkedClasses.h"

#include <QByteArray>

#include <maya/MStatus.h>

namespace vellum::test {

/// What came of one line.
struct Outcome {
    bool reached = false;  ///< the arguments fitted the syntax
    MStatus status;        ///< of the command; success when not reached
    QString result;        ///< "int: 3", "void: "
    QString said;          ///< the plug-in's own errors, without their prefix
    QString log;           ///< what was asked of panels, menu, markers and views, in order
    std::size_t steps = 0; ///< on the undo queue

    QString text() const;
};

/// Interactive, with recorders in place of the panels, the markers, the menu script and the two
/// tool contexts.
class WatchedCommands : public LinkedClasses, public DocumentEnvironment {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Two cameras: persp with the layers a, [b] and c, shotCam with [d]; persp is current. Every
    /// frame has a picture of its own.
    void makeDrawing();
    void addLayer(const char* name, const char* camera, std::initializer_list<int> times);

    Outcome call(const QString& line);
    /// What any script, and all that runs at idle after it, asks of the interface.
    QString logOf(const QString& script);
    /// What is asked of it when the event loop runs next.
    QString logOfNextMoment();
    /// The line fails with this message ("": none) and this status, and leaves everything as it
    /// was.
    void fails(const QString& line, const QString& message,
               MStatus::MStatusCode status = MStatus::kFailure);

    /// Layers of all cameras with all they hold, the current and the previous camera.
    QString drawing() const;
    QString settingsText() const;
    /// All a failed call must leave alone.
    QString everything();

    void undo();
    void redo();
    /// Undoes and redoes the last step again and again; the drawing and the selection must be
    /// those before and after it.
    void goBackAndForth(const QString& before);

    QString currentCamera() const override;
    bool cameraExists(const QString& camera) const override;
    /// So many times whoever asks is told that shotCam exists, then never; -1: the truth.
    mutable int camerasLeft = -1;

    QString contextName; ///< what the stand-ins of the context commands answer
};

} // namespace vellum::test
