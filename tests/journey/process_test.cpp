// The product across processes: what one draws and saves, the next finds.
#include "journey/LayerData.h"
#include "support/HostProgram.h"
#include "support/Paths.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include <cmath>
#include <gmock/gmock.h>

using support::HostProgram;
using support::Outcome;
using testing::HasSubstr;
using testing::Not;

namespace vellum::test {
namespace {

class Processes : public ::testing::Test {
protected:
    QString path(const QString& name) { return directory_.filePath(name); }

    /// The plug-in loaded, the demo shot open.
    QStringList shot() {
        return withPlugin(
            {"--size", "900x700", "--script", support::sourcePath("resources/demo/shot.mel")});
    }
    static QStringList withPlugin(const QStringList& rest) {
        return QStringList{"--plugin", support::pluginPath()} + rest;
    }

    /// Writes a session of these steps, each a script or "x y" for a wavy stroke there.
    QString session(const QStringList& steps) {
        QFile file(path("session.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("vellum-session 1\nspace view 800 600\n");
        double time = 0.1;
        for (const QString& step : steps) {
            const QStringList place = step.split(' ');
            bool isStroke = false;
            const double x = place.first().toDouble(&isStroke);
            if (isStroke)
                time = writeStroke(file, time, x, place.value(1).toDouble());
            else
                file.write(line(time, "command " + step));
            time += 0.05;
        }
        return file.fileName();
    }

    static QByteArray line(double time, const QString& step) {
        return (QString::number(time, 'f', 3) + ' ' + step + '\n').toUtf8();
    }

    static double writeStroke(QFile& file, double time, double x, double y) {
        QString last;
        for (int i = 0; i < 30; ++i, time += 0.012) {
            last = QStringLiteral("%1 %2").arg(x + 8 * i).arg(y + 30 * std::sin(i * 0.4));
            file.write(line(time, (i == 0 ? "press left " : "move ") + last));
        }
        file.write(line(time, "release left " + last));
        return time;
    }

    static QString save(const QString& file) {
        const QString form = file.endsWith(".mb") ? "mayaBinary" : "mayaAscii";
        return QStringLiteral("file -rename \"%1\"; file -type \"%2\"; file -save").arg(file, form);
    }

    static QString sheet(const QString& file) {
        return QStringLiteral("currentTime 1; hostContactSheet -start 1 -end 13 -byFrame 6 "
                              "-columns 3 -width 400 -file \"%1\"")
            .arg(file);
    }

    Outcome run(const QStringList& arguments) {
        return HostProgram(arguments, directory_.path()).outcome();
    }
    void succeeds(const QStringList& arguments) {
        const Outcome outcome = run(arguments);
        SCOPED_TRACE(arguments.join(QLatin1Char(' ')).toStdString());
        ASSERT_EQ(outcome.code, 0) << outcome.err << outcome.out;
        EXPECT_THAT(outcome.err, Not(HasSubstr("Error"))) << outcome.out;
    }
    QStringList files() { return QDir(directory_.path()).entryList(QDir::Files, QDir::Name); }

    QTemporaryDir directory_;
};

/// Share of the pixels of which a channel differs by more than a step that antialiasing explains.
double shareOfDifferent(const QImage& a, const QImage& b) {
    if (a.size() != b.size() || a.isNull())
        return 1;
    constexpr int visible = 40;
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            count += std::abs(qRed(p) - qRed(q)) > visible ||
                             std::abs(qGreen(p) - qGreen(q)) > visible ||
                             std::abs(qBlue(p) - qBlue(q)) > visible
                         ? 1
                         : 0;
        }
    }
    return double(count) / (double(a.width()) * a.height());
}

} // namespace

TEST_F(Processes, TheDemoBeginsWithNothingToSaveOrUndo) {
    succeeds(shot() +
             QStringList{"--script", support::sourcePath("resources/demo/begin.mel"), "--replay",
                         session({"if (`file -q -modified`) error \"modified\"",
                                  "if (!`undoInfo -q -undoQueueEmpty`) error \"a step to undo\"",
                                  "if (`currentCtx` == \"selectSuperContext\") error \"no brush\"",
                                  "200 150", "if (!`file -q -modified`) error \"no stroke\"",
                                  "quit -force"})});
}

TEST_F(Processes, WhatOneDrawsTheNextShowsInBothFormsAndRenderers) {
    succeeds(shot() +
             QStringList{"--command", sheet(path("blank.png")), "--replay",
                         session({"rvVellumUtil -pencilTool; rvVellumUtil -pencilOptions 9 100 0; "
                                  "rvVellumUtil -e -drawColor 255 20 20; currentTime 1",
                                  "200 150",
                                  "rvVellumUtil -brushTool; rvVellumUtil -brushOptions 50 60 50 0; "
                                  "currentTime 7",
                                  "250 300", "250 380", "rvVellumUtil -eraserTool", "200 340",
                                  sheet(path("drawn.png")), save(path("shot.ma")),
                                  save(path("shot.mb")), "quit -force"})});
    const QImage blank(path("blank.png")), drawn(path("drawn.png"));
    const double ink = shareOfDifferent(blank, drawn);
    EXPECT_GT(ink, 0.01);
    for (const QString form : {"ma", "mb"}) {
        SCOPED_TRACE(form.toStdString());
        succeeds(withPlugin({"--size", "900x700", "--open", path("shot." + form), "--command",
                             "lookThroughModelPanel shotCam `getPanel -withFocus`", "--command",
                             sheet(path(form + ".png")), "--command", "quit -force"}));
        EXPECT_EQ(QImage(path(form + ".png")), drawn) << form.toStdString();
        succeeds(withPlugin({"--batch", "--open", path("shot." + form), "--command",
                             save(path("again-" + form + ".ma"))}));
        EXPECT_EQ(layerData(path("again-" + form + ".ma")), layerData(path("shot.ma")));
    }
    succeeds(withPlugin({"--size", "900x700", "--renderer", "legacy", "--open", path("shot.ma"),
                         "--command", "lookThroughModelPanel shotCam `getPanel -withFocus`",
                         "--command", sheet(path("legacy.png")), "--command", "quit -force"}));
    EXPECT_LT(shareOfDifferent(QImage(path("legacy.png")), drawn), ink / 20);
}

TEST_F(Processes, DyingInTheMiddleOfAStrokeLeavesTheLastSave) {
    QString endless = session({"rvVellumUtil -brushTool", "200 150", save(path("safe.ma")),
                               save(path("safe.mb")), "print \"saved\\n\""});
    QFile file(endless);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("2 press left 200 300\n2.1 move 300 320\n2.2 move 350 340\n"
               "2.3 command print \"drawing\\n\"\n60 release left\n");
    file.close();
    HostProgram program(shot() + QStringList{"--replay", endless});
    ASSERT_TRUE(program.prints("drawing")) << program.outcome().err;
    program.kill();
    EXPECT_EQ(files(), (QStringList{"safe.ma", "safe.mb", "session.txt"}));
    for (const QString form : {"ma", "mb"}) {
        SCOPED_TRACE(form.toStdString());
        succeeds(withPlugin({"--batch", "--open", path("safe." + form), "--command",
                             save(path("read-" + form + ".ma"))}));
        EXPECT_EQ(layerData(path("read-" + form + ".ma")), layerData(path("safe.ma")));
    }
    EXPECT_TRUE(layerData(path("safe.ma")).value(0).contains("89504e47"));
}

TEST_F(Processes, TheProgramOutlivesThePluginAndWhatItTyped) {
    const QString typing = "0.1 press left 200 300\n0.15 release left 200 300\n"
                           "0.2 key A\n0.25 key B\n0.3 key Escape\n";
    QFile file(path("type.session"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    double start = 0;
    const auto add = [&](const QString& steps) {
        for (const QString& step : steps.split('\n', Qt::SkipEmptyParts))
            file.write(line(start + step.section(' ', 0, 0).toDouble(), step.section(' ', 1)));
        start += 0.5;
    };
    file.write("vellum-session 1\nspace view 800 600\n");
    for (int cycle = 0; cycle < 2; ++cycle) {
        // What is deferred here comes when the plug-in has gone, then when it is back.
        add("0 command rvVellumUtil -textTool\n" + typing);
        add("0 command file -f -new; rvVellumNode -layer; file -f -new; unloadPlugin vellum2\n"
            "0.1 command currentTime 3\n"
            "0.2 command loadPlugin \"" +
            support::pluginPath() +
            "\"\n"
            "0.3 command play -state on\n0.4 command play -state off\n");
    }
    // With the draw tool current and a text open.
    add("0 command rvVellumUtil -textTool\n" + typing.section('\n', 0, 2));
    add("0 command unloadPlugin -force vellum2; print(\"tool \" + `currentCtx` + \"\\n\")\n"
        "0.1 command file -f -new; quit -force\n");
    file.close();
    const Outcome outcome = HostProgram(shot() + QStringList{"--replay", file.fileName()},
                                        directory_.path(), {"MAYA_APP_DIR", path("prefs")})
                                .outcome();
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.err.find("Error"), std::string::npos) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("tool selectSuperContext"));
}

TEST_F(Processes, MachinesWithoutThePluginHandDrawingsOn) {
    succeeds(shot() + QStringList{"--replay", session({"rvVellumUtil -brushTool", "200 150",
                                                       save(path("shot.ma")), save(path("shot.mb")),
                                                       "quit -force"})});
    for (const QString form : {"ma", "mb"}) {
        SCOPED_TRACE(form.toStdString());
        const QString kept = path("kept." + form);
        const Outcome outcome = run({"--batch", "--open", path("shot." + form), "--command",
                                     "polyCube -name \"addedElsewhere\"", "--command", save(kept)});
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("vellum2")) << "it warns";
        succeeds(withPlugin({"--batch", "--open", kept, "--command",
                             "if (!`objExists addedElsewhere` || `nodeType vellumShape` != "
                             "\"rvVellum\") error \"lost\"",
                             "--command", save(path("back-" + form + ".ma"))}));
        EXPECT_EQ(layerData(path("back-" + form + ".ma")), layerData(path("shot.ma")));
    }
}

} // namespace vellum::test
