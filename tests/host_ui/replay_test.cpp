// Sessions that name what they press: windows, menus, the time slider, typing and pictures.
#include "host_ui/ProgramTest.h"

#include <QImage>

#include <gmock/gmock.h>

using support::Outcome;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class Replay : public hosttest::ProgramTest {
protected:
    /// Plays the steps, one every 10 ms, after a script that makes what they work on.
    Outcome play(const QByteArray& script, const std::vector<QByteArray>& steps) {
        QByteArray text("vellum-session 1\n");
        int number = 0;
        for (const QByteArray& step : steps)
            text += QByteArray::number(0.01 * ++number) + ' ' + step + '\n';
        return run({"--size", "900x600", "--script", write("before.mel", script), "--replay",
                    write("s.txt", text + QByteArray::number(0.01 * (number + 1)) +
                                       " command quit -force\n")});
    }
};

const char* const kChoice = R"mel(
    window -title "Box" -wh 260 120 -tlc 100 200 boxWindow;
    columnLayout -adjustableColumn true;
    optionMenu -label "Colour" -changeCommand "print (\"at:\" + \"#1\" + \"\\n\")" first;
    menuItem -label "Red"; menuItem -label "Green";
    setParent ..;
    showWindow boxWindow;
)mel";

TEST_F(Replay, PressesWhatIsSeenInWindowsMenusAndTheTimeSlider) {
    const QByteArray script = QByteArray(kChoice) + R"mel(
        global string $gMainWindow;
        menu -parent $gMainWindow -label "Own" ownMenu;
        menuItem -subMenu true -label "More";
        menuItem -label "Stop / Go" -command "evalDeferred ask";
        global proc ask() {
            print ("at:" + `confirmDialog -title "Sure" -message "Go?" -button "Yes" -button "No"`
                   + "\n");
        }
    )mel";
    const Outcome outcome = play(
        script, {"click left on frame 12", "command print (\"at:\" + `currentTime -q` + \"\\n\")",
                 "click left on \"One frame forward\"", "click left on \"One frame forward\"",
                 "command print (\"at:\" + `currentTime -q` + \"\\n\")",
                 "click left on \"QComboBox\" in \"Box\"", "click left on \"Green\"",
                 "menu \"Own > More > Stop / Go\"", "click left on \"No\" in \"Sure\"",
                 "click left on \"scriptInput\"",
                 R"mel(type "print (\"at:Typed #1, {a}_\\n\")")mel", "key Return"});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(marks(outcome.out), ElementsAre("12", "14", "Green", "No", "Typed #1, {a}_"));
}

TEST_F(Replay, WaitsForWhatIsNotThereYet) {
    // The box comes when playback ends, half a second after the click that needs it.
    const Outcome outcome =
        play(QByteArray("playbackOptions -maxTime 12 -loop once; global proc later() {\n") +
                 kChoice + "}\nscriptJob -runOnce true -conditionFalse playingBack later;",
             {"command play", "click left on \"QComboBox\" in \"Box\"",
              "click left on \"Red\" at 50% 50%"});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
}

TEST_F(Replay, PicturesShowTheScreenWithWhatLiesOver) {
    const Outcome outcome = play(
        kChoice, {"place \"Box\" 300 100", "picture out/all.png", "picture box.png of \"Box\""});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    const QImage all(directory.filePath("out/all.png"));
    const QImage box(directory.filePath("box.png"));
    EXPECT_EQ(all.size(), QSize(900, 600));
    ASSERT_EQ(box.size(), QSize(260, 120));
    EXPECT_EQ(all.copy(300, 100, 260, 120), box);
}

TEST_F(Replay, TellsWhatCannotBePressed) {
    const QByteArray script = QByteArray(kChoice) + R"mel(
        global string $gMainWindow; optionMenu -label "Shape" second; menuItem -label "Round";
        window -title "Over" -wh 900 560 -tlc 60 0 overWindow; showWindow overWindow;
        menu -parent $gMainWindow -label "Own" ownMenu; menuItem -label "Off" -enable false;
    )mel";
    const struct {
        const char* step;
        const char* says;
    } cases[] = {
        {"click left on \"Nothing\"", "s.txt:2: 'Nothing' is not there"},
        {"click left on \"QComboBox\" in \"Box\"", "s.txt:2: 'QComboBox' is there 2 times"},
        {"click left on \"QComboBox\" 2 in \"Box\"", "s.txt:2: 'QComboBox' is covered by 'Over'"},
        {"menu \"Own > Off\"", "s.txt:2: 'Off' is disabled"},
        {"picture a.png of \"Nowhere\"", "s.txt:2: there is no window 'Nowhere'"},
        {"picture /proc/none/a.png", "s.txt:2: cannot write '/proc/none/a.png'"},
    };
    for (const auto& wrong : cases) {
        const Outcome outcome = play(script, {wrong.step});
        EXPECT_EQ(outcome.code, 1) << wrong.step;
        EXPECT_THAT(outcome.err, HasSubstr(wrong.says));
    }
}

} // namespace
