#include "walks/Walk.h"

#include "foundation/Idle.h"
#include "foundation/UndoQueue.h"
#include "support/Paths.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"
#include "ui/ViewWidget.h"
#include "walks/Options.h"

#include <QElapsedTimer>
#include <QFile>

#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>

#include <algorithm>
#include <cstdio>
#include <gtest/gtest-spi.h>

namespace vellum::test {

namespace {

host::UndoQueue& queue() {
    return host::undoQueue();
}

/// Nodes of a file that tell what the user looks at.
bool isOfTheInterface(const QByteArray& line) {
    return line == "select -ne :time1;" || line.contains("\"uiConfigurationScriptNode\"");
}

QByteArray withoutCurrentCamera(QByteArray line) {
    static const QByteArray start = "\"rvLayerData\" 1 1 \"";
    const auto at = line.indexOf(start);
    if (at >= 0)
        line.remove(at, line.indexOf('"', at + start.size()) - at);
    return line;
}

} // namespace

void Walk::SetUp() {
    Desk::SetUp();
    // Most of the time would go into the drawing of a large view.
    window->resize(360, 360);
    ASSERT_TRUE(support::waitFor([this] { return view().width() < 360; }));
}

// --- The walk ------------------------------------------------------------------------------------

std::optional<Walk::Fault> Walk::walk(const std::vector<Action>& actions, bool undoReturnsToFrame) {
    // What the desk or the hand finds wrong is a fault of the walk like any other.
    ::testing::TestPartResultArray found;
    const ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &found);
    fault_.clear();
    const auto failed = [&] {
        for (int i = 0; i < found.size() && fault_.empty(); ++i) {
            if (found.GetTestPartResult(i).failed())
                fault_ = found.GetTestPartResult(i).message();
        }
        return !fault_.empty();
    };
    startAfresh(undoReturnsToFrame);
    std::size_t step = 0;
    for (; step < actions.size() && !failed(); ++step) {
        if (walkOptions().trace)
            std::fprintf(stderr, "%zu: %s\n", step, actions[step].text().c_str());
        act(actions[step]);
    }
    if (!failed())
        backAndForth(queue().undoCount());
    if (!failed())
        return {};
    return Fault{std::max(step, std::size_t(1)) - 1, fault_};
}

std::string Walk::shortestWay(std::vector<Action> actions, bool undoReturnsToFrame) {
    constexpr int longestMs = 60000;
    QElapsedTimer timer;
    timer.start();
    std::string what;
    for (std::size_t size = actions.size() / 2; size > 0; size /= 2) {
        for (std::size_t at = 0; at < actions.size() && timer.elapsed() < longestMs;) {
            std::vector<Action> fewer(actions.begin(), actions.begin() + long(at));
            if (at + size < actions.size())
                fewer.insert(fewer.end(), actions.begin() + long(at + size), actions.end());
            const auto fault = walk(fewer, undoReturnsToFrame);
            if (fault) {
                fewer.resize(std::min(fewer.size(), fault->step + 1));
                actions = std::move(fewer);
                what = fault->what;
            } else {
                at += size;
            }
        }
    }
    std::string way = "\nthe shortest way to a fault that was found:\n";
    for (const Action& action : actions)
        way += "  " + action.text() + "\n";
    return way + what;
}

void Walk::startAfresh(bool undoReturnsToFrame) {
    ASSERT_TRUE(run(QStringLiteral("file -force -new")));
    unloadPlugin();
    QFile settings(text(QStringLiteral("internalVar -userPrefDir")) +
                   QStringLiteral("vellum2.ini"));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly | QIODevice::Truncate));
    settings.write("[preferences]\nundoReturnsToFrame=");
    settings.write(undoReturnsToFrame ? "true\n" : "false\n");
    settings.close();
    loadPlugin();
    returnsToFrame_ = undoReturnsToFrame;
    newScene(false);
}

void Walk::act(const Action& action) {
    using Kind = Action::Kind;
    errors.clear();
    switch (action.kind) {
    case Kind::Command:
        return command(action.line);
    case Kind::Unrecorded:
        return unrecorded(action);
    case Kind::Stroke:
        return draw(action);
    case Kind::Broken:
        return drawBroken(action);
    case Kind::Transform:
        return transform(action);
    case Kind::Rest:
        support::settle();
        host::idle::drain();
        return;
    case Kind::Time:
        return goTo(MTime(action.number, MTime::uiUnit()));
    case Kind::Range:
        window->timeSlider().setRange(
            action.number > 0
                ? std::optional<host::TimeSlider::Range>(
                      {double(action.number2), double(action.number2 + action.number)})
                : std::nullopt);
        return;
    case Kind::Look:
        if (number(QStringLiteral("objExists ") + action.line) == 1)
            lookThrough(action.line.toUtf8().constData());
        return;
    case Kind::Undo:
        for (int i = 0; i < action.number && fault_.empty(); ++i)
            undoOne();
        return;
    case Kind::Redo:
        for (int i = 0; i < action.number && fault_.empty(); ++i)
            redoOne();
        return;
    case Kind::Back:
        return backAndForth(static_cast<std::size_t>(action.number));
    case Kind::Reopen:
        return reopen(action.number == 1);
    case Kind::NewScene:
        return newScene(action.number == 0);
    }
}

// --- What is done --------------------------------------------------------------------------------

void Walk::command(const QString& line) {
    const std::size_t before = queue().undoCount(), undone = queue().redoCount();
    const MTime time = MAnimControl::currentTime();
    const bool done = run(line);
    units_.insert(MTime::uiUnit());
    checkDone(before, undone, done);
    if (!done && MAnimControl::currentTime() != time)
        fault("a refused command moves the time");
}

/// The queue finds another drawing than it left. What it cannot do it refuses and changes nothing.
void Walk::unrecorded(const Action& action) {
    ASSERT_TRUE(run(QStringLiteral("undoInfo -stateWithoutFlush off")));
    static_cast<void>(bool(run(action.line)));
    ASSERT_TRUE(run(QStringLiteral("undoInfo -stateWithoutFlush on")));
    for (const char* const way : {"undo", "redo"}) {
        for (int i = 0; i < action.number; ++i) {
            if (way[0] == 'u' ? !queue().canUndo() : !queue().canRedo())
                break;
            const QByteArray before = scene();
            if (!run(QLatin1String(way)))
                expectSame(scene(), before, "after a refused undo or redo");
        }
    }
    units_.insert(MTime::uiUnit());
    begin();
}

void Walk::draw(const Action& action) {
    const std::size_t before = queue().undoCount(), undone = queue().redoCount();
    pressMovesCurrentCamera();
    hand.moveTo(view(), action.from);
    hand.press();
    hand.moveTo(view(), action.from + action.way);
    hand.release();
    support::settle();
    checkDone(before, undone, true);
}

/// What comes of the stroke is left open; what is there then can be gone through as ever.
void Walk::drawBroken(const Action& action) {
    hand.moveTo(view(), action.from);
    hand.press();
    hand.moveTo(view(), action.from + action.way);
    static_cast<void>(bool(run(action.line)));
    hand.moveTo(view(), action.from);
    hand.release();
    support::settle();
    units_.insert(MTime::uiUnit());
    begin();
}

void Walk::transform(const Action& action) {
    command(QStringLiteral("rvVellumUtil -transform")); // taking a tool makes the node
    pressMovesCurrentCamera();
    const std::size_t before = queue().undoCount(), undone = queue().redoCount();
    for (const QPoint from : {action.from, action.from + action.way / 2}) {
        hand.moveTo(view(), from);
        hand.press();
        hand.moveTo(view(), from + action.way);
        hand.release();
    }
    hand.type({Qt::Key_Return});
    support::settle();
    host::idle::drain();
    checkDone(before, undone, true);
    command(QStringLiteral("rvVellumUtil -draw"));
}

void Walk::reopen(bool binary) {
    const QByteArray before = drawings();
    const QString path = file(binary ? "walk.mb" : "walk.ma");
    save(path);
    open(path);
    host::idle::drain();
    if (isModified())
        fault("a scene just opened is modified");
    // Binary files hold whole numbers of frames.
    if (!binary || units_.size() == 1)
        expectSame(drawings(), before, "after saving and opening");
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw"))); // opening puts the tool down
    begin();
}

void Walk::newScene(bool empty) {
    const QString path = support::sourcePath(QStringLiteral("resources/demo/shot.mel"));
    ASSERT_TRUE(run(empty ? QStringLiteral("file -force -new")
                          : QStringLiteral("source \"%1\"").arg(path)));
    window->timeSlider().setRange(std::nullopt);
    units_ = {MTime::uiUnit()};
    take("brush");
    begin();
}

void Walk::undoOne() {
    if (queue().undoCount() == 0)
        return;
    // Strokes exchange the picture of the frame that is current.
    if (!returnsToFrame_)
        goTo(states_[queue().undoCount()].time);
    const std::string label = queue().undoLabel();
    if (!run(QStringLiteral("undo")))
        return fault("undo of " + label + " is refused: " + allErrors().toStdString());
    compare(scene());
}

void Walk::redoOne(Compare compared) {
    if (queue().redoCount() == 0)
        return;
    if (!returnsToFrame_)
        goTo(states_[queue().undoCount() + 1].time);
    const std::string label = queue().redoLabel();
    if (!run(QStringLiteral("redo")))
        return fault("redo of " + label + " is refused: " + allErrors().toStdString());
    if (compared == Compare::Yes)
        compare(scene());
}

void Walk::backAndForth(std::size_t count) {
    std::size_t undone = 0;
    for (; undone < count && queue().canUndo() && fault_.empty(); ++undone)
        undoOne();
    for (; undone > 0 && fault_.empty(); --undone)
        redoOne(undone == 1 ? Compare::Yes : Compare::No);
}

void Walk::goTo(const MTime& time) {
    if (MAnimControl::currentTime() != time)
        MAnimControl::setCurrentTime(time);
}

QString Walk::lookedThrough() {
    MDagPath path;
    M3dView::active3dView().getCamera(path);
    return QString::fromUtf8(MFnDagNode(path.transform()).name().asUTF8());
}

void Walk::pressMovesCurrentCamera() {
    const QString camera = lookedThrough();
    if (text(QStringLiteral("rvVellumNode -q -camera")) != camera ||
        number(QStringLiteral("rvVellumLayer -count \"%1\"").arg(camera)) == 0)
        currentCameraIsFree_ = true;
    errors.clear();
}

// --- What must hold ------------------------------------------------------------------------------

void Walk::begin() {
    ASSERT_TRUE(run(QStringLiteral("flushUndo")));
    currentCameraIsFree_ = false;
    states_ = {{scene(), MAnimControl::currentTime()}};
}

QByteArray Walk::drawings() {
    save(file("snapshot.ma"));
    QFile saved(file("snapshot.ma"));
    EXPECT_TRUE(saved.open(QIODevice::ReadOnly));
    QByteArray text;
    bool left = false;
    for (const QByteArray& line : saved.readAll().split('\n')) {
        if (!line.startsWith('\t'))
            left = isOfTheInterface(line);
        if (!line.startsWith("//") && !line.startsWith("fileInfo") && !left)
            text += line + '\n';
    }
    return text;
}

QByteArray Walk::scene() {
    return drawings() +
           text(QStringLiteral("$vlSelected = stringArrayToString(`ls -sl`, \" \")")).toUtf8();
}

void Walk::compare(const QByteArray& current) {
    if (queue().undoCount() >= states_.size())
        return fault("the queue is longer than what was done: " + queue().undoLabel());
    expectSame(current, states_[queue().undoCount()].scene, "in the history");
}

void Walk::expectSame(const QByteArray& is, const QByteArray& was, const char* when) {
    if (is == was)
        return;
    const QList<QByteArray> isLines = is.split('\n'), wasLines = was.split('\n');
    for (int i = 0; i < std::max(isLines.size(), wasLines.size()); ++i) {
        QByteArray now = isLines.value(i), before = wasLines.value(i);
        if (currentCameraIsFree_) {
            now = withoutCurrentCamera(now);
            before = withoutCurrentCamera(before);
        }
        if (now == before)
            continue;
        const bool pixels = now.left(200) == before.left(200);
        return fault(std::string("another scene ") + when + (pixels ? ", in pixels" : "") +
                     "; it is\n" + now.left(200).toStdString() + "\nand was\n" +
                     before.left(200).toStdString());
    }
}

void Walk::checkDone(std::size_t before, std::size_t undone, bool done) {
    const QByteArray current = scene();
    if (queue().undoCount() == before) {
        if (queue().redoCount() != undone)
            fault("what could be redone is gone");
        return compare(current);
    }
    if (!done)
        return fault("a refused command is on the queue");
    if (queue().undoCount() != before + 1)
        return fault("the queue grew by " + std::to_string(queue().undoCount() - before));
    states_.resize(before + 1);
    states_.push_back({current, MAnimControl::currentTime()});
}

void Walk::fault(const std::string& what) {
    if (fault_.empty())
        fault_ = what + (errors.isEmpty() ? "" : "\nlast said: " + errors.last().toStdString());
}

} // namespace vellum::test
