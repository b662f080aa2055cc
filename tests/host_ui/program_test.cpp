// vellum-host as a program: its options, exit codes, pictures and replays.
#include "host_ui/ProgramTest.h"
#include "support/Hand.h"
#include "support/Paths.h"
#include "ui/XTestInput.h"

#include <QImage>
#include <QSet>

#include <gmock/gmock.h>

using support::Outcome;
using testing::HasSubstr;
using testing::Not;

namespace {

class Program : public hosttest::ProgramTest {};

} // namespace

TEST_F(Program, WrongCommandLinesAreUsageErrors) {
    const struct {
        QStringList arguments;
        const char* says;
    } cases[] = {
        {{"--nonsense"}, "--nonsense"},
        {{"scene.ma"}, "scene.ma"},
        {{"--open"}, "--open needs a value"},
        {{"--open="}, "--open needs a value"},
        {{"--renderer", "vulkan"}, "vulkan"},
        {{"--size", "0x100"}, "0x100"},
        {{"--size", "large"}, "large"},
        {{"--batch", "--replay", "x"}, "--replay"},
        {{"--batch", "--screenshot", "x.png"}, "--screenshot"},
    };
    for (const auto& wrong : cases) {
        SCOPED_TRACE(wrong.says);
        const Outcome outcome = run(wrong.arguments);
        EXPECT_EQ(outcome.code, 2) << wrong.says;
        EXPECT_THAT(outcome.err, HasSubstr(wrong.says));
        EXPECT_THAT(outcome.err, HasSubstr("Usage:"));
        EXPECT_EQ(outcome.out, "");
    }
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const char* option : {"--batch", "--plugin", "--open", "--script", "--command", "--replay",
                               "--renderer", "--size", "--screenshot"})
        EXPECT_THAT(help.out, HasSubstr(option));
}

TEST_F(Program, BatchRunsScriptsInOrderAndTellsFailures) {
    const QString first = write("first.mel", "print \"at:first\\n\";\n");
    const QString wrong = write("wrong.mel", "int $a = 1;\n\nnoSuchProcedure();\n");
    Outcome outcome = run({"--batch", "--script", first, "--command",
                           "print (\"at:\" + `about -batch` + \"\\n\"); "
                           "evalDeferred(\"print \\\"at:later\\\\n\\\"\")",
                           "--script", first});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(marks(outcome.out), (std::vector<std::string>{"first", "1", "later", "first"}));

    outcome = run({"--batch", "--script", wrong, "--script", first});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("wrong.mel"));
    EXPECT_THAT(outcome.err, HasSubstr("3"));
    EXPECT_TRUE(marks(outcome.out).empty()) << "what follows a failure does not run";

    EXPECT_EQ(run({"--batch", "--script", "missing.mel"}).code, 1);
    EXPECT_EQ(run({"--batch", "--open", "missing.ma"}).code, 1);
    outcome = run({"--batch", "--plugin", "missing.so"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("missing.so"));
    EXPECT_EQ(run({"--batch", "--command", "quit -exitCode 7", "--command", "error \"x\""}).code,
              7);
    // A folder opens like a file but cannot be read.
    outcome = run({"--batch", "--script", directory.path()});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("Cannot read file"));
    if (qEnvironmentVariable("QT_QPA_PLATFORM", "xcb") == "xcb") {
        outcome = run({"--command", "quit -force"}, {"DISPLAY", ":4711"});
        EXPECT_EQ(outcome.code, 1);
        EXPECT_THAT(outcome.err, HasSubstr("cannot open a display"));
    }
    outcome = run({"--batch", "--command", "window w"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("no user interface"));
}

TEST_F(Program, PictureOfTheWindowInBothRenderers) {
    for (const char* renderer : {"vp2", "legacy"}) {
        SCOPED_TRACE(renderer);
        const QString file = directory.filePath(QString(renderer) + ".png");
        const Outcome outcome =
            run({"--size", "640x480", "--renderer", renderer, "--screenshot", file, "--script",
                 support::sourcePath("resources/demo/shot.mel"), "--command",
                 "if (!`undoInfo -q -undoQueueEmpty`) error \"the demo itself can be undone\"",
                 "--command", "currentTime 3"});
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_THAT(outcome.err, Not(HasSubstr("Error")));
        const QImage picture(file);
        ASSERT_EQ(picture.size(), QSize(640, 480));
        QSet<QRgb> colours;
        for (int x = 0; x < picture.width(); x += 5) {
            for (int y = 0; y < picture.height(); y += 5)
                colours.insert(picture.pixel(x, y));
        }
        EXPECT_GT(colours.size(), 20) << "the view is empty in " << renderer;
    }
    const Outcome outcome = run({"--screenshot", "/proc/none/picture.png"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("picture.png"));
}

TEST_F(Program, TheActivePanelIsFramed) {
    const char* const twoPanels =
        "global string $gMainPane; paneLayout -e -configuration vertical2 "
        "$gMainPane; modelPanel -parent $gMainPane other;";
    // Each step makes another panel the active one, the last by taking the active one away.
    const struct {
        const char* script;
        bool right;
    } steps[] = {{"setFocus modelPanel4", false},
                 {"setFocus modelPanel4; modelEditor -e -activeView true other", true},
                 {"setFocus other; deleteUI other", false}};
    for (const auto& step : steps) {
        const QString file = directory.filePath("framed.png");
        const Outcome outcome = run({"--size", "800x600", "--command", twoPanels, "--command",
                                     step.script, "--screenshot", file});
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        const QImage picture(file);
        ASSERT_FALSE(picture.isNull()) << step.script;
        int rightmost = -1, leftmost = -1;
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, 300) != qRgb(0x52, 0x85, 0xa6))
                continue;
            leftmost = leftmost < 0 ? x : leftmost;
            rightmost = x;
        }
        EXPECT_GT(rightmost, leftmost) << step.script;
        EXPECT_EQ(leftmost > 300, step.right) << step.script << ": " << leftmost;
    }
}

TEST_F(Program, ContactSheetOfTheView) {
    const QString file = directory.filePath("out/sheet.png");
    const Outcome outcome =
        run({"--size", "640x480", "--script", support::sourcePath("resources/demo/shot.mel"),
             "--command",
             "currentTime 9; hostContactSheet -start 1 -end 41 -byFrame 10 -columns 3 -width 100 "
             "-file \"" +
                 file + "\"; print (\"at:\" + `currentTime -q` + \"\\n\"); quit -force"});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(marks(outcome.out), std::vector<std::string>{"9"});
    const QImage sheet(file);
    EXPECT_EQ(sheet.width(), 3 * 106 + 6);
    // Two rows, and the ball is elsewhere in each cell.
    ASSERT_GT(sheet.height(), 100);
    const QRect cell(6, 6, 100, sheet.height() / 2 - 30);
    EXPECT_NE(sheet.copy(cell), sheet.copy(cell.translated(106, 0)));
}

TEST_F(Program, ReplayArrivesInOrderAndMovesTheRealPointer) {
    const QString session = write("session.txt", R"(# keys, buttons, commands
vellum-session 1
space view
0.00 command print ("at:start " + `currentTime -q` + "\n")
0.02 move 100 100
0.04 keydown alt
0.06 press left
0.08 move 140 100
0.10 release left
0.12 keyup alt
0.14 command print ("at:turned " + (`getAttr "persp.rotateY"` != $was) + "\n")
0.16 command currentTime 12; createNode transform -n made
0.18 key ctrl+z
0.20 key alt+.
0.22 command print ("at:time " + `currentTime -q` + " made " + `objExists made` + "\n")
0.24 command quit -force
)");
    const Outcome outcome = run({"--size", "640x480", "--command",
                                 "float $was = `getAttr \"persp.rotateY\"`", "--replay", session});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    // ctrl+z takes the node back, alt+. goes one frame further.
    EXPECT_EQ(marks(outcome.out),
              (std::vector<std::string>{"start 1", "turned 1", "time 13 made 0"}));
}

TEST_F(Program, ReplayKeepsPausesAndTabletRecordings) {
    QByteArray recording("# seconds x y pressure\n");
    for (int i = 0; i < 60; ++i) {
        const double pressure = i < 5 || i > 50 ? 0 : 0.5;
        recording += QByteArray::number(i * 0.008) + '\t' + QByteArray::number(200 + 4 * i) +
                     "\t300\t" + QByteArray::number(pressure) + '\n';
    }
    write("pen.tsv", recording);
    const QString session = write("session.txt", R"(vellum-session 1
space view 800 610
0.0 command playbackOptions -maxTime 1000; play
0.0 play pen.tsv 0.02 0.4
0.5 command print ("at:" + (`currentTime -q` >= 11) + "\n")
0.5 command quit -force
)");
    Outcome outcome = run({"--size", "640x480", "--replay", session});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(marks(outcome.out), std::vector<std::string>{"1"});
    outcome = run({"--size", "640x480", "--replay", directory.filePath("pen.tsv"), "--screenshot",
                   directory.filePath("after.png")});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
}

TEST_F(Program, KeysDoNotRepeatWhileAReplayTypes) {
    const std::unique_ptr<host::XTestInput> server = host::XTestInput::open();
    ASSERT_TRUE(server);
    ASSERT_TRUE(server->keyRepeats());
    const QString session = write("keys.txt", R"(vellum-session 1
0.0 keydown B
0.1 command print "at:held\n"
60.0 keyup B
)");
    support::HostProgram ended({"--size", "640x480", "--replay", session}, directory.path());
    ASSERT_TRUE(ended.prints("at:held"));
    EXPECT_FALSE(server->keyRepeats());
    ended.terminate();
    const Outcome early = ended.outcome();
    EXPECT_EQ(early.code, 1);
    EXPECT_THAT(early.err, HasSubstr("interrupted"));
    EXPECT_TRUE(server->keyRepeats()) << "it is the setting of all programs of the server";

    const QString whole = write("whole.txt", "vellum-session 1\n0 key B\n");
    const Outcome outcome = run(
        {"--size", "640x480", "--replay", whole, "--screenshot", directory.filePath("typed.png")});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_TRUE(server->keyRepeats());
}

TEST_F(Program, WrongSessionsAreRefusedBeforeAnythingIsPlayed) {
    const struct {
        QByteArray text;
        const char* says;
    } cases[] = {
        {"vellum-session 1\n0 command print \"at:x\\n\"\n0.1 jump 1 1\n", "s.txt:3: unknown step"},
        {"vellum-session 1\n1 move 1 1\n0.5 move 2 2\n", "s.txt:3: the time goes backwards"},
        {"vellum-session 2\n0 move 1 1\n", "s.txt:1:"},
        {"vellum-session 1\n0 move 1 nan\n", "s.txt:2:"},
        {"vellum-session 1\n0 key hyper+q\n", "s.txt:2: unknown key"},
        {"vellum-session 1\n0 tablet press 1 1 1.5\n", "s.txt:2:"},
        {"0.0 1 2\n", "s.txt:1: a sample has four columns"},
        {"0.0 1 2 -1\n", "s.txt:1:"},
        {"hello\n", "s.txt:1:"},
        {"vellum-session 1\n0 click left on OK\n", "s.txt:2: a name in quotes is missing"},
        {"vellum-session 1\n0 click left on \"OK\n", "s.txt:2: a quote is not closed"},
        {"vellum-session 1\n0 click left on \"OK\" 0\n", "s.txt:2: things are counted from 1"},
        {"vellum-session 1\n0 move on \"OK\" at 5 5%\n", "s.txt:2: a place has two"},
        {"vellum-session 1\n0 move on \"OK\" of \"B\"\n", "s.txt:2: unexpected 'of'"},
        {"vellum-session 1\n0 menu \"File > \"\n", "s.txt:2: an entry of a menu is missing"},
        {"vellum-session 1\n0 type Rough\n", "s.txt:2: type needs a text in quotes"},
        {"vellum-session 1\n0 type \"\xc3\xa9\"\n", "s.txt:2: only what stands on every"},
        {"vellum-session 1\n0 picture a.png of B\n", "s.txt:2: picture needs a file"},
        {"", "nothing to replay"},
    };
    for (const auto& wrong : cases) {
        SCOPED_TRACE(wrong.says);
        const Outcome outcome = run({"--replay", write("s.txt", wrong.text)});
        EXPECT_EQ(outcome.code, 1) << wrong.says;
        EXPECT_THAT(outcome.err, HasSubstr(wrong.says));
        EXPECT_TRUE(marks(outcome.out).empty());
    }
    const Outcome outcome =
        run({"--replay", write("s.txt", "vellum-session 1\n0 command error \"stop here\"\n")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("stop here"));
    EXPECT_THAT(outcome.err, HasSubstr("s.txt:2"));
    EXPECT_THAT(outcome.err, Not(HasSubstr("s.txt line 1"))) << "a line of its own, not the file's";
}
