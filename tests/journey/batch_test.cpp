// Whole jobs without window and display: what a script makes, the next process finds.
#include "journey/LayerData.h"
#include "support/HostProgram.h"
#include "support/Paths.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using support::HostProgram;
using support::Outcome;
using testing::HasSubstr;
using testing::Not;

namespace vellum::test {
namespace {

class Batch : public ::testing::Test {
protected:
    QString path(const QString& name) { return directory_.filePath(name); }

    /// Runs with the plug-in loaded and no display to be found; settings last from run to run.
    Outcome run(const QStringList& arguments) {
        return HostProgram(QStringList{"--batch", "--plugin", support::pluginPath()} + arguments,
                           directory_.path(),
                           {"DISPLAY", "", "WAYLAND_DISPLAY", "", "MAYA_APP_DIR", path("prefs"),
                            "VELLUM_OUTPUT", directory_.path()})
            .outcome();
    }

    /// What a script prints that must run to its end.
    std::string printed(const QStringList& arguments) {
        SCOPED_TRACE(arguments.join(QLatin1Char(' ')).toStdString());
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_THAT(outcome.err, Not(HasSubstr("Error")));
        return outcome.out;
    }

    QString script(const QString& name, const QByteArray& text) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    static QStringList demo() {
        return {"--script", support::sourcePath("resources/demo/batch.mel")};
    }

private:
    QTemporaryDir directory_;
};

TEST_F(Batch, TheNextProcessFindsDrawingAndSettings) {
    EXPECT_THAT(printed(demo()), HasSubstr("saved 2 layers"));
    const QString look = script("look.mel", R"(
        string $camera = `rvVellumNode -query -camera`;
        int $count = `rvVellumLayer -count $camera`;
        for ($i = 0; $i < $count; ++$i)
            print (`rvVellumLayer -queryName $i $camera` + " " +
                   `rvVellumLayer -queryState $i $camera` + " " +
                   `rvVellumLayer -queryOpacity $i $camera` + "\n");
        int $times[];
        do {
            $times[size($times)] = `currentTime -query`;
            rvVellumFrame -stepForward $camera;
        } while (`currentTime -query` != $times[0]);
        print ($camera + ":");
        for ($time in $times)
            print (" " + $time);
        int $color[] = `rvVellumUtil -query -drawColor`;
        print ("\n" + $color[0] + " " + $color[1] + " " + $color[2] + " ghosts " +
               `rvVellumUtil -query -ghostPreviousCount` + "\n");
    )");
    for (const QString form : {"ma", "mb"}) {
        SCOPED_TRACE(form.toStdString());
        EXPECT_THAT(printed({"--open", path("batch." + form), "--script", look, "--command",
                             QStringLiteral("file -rename \"%1\"; file -type mayaAscii; file -save")
                                 .arg(path("again-" + form + ".ma"))}),
                    HasSubstr("Background 1 1\nRough 0 0.5\nshotCam: 1 4 7 10\n"
                              "30 60 200 ghosts 2\n"));
        EXPECT_EQ(layerData(path("again-" + form + ".ma")), layerData(path("batch.ma")));
    }
    EXPECT_EQ(layerData(path("batch.ma")).size(), 1);
}

TEST_F(Batch, AnErrorEndsTheScriptAndTheProgram) {
    struct Case {
        const char* line;
        const char* message;
    };
    const Case cases[] = {
        {"rvVellumFrame -insert;", "// Error: [Vellum2] Camera not specified //"},
        {"rvVellumFrame -insert persp;",
         "// Error: [Vellum2] Failed to insert key. Node does not exist. //"},
        {"rvVellumLayer -count nobody;", "// Error: [Vellum2] Camera does not exist: nobody //"},
        {"rvVellumNode -wrong;", "line 2: Invalid flag '-wrong'. //"},
        {"rvVellumNode -layer -camera persp; rvVellumNode;",
         "// Error: [Vellum2] Node already exists //"},
        {"rvVellumUtil -toolbox;", "// Error: "}, // there is nowhere to show it
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        const QString file = script("faulty.mel", QByteArray("rvVellumUtil -edit -gnc 7;\n") +
                                                      c.line + "\nprint \"went on\";\n");
        const Outcome outcome = run({"--script", file, "--command", "print \"next\""});
        EXPECT_EQ(outcome.code, 1) << c.line;
        EXPECT_THAT(outcome.err, HasSubstr(c.message));
        EXPECT_THAT(outcome.out, Not(HasSubstr("went on"))) << c.line;
        EXPECT_THAT(outcome.out, Not(HasSubstr("next"))) << c.line;
        // Settings that were changed before are kept all the same.
        EXPECT_THAT(printed({"--command", "print `rvVellumUtil -q -gnc`; rvVellumUtil -e -gnc 1"}),
                    HasSubstr("7"));
        // A script may expect it.
        EXPECT_EQ(run({"--command", QStringLiteral("catch(eval(\"%1\"))").arg(c.line)}).code, 0);
    }
    const Outcome missing = run({"--script", path("nowhere.mel")});
    EXPECT_EQ(missing.code, 1);
    EXPECT_THAT(missing.err, HasSubstr("Error: Cannot find file"));
    EXPECT_EQ(run({"--command", "quit -exitCode 3 -force"}).code, 3);
}

} // namespace
} // namespace vellum::test
