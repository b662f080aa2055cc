// What every flag of the four script commands answers, asks of the interface and says, whether undo
// knows it, and that refusals leave nothing behind.
#include "document/LayerManager.h"
#include "foundation/Events.h"
#include "foundation/Idle.h"
#include "foundation/UndoQueue.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/FlagTables.h"
#include "plugin/WatchedCommands.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "scene/api/PluginTypes.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class CommandAnswers : public WatchedCommands {
protected:
    /// What a call answers, asks of the interface, and whether undo knows it.
    struct Answer {
        const char* line;
        const char* result;
        const char* log = "";
        std::size_t steps = 0;
    };

    void answers(const std::vector<Answer>& rows) {
        for (const Answer& row : rows) {
            SCOPED_TRACE(row.line);
            const QString before = drawing();
            const Outcome outcome = call(line(row.line));
            EXPECT_TRUE(outcome.reached);
            EXPECT_EQ(outcome.status.statusCode(), MStatus::kSuccess) << allErrors().toStdString();
            EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
            EXPECT_EQ(outcome.result.toStdString(), row.result);
            EXPECT_EQ(outcome.log.toStdString(), row.log);
            EXPECT_EQ(outcome.steps, row.steps);
            if (outcome.steps > 0)
                goBackAndForth(before);
        }
    }
};

TEST_F(CommandAnswers, NodeCommandAnswers) {
    const MStatus::MStatusCode wrong = MStatus::kInvalidParameter;
    ASSERT_TRUE(run(line("select -r shotCam; flushUndo")));
    answers({{"rvVellumNode -exists", "int: 0"}});
    for (const char* written : {"rvVellumNode -q -camera", "rvVellumNode -r", "rvVellumNode -rg"})
        fails(line(written), QString());
    for (const Row& row : kNode.rows) {
        fails(line("rvVellumNode -e %1 %2").arg(line(row.shortName), line(row.fitting)),
              line("Invalid edit parameter"), wrong);
        fails(line("rvVellumNode -e -q ") + line(row.shortName), line("Invalid edit parameter"),
              wrong);
        if (line(row.shortName) != line("-c"))
            fails(line("rvVellumNode -query ") + line(row.longName),
                  line("Invalid query parameter"), wrong);
    }
    fails(line("rvVellumNode -e"), line("Invalid edit parameter"), wrong);
    fails(line("rvVellumNode -q"), line("Invalid query parameter"), wrong);

    Outcome made = call(line("rvVellumNode -layerState 5 -frame -layerName ink -layer -c shotCam"));
    EXPECT_EQ(made.status, MS::kSuccess) << allErrors().toStdString();
    EXPECT_EQ(made.steps, 1U);
    EXPECT_EQ(made.result, line("void: "));
    EXPECT_NE(drawing().indexOf(line("shotCam 0: ink active visible 1 0 shows 0: 12=")), -1)
        << drawing().toStdString();
    EXPECT_EQ(text(line("$vlNow = stringArrayToString(`ls -sl`, \" \")")), QString());
    EXPECT_EQ(number(line("getAttr -lock vellum.rotateY")), 1);
    goBackAndForth(line("none"));
    undo();
    EXPECT_EQ(text(line("$vlNow = stringArrayToString(`ls -sl`, \" \")")), line("shotCam"));
    EXPECT_EQ(number(line("size(`ls vellum vellumShape`)")), 0);
    redo();
    answers({{"rvVellumNode -ex", "int: 1"},
             {"rvVellumNode -q -camera", "string: shotCam"},
             {"rvVellumNode -r", "void: ", "markers, layers"},
             {"rvVellumNode -q -camera", "string: persp"},
             {"rvVellumNode -rg", "void: "}});
    EXPECT_EQ(document()->modifiedCameras(), QStringList(line("persp")));
    fails(line("rvVellumNode"), line("Node already exists"));
    fails(line("rvVellumNode -layer -frame -camera top"), line("Node already exists"));
}

TEST_F(CommandAnswers, FramesOfTheFirstLayer) {
    const auto frames = [this](const char* flags) {
        EXPECT_EQ(call(line("rvVellumNode -frame ") + line(flags)).status, MS::kSuccess);
        QList<int> times;
        document()->collectFrameTimes(line("persp"), times);
        undo();
        return times;
    };
    EXPECT_EQ(frames("-layer"), QList<int>{12}) << "nothing is highlighted";
    window->timeSlider().setRange(host::TimeSlider::Range{1, 10});
    EXPECT_EQ(frames("-layer -ls 1 -c persp"), (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(frames("-camera persp"), QList<int>()) << "only with a layer";
    pluginState().interactive = false;
    EXPECT_EQ(frames("-layer -camera persp"), QList<int>{12}) << "batch mode has no time slider";
}

TEST_F(CommandAnswers, EveryoneHearsOfTheNewDrawing) {
    int selections = 0;
    const int listener = host::events::listen("SelectionChanged", [&] { ++selections; });
    ASSERT_TRUE(run(line("select -r shotCam; flushUndo")));
    host::idle::drainAll();
    selections = 0;
    EXPECT_EQ(call(line("rvVellumNode -layer")).log, line("markers, layers"));
    EXPECT_GE(selections, 2);
    EXPECT_EQ(text(line("$vlNow = stringArrayToString(`ls -sl`, \" \")")), QString());
    EXPECT_EQ(logOf(QString()), line("layers")) << "when Maya is idle";
    EXPECT_EQ(logOf(line("undo")), line("no markers, no layers 0"));
    EXPECT_EQ(logOf(line("redo")), line("markers, layers"));
    // Another drawing takes its place.
    {
        const host::UndoSuspender off;
        ASSERT_TRUE(run(line("createNode rvVellum")));
    }
    allNodes().back()->layerManager()->setMaster(true);
    EXPECT_EQ(logOf(line("undo")), line("markers, layers"));
    host::events::removeListener(listener);
}

TEST_F(CommandAnswers, NodeThatCannotBeMadeLeavesNothing) {
    ASSERT_TRUE(run(line("select -r persp; flushUndo")));
    host::removeNodeType("rvVellum");
    fails(line("rvVellumNode -layer"), line("Failed to create shape"));
}

TEST_F(CommandAnswers, LayerCommandAnswers) {
    makeDrawing();
    ASSERT_TRUE(run(line("select -r persp; flushUndo")));
    answers({{"rvVellumLayer -q -act persp", "int: 1"},
             {"rvVellumLayer -query -active top", "int: -1"},
             {"rvVellumLayer -count persp", "int: 3"},
             {"rvVellumLayer -count top", "int: 0"},
             {"rvVellumLayer -qn 2 persp", "string: c"},
             {"rvVellumLayer -qv 2 persp", "int: 0"},
             {"rvVellumLayer -qo 1 persp", "float: 1"},
             {"rvVellumLayer -qs 0 persp", "int: 0"},
             {"rvVellumLayer -irp path name persp", "void: "},
             {"rvVellumLayer -e -act 0 shotCam", "int: 0", "markers, layers", 1},
             {"rvVellumLayer -edit -active 0 persp", "int: 0", "markers, layers", 1},
             {"rvVellumLayer -add persp", "int: 3", "markers, layers", 1},
             {"rvVellumLayer -add -ls 5 -n a persp", "int: 4", "markers, layers", 1},
             {"rvVellumLayer -ins 1 -n ink -layerState 2 persp", "int: 1", "markers, layers", 1},
             {"rvVellumLayer -insert 99 persp", "int: 6", "markers, layers", 1},
             {"rvVellumLayer -en a 1 persp", "void: ", "markers, layers", 1},
             {"rvVellumLayer -ev 1 3 persp", "void: ", "markers, layers", 1},
             {"rvVellumLayer -eo 1.7 0 persp", "void: ", "", 1},
             {"rvVellumLayer -es 2 0 persp", "void: ", "markers, layers", 1},
             {"rvVellumLayer -del 0 persp", "void: ", "markers, layers", 1},
             {"rvVellumLayer -deleteAll shotCam", "void: ", "markers, layers", 1},
             {"rvVellumLayer -qn 4 persp", "string: Layer 1"},
             {"rvVellumLayer -qs 4 persp", "int: 0"},
             {"rvVellumLayer -da persp", "void: ", "markers, layers", 1}});
    EXPECT_EQ(document()->totalLayerCount(), 0);
    while (host::undoQueue().canUndo())
        undo();
    EXPECT_EQ(document()->totalLayerCount(), 4);

    for (const Row& row : kLayer.rows) {
        const QString flag = line(row.shortName);
        if (flag != line("-act")) {
            fails(line("rvVellumLayer -e %1 %2 persp").arg(flag, line(row.fitting)),
                  line("Invalid edit parameter"));
            fails(line("rvVellumLayer -q %1 persp").arg(flag), line("Invalid query parameter"));
        }
        fails(line("rvVellumLayer %1 %2 nobody").arg(flag, line(row.fitting)),
              line("Camera does not exist: nobody"));
        if (flag[1] == QLatin1Char('q') || (flag[1] == QLatin1Char('e') && flag.size() == 3)) {
            QString outside = line(row.fitting);
            outside.chop(1);
            for (const char* index : {"3", "4000000000"})
                EXPECT_EQ(call(line("rvVellumLayer %1 %2%3 persp").arg(flag, outside, line(index)))
                              .said.section(QLatin1Char('('), 0, 1),
                          line("Layer does not exist for camera (index): persp "));
        }
    }
    const struct {
        const char* line;
        const char* message;
    } refusals[] = {
        {"rvVellumLayer -e persp", "Invalid edit parameter"},
        {"rvVellumLayer -q persp", "Invalid query parameter"},
        {"rvVellumLayer -e -q -act persp", "Invalid edit parameter"},
        {"rvVellumLayer persp", "Invalid command parameters"},
        {"rvVellumLayer -act 1 persp", "Invalid command parameters"},
        {"rvVellumLayer -n x -nc shotCam -ls 1 persp", "Invalid command parameters"},
        {"rvVellumLayer -e -act 1 persp", ""},
        {"rvVellumLayer -e -act 3 persp", "Invalid layer index: 3"},
        {"rvVellumLayer -del 3 persp", "Invalid layer: persp (3)"},
        {"rvVellumLayer -mv 3 0 persp", "Invalid layer: persp (3)"},
        {"rvVellumLayer -mv 3 0 -nc shotCam persp", "Invalid layer: persp (3)"},
        {"rvVellumLayer -mv 0 0 -nc nobody persp", "Camera does not exist: nobody"},
        {"rvVellumLayer -mva nobody persp", "Camera does not exist: nobody"},
        {"rvVellumLayer -mva nobody top", "Camera does not exist: nobody"},
        {"rvVellumLayer -qn 7 persp", "Layer does not exist for camera (index): persp (7)"},
        {"rvVellumLayer -en x 9 shotCam", "Layer does not exist for camera (index): shotCam (9)"},
        {"rvVellumLayer -es 3 0 persp", "Invalid state value: 3"},
        {"rvVellumLayer -es 3 9 persp", "Layer does not exist for camera (index): persp (9)"},
    };
    for (const auto& refusal : refusals)
        fails(line(refusal.line), line(refusal.message));

    ASSERT_TRUE(run(line("delete `ls -type rvVellum`; flushUndo")));
    for (const Row& row : kLayer.rows) {
        const QString flag = line(row.shortName);
        const bool modifies = flag == line("-act") || flag == line("-n") || flag == line("-nc") ||
                              flag == line("-ls");
        fails(line("rvVellumLayer %1 %2 persp").arg(flag, line(row.fitting)),
              modifies               ? line("Invalid command parameters")
              : flag == line("-add") ? line("Failed to add layer. Node does not exist.")
              : flag == line("-ins") ? line("Failed to insert layer. Node does not exist.")
                                     : line("Node not found"));
    }
    fails(line("rvVellumLayer -q -act persp"), line("Node not found"));
}

TEST_F(CommandAnswers, FrameCommandAnswers) {
    makeDrawing();
    answers({{"rvVellumFrame -ins", "void: ", "markers", 1},
             {"rvVellumFrame -insert shotCam", "void: ", "markers", 1},
             {"rvVellumFrame -cp persp", "void: ", "", 0}});
    fails(line("rvVellumFrame -duplicate"), line("A frame already exists at the current time."));
    answers({{"rvVellumFrame -clr", "void: ", "markers", 1},
             {"rvVellumFrame -cut", "void: ", "markers", 1},
             {"rvVellumFrame -dup", "void: ", "markers", 1},
             {"rvVellumFrame -pst persp", "void: ", "markers", 1},
             {"rvVellumFrame -del shotCam", "void: ", "markers", 1},
             {"rvVellumFrame -sf persp", "void: ", "", 1},
             {"rvVellumFrame -sb shotCam", "void: ", "", 1},
             {"rvVellumFrame -mv 30 1 20", "void: ", "markers", 1},
             {"rvVellumFrame -retime 4 shotCam", "void: ", "markers", 1},
             {"rvVellumFrame -mvn -rel -ret 2", "void: ", "markers", 1}});

    // Unnamed, the frames that the time slider marks are moved, wherever the view looks through.
    ASSERT_TRUE(run(line("rvVellumLayer -e -act 0 shotCam; flushUndo")));
    answers({{"rvVellumFrame -move 4 5 5", "void: ", "markers", 1}});
    EXPECT_NE(drawing().indexOf(line("shotCam 0: d active visible 1 0 shows 0: 9=")), -1)
        << drawing().toStdString();

    fails(line("rvVellumFrame persp"), line("Invalid command parameters"));
    fails(line("rvVellumFrame -rel -mvn persp"), line("Invalid command parameters"));
    fails(line("rvVellumFrame -move 0 1 20 persp"), line("Move Failed. The offset is 0"));
    ASSERT_TRUE(run(line("rvVellumLayer -es 2 0 shotCam; flushUndo")));
    const char* const locked[][2] = {
        {"-ins", "Cannot add frames to a locked layer"},
        {"-dup", "Cannot duplicate frames on a locked layer"},
        {"-del", "Cannot remove frames from a locked layer"},
        {"-cut", "Cannot cut frames from a locked layer"},
        {"-pst", "Cannot paste frames to a locked layer"},
        {"-clr", "Cannot remove frames from a locked layer"},
    };
    for (const auto& row : locked)
        fails(line("rvVellumFrame %1 shotCam").arg(line(row[0])), line(row[1]));
    for (const Row& row : kFrame.rows)
        fails(line("rvVellumFrame %1 %2 nobody").arg(line(row.longName), line(row.fitting)),
              line("Camera does not exist: nobody"));
    ASSERT_TRUE(run(line("delete `ls -type rvVellum`; flushUndo")));
    for (const Row& row : kFrame.rows)
        fails(line("rvVellumFrame %1 %2 persp").arg(line(row.shortName), line(row.fitting)),
              line(row.shortName) == line("-ins")
                  ? line("Failed to insert key. Node does not exist.")
                  : line("Node not found"));
}

TEST_F(CommandAnswers, UtilCommandAnswers) {
    makeDrawing();
    const char* const ghosts = "display, UpdateMainMenu 1 1 0 0, toolbox";
    answers({
        {"rvVellumUtil -e -dc 1 2 255", "void: ", "toolbox"},
        {"rvVellumUtil -q -drawColor", "int[]: 1 2 255"},
        {"rvVellumUtil -gp 4 -e", "void: ", ghosts},
        {"rvVellumUtil -q -ghostPrevious", "int: 1"},
        {"rvVellumUtil -e -gp 0", "void: ", "display, UpdateMainMenu 1 0 0 0, toolbox"},
        {"rvVellumUtil -e -gn -7", "void: ", "display, UpdateMainMenu 1 0 1 0, toolbox"},
        {"rvVellumUtil -q -gn", "int: 1"},
        {"rvVellumUtil -e -gn -7", "void: ", "display, UpdateMainMenu 1 0 0 0, toolbox"},
        {"rvVellumUtil -e -gp 1", "void: ", ghosts},
        {"rvVellumUtil -e -gpc 0", "void: ", ghosts},
        {"rvVellumUtil -q -gpc", "int: 1"},
        {"rvVellumUtil -e -gnc 25", "void: ", ghosts},
        {"rvVellumUtil -q -gnc", "int: 9"},
        {"rvVellumUtil -e -gco 2", "void: ", ghosts},
        {"rvVellumUtil -q -gco", "int: 1"},
        {"rvVellumUtil -e -gcp 3 2 1", "void: ", ghosts},
        {"rvVellumUtil -q -gcp", "int[]: 3 2 1"},
        {"rvVellumUtil -e -gcn 6 5 4", "void: ", ghosts},
        {"rvVellumUtil -q -gcn", "int[]: 6 5 4"},
        {"rvVellumUtil -e -tfd 2", "void: ", "no markers, UpdateMainMenu 1 1 0 2"},
        {"rvVellumUtil -q -tfd", "int: 2"},
        {"rvVellumUtil -e -tfd 0", "void: ", "markers, UpdateMainMenu 1 1 0 0"},
        {"rvVellumUtil -rtd", "void: ", "markers"},
        {"rvVellumUtil -d", "void: ", "make rvVlDrawCtx"},
        {"rvVellumUtil -q -draw", "void: "},
        {"rvVellumUtil -pt", "void: ", "UpdateMainMenu 0 1 0 0, toolbox, options"},
        {"rvVellumUtil -tt", "void: ", "UpdateMainMenu 3 1 0 0, toolbox, options"},
        {"rvVellumUtil -e -rt", "void: ", "UpdateMainMenu 7 1 0 0, toolbox, options"},
        {"rvVellumUtil -t", "void: ", "make rvVlTransformCtx"},
        {"rvVellumUtil -fv", "void: ", "CreateFloatingViewport "},
        {"rvVellumUtil -fvm shotCam", "void: ", "CreateFloatingViewport shotCam"},
        {"rvVellumUtil -fvm SHOTCAM", "void: ", "CreateFloatingViewport "},
        {"rvVellumUtil -fvm \"\"", "void: ", "choose, CreateFloatingViewport shotCam"},
        {"rvVellumUtil -lm", "void: ", "show 0"},
        {"rvVellumUtil -rlm", "void: ", "layers"},
        {"rvVellumUtil -tb", "void: ", "show 1"},
        {"rvVellumUtil -to", "void: ", "show 2"},
        {"rvVellumUtil -rtb", "void: ", "toolbox"},
        {"rvVellumUtil -q -dc", "int[]: 9 8 7"},
        {"rvVellumUtil -cp", "void: ", "show 3"},
        {"rvVellumUtil -rtt", "void: ", "show 4"},
        {"rvVellumUtil -nl", "void: ", "open 0"},
        {"rvVellumUtil -lp", "void: ", "properties persp 1"},
        {"rvVellumUtil -gs", "void: ", "open 1"},
        {"rvVellumUtil -rvi", "void: ", "open 4"},
        {"rvVellumUtil -rui", "void: ", "reset 0"},
        {"rvVellumUtil -pr", "void: ", "open 2"},
        {"rvVellumUtil -ab", "void: ", "open 3"},
    });
    EXPECT_EQ(settings().activeColor, QColor(9, 8, 7, 255));

    const char* const needMode[] = {"-dc",  "-gp",  "-gn",  "-gpc", "-gnc",
                                    "-gco", "-gcp", "-gcn", "-tfd"};
    const MStatus::MStatusCode wrong = MStatus::kInvalidParameter;
    const QString invalid = line("Invalid command parameters");
    for (const Row& row : kUtil.rows) {
        const bool needs = std::find(std::begin(needMode), std::end(needMode),
                                     line(row.shortName)) != std::end(needMode);
        if (needs) {
            fails(line("rvVellumUtil %1 %2").arg(line(row.longName), line(row.fitting)), invalid,
                  wrong);
            fails(line("rvVellumUtil -e -q %1").arg(line(row.shortName)), invalid, wrong);
        } else if (row.kinds[0]) { // its arguments are missing
            fails(line("rvVellumUtil -q ") + line(row.shortName), invalid, wrong);
        }
    }
    for (const char* mode : {"", " -e", " -q"})
        fails(line("rvVellumUtil") + line(mode), invalid, wrong);
    for (const char* flag : {"-dc", "-gcp", "-gcn"}) {
        for (const char* color : {"256 0 0", "0 256 0", "0 0 256", "0 4000000000 0"})
            fails(line("rvVellumUtil -e %1 %2").arg(line(flag), line(color)),
                  line("Color values must be in the range of 0-255."));
    }
    for (const char* value : {"3", "4000000000"})
        fails(line("rvVellumUtil -e -tfd ") + line(value),
              line("Invalid timeline frame display option."));
}

TEST_F(CommandAnswers, OptionsAreClamped) {
    Settings& now = settings();
    const auto options = [this](const char* written) {
        const Outcome outcome = call(line("rvVellumUtil ") + line(written));
        EXPECT_EQ(outcome.status, MS::kSuccess) << written;
        EXPECT_EQ(outcome.log, line("toolbox, options")) << written;
    };
    for (const ToolInfo& info : kTools) {
        QString rest; // behind size and opacity
        for (const Keep keep : {info.hardness.keep, info.tablet.keep})
            rest += keep == Keep::Nowhere ? QString() : line("0 ");
        rest += info.factoryFont ? line("Arial") : QString();
        const auto set = [&](const char* sizeAndOpacity) {
            options(line("%1 %2 %3")
                        .arg(line(info.optionsFlag.shortName), line(sizeAndOpacity), rest)
                        .toLatin1()
                        .constData());
        };
        const ToolOptions& stored = now.of(info.tool);
        set("0 0");
        EXPECT_TRUE(stored.size == 1 && stored.opacity == 1) << info.name;
        set("4294967295 101");
        EXPECT_TRUE(stored.size == info.size.largest && stored.opacity == 100) << info.name;
        set("50 99");
        EXPECT_TRUE(stored.size == 50 && stored.opacity == 99) << info.name;
    }
    options("-bo 10 50 150 7");
    EXPECT_TRUE(now.of(Tool::Brush).hardness == 100 && now.of(Tool::Brush).tabletEnabled);
    options("-eo 10 50 4294967295 1");
    EXPECT_TRUE(now.of(Tool::Eraser).hardness == 100 && now.of(Tool::Eraser).tabletEnabled);
    options("-bo 10 50 40 0");
    EXPECT_TRUE(now.of(Tool::Brush).hardness == 40 && !now.of(Tool::Brush).tabletEnabled);
    options("-po 80 0 1");
    EXPECT_TRUE(now.of(Tool::Pencil).tabletEnabled);
    options("-txo 20 30 \"DejaVu \\\"Sans\\\"\"");
    EXPECT_EQ(now.of(Tool::Text).fontFamily, line("DejaVu \"Sans\""));
}

TEST_F(CommandAnswers, ToolsThatCannotBeHadFailSilently) {
    contextName = line("noSuchContext");
    fails(line("rvVellumUtil -draw"), QString()); // no drawing is made for a tool nobody gets
    pluginState().drawContextName.clear();
    makeDrawing();
    for (const char* flag : {"-draw", "-transform", "-pencilTool"}) {
        SCOPED_TRACE(flag);
        const QString written = line("rvVellumUtil ") + line(flag);
        contextName.clear();
        fails(written, QString());
        contextName = line("noSuchContext");
        fails(written, QString());
        contextName = line("selectSuperContext");
        // The name is kept, since asking for it runs, whatever the answer is.
        fails(written, QString());
        pluginState().drawContextName.clear();
        pluginState().transformContextName.clear();
        EXPECT_EQ(call(written).status, MS::kSuccess);
    }
    connectPanels(nullptr);
    for (const char* flag : {"-lm", "-tb", "-to", "-cp", "-rtt", "-nl", "-lp", "-gs", "-pr"})
        fails(line("rvVellumUtil ") + line(flag), QString());
    ASSERT_TRUE(run(line("rvVellumLayer -da persp; rvVellumLayer -da shotCam; flushUndo")));
    fails(line("rvVellumUtil -lp"), QString());
}

TEST_F(CommandAnswers, ResetForgetsWherePanelsWere) {
    makeDrawing();
    class Closed : public Panels {
    public:
        void closeAll() override { settings().toolboxGeometry = "stored while closing"; }
    } closed;
    connectPanels(&closed);
    QByteArray Settings::*const geometries[] = {
        &Settings::toolboxGeometry, &Settings::toolOptionsGeometry, &Settings::layerManagerGeometry,
        &Settings::colorPaletteGeometry, &Settings::retimingToolGeometry};
    for (const auto geometry : geometries)
        settings().*geometry = "there";
    auto button = QMessageBox::No;
    QTimer answering;
    QObject::connect(&answering, &QTimer::timeout, &answering, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->button(button)->click();
    });
    answering.start(1);
    EXPECT_EQ(call(line("rvVellumUtil -rui")).status, MS::kSuccess);
    for (const auto geometry : geometries)
        EXPECT_EQ(settings().*geometry, "there");
    button = QMessageBox::Yes;
    EXPECT_EQ(call(line("rvVellumUtil -resetUI")).status, MS::kSuccess);
    for (const auto geometry : geometries)
        EXPECT_TRUE((settings().*geometry).isEmpty());
    // Nobody answers in batch mode, so nothing is asked.
    answering.stop();
    pluginState().interactive = false;
    const QString noInterface = line("There is no user interface in batch mode.");
    for (const char* flag :
         {"-rui", "-tb", "-to", "-lm", "-cp", "-rtt", "-nl", "-lp", "-gs", "-pr", "-ab"})
        fails(line("rvVellumUtil ") + line(flag), noInterface);
    EXPECT_EQ(call(line("rvVellumUtil -rvi")).status, MS::kSuccess);
    EXPECT_EQ(call(line("rvVellumUtil -fvm \"\"")).status, MS::kSuccess);
    // No camera is made for a view that there cannot be.
    for (const char* flag : {"-fv", "-fvm shotCam", "-fvm nobody"}) {
        SCOPED_TRACE(flag);
        fails(line("rvVellumUtil ") + line(flag), noInterface);
        EXPECT_EQ(call(line("rvVellumUtil ") + line(flag)).log, QString());
    }
    connectPanels(nullptr);
}

} // namespace
} // namespace vellum::test
