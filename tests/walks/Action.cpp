#include "walks/Action.h"

#include <cstddef>
#include <sstream>

namespace vellum::test {

namespace {

class Planner {
public:
    explicit Planner(unsigned seed) : random_(seed) {}
    Action next();

private:
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    QString any(int from, int count) { return QString::number(from + pick(count)); }
    template <std::size_t N> QString oneOf(const char* const (&words)[N]) {
        return QString::fromUtf8(words[pick(static_cast<int>(N))]);
    }
    QString camera() {
        return pick(20) ? oneOf({"persp", "persp", "shotCam", "shotCam", "shotCam", "top", "other"})
                        : QStringLiteral("nobody");
    }

    QString layerCommand();
    QString frameCommand();
    QString nodeCommand();
    QString utilCommand();
    QString sceneCommand();
    QString strokeCommand();

    QString command();
    Action stroke(Action::Kind kind);

    std::mt19937 random_;
};

QString Planner::layerCommand() {
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

QString Planner::frameCommand() {
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

QString Planner::nodeCommand() {
    if (pick(3) == 0)
        return oneOf({"-ex", "-rg", "-q -camera", "-q -layer", "-e", "-layer -wrong", "-ls 1 2"});
    return QStringLiteral("-layer -camera %1%2%3")
        .arg(camera(), oneOf({"", " -frame", " -ln \"first\" -f"}),
             oneOf({"", " -ls 1", " -ls 9"}));
}

QString Planner::utilCommand() {
    return oneOf({"-e -ghostPrevious -1",
                  "-e -gn 1",
                  "-e -gn 0",
                  "-e -gpc 12",
                  "-e -gco 1",
                  "-q -gpc",
                  "-q -dc",
                  "-e -drawColor 20 90 255",
                  "-e -drawColor 200 9 25",
                  "-e -drawColor 256 0 0",
                  "-e -tfd 0",
                  "-e -tfd 1",
                  "-e -tfd 7",
                  "-pencilTool",
                  "-brushTool",
                  "-brushTool",
                  "-eraserTool",
                  "-lineTool",
                  "-rectangleTool",
                  "-ellipseTool",
                  "-arrowTool",
                  "-draw",
                  "-bo 30 70 50 0",
                  "-bo 3 100 100 0",
                  "-po 9 100 0",
                  "-po 9 100",
                  "-rlm",
                  "-rtd",
                  "-rvi",
                  "-dc 1 2 3",
                  ""});
}

QString Planner::sceneCommand() {
    switch (pick(9)) {
    case 0:
        return QStringLiteral("rename shotCam ") +
               oneOf({"other", "other", "persp1", "a|b", "top"});
    case 1:
        return QStringLiteral("rename ") + oneOf({"other", "persp1", "other1"}) +
               QStringLiteral(" shotCam");
    case 2:
        return QStringLiteral("select -r ") + oneOf({"vellum", "vellumShape", "ball", "persp"});
    case 3:
        return QStringLiteral("select -clear");
    case 4:
        return QStringLiteral("delete ") +
               oneOf({"vellum", "vellumShape", "ball", "ball", "shotCam", "other", "other"});
    case 5:
        return QStringLiteral("currentUnit -time ") +
               oneOf({"film", "film", "pal", "ntsc", "game", "ntscf", "show", "nothing"});
    case 6:
        return oneOf({"camera -name other", "duplicate shotCam", "duplicate vellum",
                      "rename vellum drawing", "rename drawing vellum", "group shotCam"});
    case 7:
        return QStringLiteral("playbackOptions -minTime 1 -maxTime ") + any(8, 40);
    default:
        return QStringLiteral("setAttr vellum.visibility ") + any(0, 2);
    }
}

QString Planner::strokeCommand() {
    return oneOf({"", "-la 0 -fa ", "-wrong ", "-layerAdded "}) + (pick(3) ? camera() : QString());
}

QString Planner::command() {
    const int kind = pick(80);
    if (kind < 32)
        return QStringLiteral("rvVellumLayer %1 %2").arg(layerCommand(), camera());
    if (kind < 64)
        return QStringLiteral("rvVellumFrame %1 %2")
            .arg(frameCommand(), pick(2) ? camera() : QString());
    if (kind < 67)
        return QStringLiteral("rvVellumNode ") + nodeCommand();
    if (kind < 71)
        return QStringLiteral("rvVellumUtil ") + utilCommand();
    if (kind < 73)
        return QStringLiteral("rvVellumStroke ") + strokeCommand();
    return sceneCommand();
}

Action Planner::stroke(Action::Kind kind) {
    Action action;
    action.kind = kind;
    action.from = QPoint{100 + pick(140), 50 + pick(90)};
    action.way = QPoint{pick(2) ? 70 : -70, pick(2) ? 30 : -30};
    return action;
}

Action Planner::next() {
    using Kind = Action::Kind;
    const int kind = pick(1000);
    if (kind < 700)
        return {Kind::Command, command()};
    if (kind < 755)
        return stroke(Kind::Stroke);
    if (kind < 764)
        return stroke(Kind::Transform);
    if (kind < 800)
        return {Kind::Rest};
    if (kind < 860)
        return {Kind::Time, {}, 1 + pick(12)};
    if (kind < 890)
        return {Kind::Range, {}, pick(3) ? 1 + pick(7) : 0, 1 + pick(8)};
    if (kind < 900)
        return {Kind::Look, oneOf({"shotCam", "shotCam", "persp", "other"})};
    if (kind < 940)
        return {Kind::Undo, {}, 1 + pick(3)};
    if (kind < 968)
        return {Kind::Redo, {}, 1 + pick(3)};
    if (kind < 986)
        return {Kind::Back, {}, 1 + pick(10)};
    // What begins a new history is rare: long ones hold more.
    if (kind < 990)
        return {Kind::Unrecorded, command(), 1 + pick(6)};
    if (kind < 993) {
        Action action = stroke(Kind::Broken);
        action.line =
            pick(4) ? command() : oneOf({"undo", "redo", "currentTime 7", "currentTime 2"});
        return action;
    }
    if (kind < 999)
        return {Kind::Reopen, {}, pick(2)};
    return {Kind::NewScene, {}, pick(3)};
}

} // namespace

std::string Action::text() const {
    std::string words = line.toStdString();
    const auto at = [](QPoint place) {
        return std::to_string(place.x()) + "," + std::to_string(place.y());
    };
    const std::string times = std::to_string(number);
    const std::string drag = " from " + at(from) + " by " + at(way);
    switch (kind) {
    case Kind::Command:
        return words;
    case Kind::Unrecorded:
        return words + " // with undo switched off, then undo " + times + " times";
    case Kind::Stroke:
        return "// stroke" + drag;
    case Kind::Broken:
        return words + " // in a stroke" + drag;
    case Kind::Transform:
        return "// transform of a region" + drag;
    case Kind::Rest:
        return "// rests until the view is drawn";
    case Kind::Time:
        return "currentTime " + times;
    case Kind::Range:
        return "// highlights " + times + " frames from " + std::to_string(number2);
    case Kind::Look:
        return "lookThroughModelPanel " + words + " `getPanel -withFocus`";
    case Kind::Undo:
        return "// undo " + times + " times";
    case Kind::Redo:
        return "// redo " + times + " times";
    case Kind::Back:
        return "// undo and redo " + times + " times";
    case Kind::Reopen:
        return std::string("// saves and opens an ") + (number == 1 ? ".mb" : ".ma") + " file";
    case Kind::NewScene:
        return number == 0 ? "file -f -new" : "// the demo shot again";
    }
    return {};
}

std::vector<Action> plan(unsigned seed, int steps) {
    Planner planner(seed);
    std::vector<Action> actions;
    actions.push_back({Action::Kind::Command, // most of what follows needs a drawing
                       QStringLiteral("rvVellumNode -layer -camera shotCam -frame")});
    while (static_cast<int>(actions.size()) < steps)
        actions.push_back(planner.next());
    return actions;
}

} // namespace vellum::test
