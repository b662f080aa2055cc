// Long sessions of commands without a plan, right and wrong ones, with strokes by the pointer in
// between. Undo to the start and redo to the end, step by step: the saved scene is the same each
// time, byte for byte. What is refused changes nothing and leaves nothing to undo.
#include "foundation/UndoQueue.h"
#include "journey/Desk.h"
#include "support/Seed.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"
#include "ui/ViewWidget.h"

#include <QFile>

#include <random>

namespace vellum::test {
namespace {

class CommandWalk : public Desk {
protected:
    static constexpr int kSteps = 60;

    void SetUp() override {
        Desk::SetUp();
        take("brush");
        begin();
    }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    QString any(int from, int count) { return QString::number(from + pick(count)); }
    template <std::size_t N> QString oneOf(const char* const (&words)[N]) {
        return QLatin1String(words[pick(static_cast<int>(N))]);
    }
    QString camera() {
        return oneOf({"persp", "persp", "shotCam", "shotCam", "shotCam", "top", "other", "nobody"});
    }

    // --- What is done --------------------------------------------------------------------------

    QString layerCommand();
    QString frameCommand();
    QString nodeCommand();
    QString utilCommand();
    QString sceneCommand();
    QString strokeCommand();

    void act();
    void command(const QString& line);
    void draw();
    void goTo(int time) { ASSERT_TRUE(run(QStringLiteral("currentTime %1").arg(time))); }

    /// What cannot be undone was done: the walk's history begins here.
    void begin() {
        trail += "  (history begins)\n";
        ASSERT_TRUE(run(QStringLiteral("flushUndo")));
        firstLayerDrawn_ = false;
        states_ = {{scene(), now()}};
    }

    // --- What must hold ------------------------------------------------------------------------

    QByteArray scene();
    /// The scene is the one of the queue's length, and how it differs.
    void compare(const QByteArray& current);
    /// After something was done: a step of the queue, or nothing.
    void checkDone(std::size_t before, std::size_t undone, bool done);
    void undoOne();
    void redoOne();
    void walkThroughHistory();

    std::string trail; ///< what has been done, for the failure's message

private:
    static std::size_t steps() { return host::undoQueue().undoCount(); }

    std::mt19937 random_{support::seed()};
    struct State {
        QByteArray scene;
        int time; ///< when the step before it was done
    };
    std::vector<State> states_; ///< by the length of the undo queue
    /// Undo of a stroke that made its camera's first layer gives the turn to the camera before,
    /// even if this one had it already.
    bool firstLayerDrawn_ = false;
};

/// The scene as a file holds it, without the lines that tell when it was written and what time it
/// is in the scene.
QByteArray CommandWalk::scene() {
    save(file("snapshot.ma"));
    QFile saved(file("snapshot.ma"));
    EXPECT_TRUE(saved.open(QIODevice::ReadOnly));
    QByteArray text;
    bool time = false;
    for (const QByteArray& line : saved.readAll().split('\n')) {
        if (!line.startsWith('\t'))
            time = line == "select -ne :time1;";
        if (!line.startsWith("//") && !line.startsWith("fileInfo") && !time)
            text += line + '\n';
    }
    return text + this->text(QStringLiteral("$vlSelected = stringArrayToString(`ls -sl`, \" \")"))
                      .toUtf8();
}

QString CommandWalk::layerCommand() {
    const QString names = oneOf({"", " -n \"a\"", " -n \"say \\\"b\\\"\"", " -name \"é\""});
    const QString index = any(0, 4);
    const auto to = [this] { return any(-2, 7); };
    switch (pick(14)) {
    case 0:
    case 1:
        return QStringLiteral("-add") + names + (pick(3) ? QString() : " -ls " + any(0, 5));
    case 2:
    case 3:
        return QStringLiteral("-insert %1").arg(to()) + names +
               (pick(3) ? QString() : " -layerState " + any(0, 4));
    case 4:
        return pick(3) ? QStringLiteral("-del ") + index : QStringLiteral("-deleteAll");
    case 5:
        return QStringLiteral("-mv %1 %2").arg(index, to());
    case 6:
    case 7:
        return QStringLiteral("-move %1 %2 -newCamera %3").arg(index, to(), camera());
    case 8:
        return QStringLiteral("-mva ") + camera();
    case 9:
        return QStringLiteral("-e -active ") + index;
    case 10:
        return QStringLiteral("-en \"%1\" %2").arg(oneOf({"a", "", "Layer", "x y"}), index);
    case 11:
        return oneOf({"-ev off ", "-ev on ", "-editOpacity 0.3 ", "-eo 7 ", "-eo -1 "}) + index;
    case 12:
        return QStringLiteral("-es %1 %2").arg(any(0, 4), pick(2) ? index : QString("0"));
    default:
        return oneOf({"-q -active", "-count", "-qn 0", "-qv 1", "-queryOpacity 0", "-qs 9",
                      "-e -name \"x\"", "-q -count", "", "-name \"x\"", "-add -wrong", "-del",
                      "-irp \"a\" \"b\"", "-count -deleteAll", "-e -active 99", "-es 1"});
    }
}

QString CommandWalk::frameCommand() {
    switch (pick(8)) {
    case 0:
        return QStringLiteral("-retime ") + any(-1, 5) +
               oneOf({"", " -relative", " -moveToNext", " -rel -mvn"});
    case 1:
        return QStringLiteral("-mv %1 %2 %3").arg(any(-4, 9), any(-2, 14), any(4, 14));
    case 2:
        return oneOf({"-relative", "", "-retime", "-insert -wrong", "-mv 1 2", "-e -insert"});
    case 3:
        return oneOf({"-insert -delete", "-copy -paste", "-sf -sb", "-cp"});
    default:
        return oneOf({"-insert", "-insert", "-duplicate", "-delete", "-cut", "-copy", "-paste",
                      "-paste", "-clear", "-stepForward", "-stepBack"});
    }
}

QString CommandWalk::nodeCommand() {
    if (pick(3) == 0)
        return oneOf({"-ex", "-rg", "-q -camera", "-q -layer", "-e", "-layer -wrong", "-ls 1 2"});
    return QStringLiteral("-layer -camera %1%2%3")
        .arg(camera(), oneOf({"", " -frame", " -ln \"first\" -f"}),
             oneOf({"", " -ls 1", " -ls 9"}));
}

QString CommandWalk::utilCommand() {
    return oneOf({"-e -ghostPrevious -1",
                  "-e -gn 1",
                  "-e -gpc 12",
                  "-q -gpc",
                  "-q -dc",
                  "-e -drawColor 20 90 255",
                  "-e -drawColor 256 0 0",
                  "-e -tfd 1",
                  "-e -tfd 7",
                  "-pencilTool",
                  "-brushTool",
                  "-eraserTool",
                  "-lineTool",
                  "-rectangleTool",
                  "-bo 30 70 50 0",
                  "-po 9 100",
                  "-rlm",
                  "-rtd",
                  "-rvi",
                  "-dc 1 2 3",
                  ""});
}

QString CommandWalk::sceneCommand() {
    const QString name = camera();
    switch (pick(6)) {
    case 0:
        return QStringLiteral("rename shotCam other");
    case 1:
        return QStringLiteral("rename other shotCam");
    case 2:
        return QStringLiteral("select -r ") + oneOf({"vellum", "vellumShape", "ball", "persp"});
    case 3:
        return QStringLiteral("select -clear");
    case 4:
        return QStringLiteral("delete ") + oneOf({"vellum", "vellumShape", "ball"});
    default:
        return QStringLiteral("setAttr vellum.visibility ") + any(0, 2);
    }
}

QString CommandWalk::strokeCommand() {
    return oneOf({"", "-la 0 -fa ", "-wrong ", "-layerAdded "}) + (pick(3) ? camera() : QString());
}

void CommandWalk::act() {
    const int kind = pick(100);
    if (kind < 30)
        command(QStringLiteral("rvVellumLayer %1 %2").arg(layerCommand(), camera()));
    else if (kind < 55)
        command(QStringLiteral("rvVellumFrame %1 %2")
                    .arg(frameCommand(), pick(2) ? camera() : QString()));
    else if (kind < 62)
        command(QStringLiteral("rvVellumNode ") + nodeCommand());
    else if (kind < 66)
        command(QStringLiteral("rvVellumUtil ") + utilCommand());
    else if (kind < 69)
        command(QStringLiteral("rvVellumStroke ") + strokeCommand());
    else if (kind < 75)
        command(sceneCommand());
    else if (kind < 84)
        draw();
    else if (kind < 90)
        goTo(1 + pick(12));
    else if (kind < 93)
        window->timeSlider().setRange(
            pick(3) ? std::optional<host::TimeSlider::Range>({1.0 + pick(8), 9.0 + pick(4)})
                    : std::nullopt);
    else if (kind < 97)
        undoOne();
    else
        redoOne();
}

void CommandWalk::command(const QString& line) {
    const std::size_t before = steps(), undone = host::undoQueue().redoCount();
    trail += "  " + line.toStdString();
    const int time = now();
    const bool done = run(line);
    trail += (done ? "" : "  refused") + std::string(time == now() ? "" : "  time goes") + "\n";
    support::settle();
    checkDone(before, undone, done);
    EXPECT_TRUE(done || now() == time) << trail;
}

void CommandWalk::compare(const QByteArray& current) {
    const auto lines = [this](QByteArray text) {
        static const QByteArray start = "\"rvLayerData\" 1 1 \"";
        const auto at = text.indexOf(start);
        if (firstLayerDrawn_ && at >= 0)
            text.remove(at, text.indexOf('"', at + start.size()) - at);
        return text.split('\n');
    };
    const QList<QByteArray> is = lines(current);
    const QList<QByteArray> was = lines(states_[steps()].scene);
    for (int i = 0; i < std::max(is.size(), was.size()); ++i) {
        ASSERT_EQ(is.value(i).left(300).toStdString(), was.value(i).left(300).toStdString())
            << "seed " << support::seed() << "\n"
            << trail;
        ASSERT_TRUE(is.value(i) == was.value(i)) << "pixels; seed " << support::seed() << "\n"
                                                 << trail;
    }
}

void CommandWalk::checkDone(std::size_t before, std::size_t undone, bool done) {
    const QByteArray current = scene();
    if (steps() == before) {
        EXPECT_EQ(host::undoQueue().redoCount(), undone) << "seed " << support::seed() << trail;
        compare(current);
        return;
    }
    EXPECT_TRUE(done) << "seed " << support::seed() << " a refused command is on the queue\n"
                      << trail;
    ASSERT_EQ(steps(), before + 1) << trail;
    states_.resize(before + 1);
    states_.push_back({current, now()});
}

void CommandWalk::draw() {
    const QString looking = QStringLiteral("shotCam");
    if (!number(QStringLiteral("int($vlThere = `objExists vellumShape` && `objExists shotCam`)")))
        return;
    // A press makes the view's camera the current one, which is no step of its own.
    const QString current = text(QStringLiteral("rvVellumNode -q -camera"));
    const auto layers = [this](const QString& of) {
        return number(QStringLiteral("rvVellumLayer -count \"%1\"").arg(of));
    };
    if (current != looking && (layers(looking) > 0 || layers(current) <= 0)) {
        ASSERT_TRUE(run(QStringLiteral("rvVellumNode -refresh")));
        begin();
    }
    firstLayerDrawn_ = firstLayerDrawn_ || layers(looking) == 0;
    const std::size_t before = steps(), undone = host::undoQueue().redoCount();
    const QPoint from(120 + pick(300), 60 + pick(250));
    const QPoint way(pick(2) ? 40 : -40, pick(2) ? 15 : -15);
    trail += "  stroke at " + std::to_string(now()) + "\n";
    hand.moveTo(view(), from);
    hand.press();
    for (int i = 1; i <= 3; ++i)
        hand.moveTo(view(), from + i * way);
    hand.release();
    support::settle();
    checkDone(before, undone, true);
}

void CommandWalk::undoOne() {
    if (steps() == 0)
        return;
    // Strokes exchange the picture of the frame that is current.
    goTo(states_[steps()].time);
    trail += "  undo " + host::undoQueue().undoLabel() + "\n";
    ASSERT_TRUE(run(QStringLiteral("undo"))) << "seed " << support::seed() << "\n" << trail;
    compare(scene());
}

void CommandWalk::redoOne() {
    if (host::undoQueue().redoCount() == 0)
        return;
    goTo(states_[steps() + 1].time);
    trail += "  redo " + host::undoQueue().redoLabel() + "\n";
    ASSERT_TRUE(run(QStringLiteral("redo"))) << "seed " << support::seed() << "\n" << trail;
    compare(scene());
}

void CommandWalk::walkThroughHistory() {
    for (int round = 0; round < 2; ++round) {
        while (steps() > 0 && !HasFailure())
            undoOne();
        while (host::undoQueue().redoCount() > 0 && !HasFailure())
            redoOne();
    }
}

TEST_F(CommandWalk, TheSavedSceneIsTheSameAtBothEnds) {
    command(QStringLiteral("rvVellumNode -layer -camera shotCam -frame"));
    for (int step = 0; step < kSteps && !HasFailure(); ++step)
        act();
    if (!HasFailure())
        walkThroughHistory();
}

} // namespace
} // namespace vellum::test
