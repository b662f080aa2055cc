// The util and layer commands, through the script line of a host with the real plug-in.
#include "foundation/UndoQueue.h"
#include "support/Session.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

namespace vellum::test {
namespace {

class Util : public Session {};
class Layers : public Session {
protected:
    void SetUp() override {
        Session::SetUp();
        ASSERT_TRUE(run(QStringLiteral("rvVellumNode")));
        ASSERT_TRUE(run(QStringLiteral("camera; rename camera1 shotCam")));
    }

    /// Names of the camera's layers from the bottom, the active one in brackets.
    QString stack(const QString& camera) {
        const int active = number(QStringLiteral("rvVellumLayer -q -active ") + camera);
        QStringList names;
        const int count = number(QStringLiteral("rvVellumLayer -count ") + camera);
        for (int i = 0; i < count; ++i) {
            const QString name = text(QStringLiteral("rvVellumLayer -qn %1 %2").arg(i).arg(camera));
            names.append(i == active ? QLatin1Char('[') + name + QLatin1Char(']') : name);
        }
        return names.join(QLatin1Char(' '));
    }

    void add(const char* name, const char* camera = "persp") {
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -add -n %1 %2")
                            .arg(QLatin1String(name), QLatin1String(camera))));
    }

    /// Runs a line and goes back and forth over it.
    void undoable(const QString& line, const QString& camera, const QString& before,
                  const QString& after) {
        ASSERT_EQ(stack(camera), before);
        ASSERT_TRUE(run(line)) << line.toStdString();
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(stack(camera), after) << line.toStdString();
            ASSERT_TRUE(run(QStringLiteral("undo"))) << line.toStdString();
            EXPECT_EQ(stack(camera), before) << line.toStdString();
            ASSERT_TRUE(run(QStringLiteral("redo"))) << line.toStdString();
        }
        EXPECT_EQ(stack(camera), after) << line.toStdString();
    }
};

TEST_F(Util, GhostsCountsAndSwitches) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -ghostPreviousCount 0")));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gpc")), 1);
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -ghostNextCount 25")));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gnc")), 9);
    const int before = number(QStringLiteral("rvVellumUtil -q -gp"));
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -ghostPrevious -1")));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gp")), 1 - before);
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -ghostPrevious -1")));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gp")), before);
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -gn 4; rvVellumUtil -e -gco 3")));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gn")), 1);
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -ghostColorOverride")), 1);
}

TEST_F(Util, ColoursAreCheckedBeforeTheyAreTaken) {
    for (const char* flag : {"-drawColor", "-ghostColorPrevious", "-ghostColorNext"}) {
        SCOPED_TRACE(flag);
        const QString name = QString::fromLatin1(flag);
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e %1 1 2 255").arg(name)));
        refuses(QStringLiteral("rvVellumUtil -e %1 255 256 0").arg(name),
                QStringLiteral("[Vellum2] Color values must be in the range of 0-255."));
        EXPECT_EQ(number(QStringLiteral("$c = `rvVellumUtil -q %1`; $s = size($c)").arg(name)), 3);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(number(QStringLiteral("$v = $c[%1]").arg(i)), i == 2 ? 255 : i + 1) << flag;
    }
}

TEST_F(Util, TimelineModeAndMissingModes) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -tfd 2")));
    refuses(QStringLiteral("rvVellumUtil -e -tfd 3"),
            QStringLiteral("[Vellum2] Invalid timeline frame display option."));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -tfd")), 2);
    for (const char* line : {"rvVellumUtil", "rvVellumUtil -dc 1 2 3", "rvVellumUtil -gp 1"})
        refuses(QString::fromLatin1(line), QStringLiteral("[Vellum2] Invalid command parameters"));
    EXPECT_TRUE(run(QStringLiteral("rvVellumUtil -rtd; rvVellumUtil -rlm; rvVellumUtil -rvi")));
    errors.clear();
    EXPECT_FALSE(run(QStringLiteral("rvVellumUtil -layerProperties"))) << "there is no layer";
    EXPECT_TRUE(errors.filter(QStringLiteral("[Vellum2]")).isEmpty());
}

TEST_F(Util, TheNodeThatATakenToolMakesIsAStepToUndo) {
    ASSERT_TRUE(run(QStringLiteral("flushUndo; rvVellumNode; delete vellum")));
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -brushTool; rvVellumUtil -pencilTool")));
    EXPECT_EQ(number(QStringLiteral("$n = size(`ls -type rvVellum`)")), 1);
    // The deleted drawing must not come back beside it.
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(number(QStringLiteral("$n = size(`ls -type rvVellum`)")), 0);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(text(QStringLiteral("$t = stringArrayToString(`ls -type rvVellum`, \" \")")),
              QStringLiteral("vellumShape"));
}

TEST_F(Layers, StructureIsUndoable) {
    undoable(QStringLiteral("rvVellumLayer -add -n a persp"), QStringLiteral("persp"), QString(),
             QStringLiteral("[a]"));
    undoable(QStringLiteral("rvVellumLayer -addLayer -n b -layerState 1 persp"),
             QStringLiteral("persp"), QStringLiteral("[a]"), QStringLiteral("a [b]"));
    undoable(QStringLiteral("rvVellumLayer -ins 0 -n c persp"), QStringLiteral("persp"),
             QStringLiteral("a [b]"), QStringLiteral("c a [b]"));
    undoable(QStringLiteral("rvVellumLayer -e -active 0 persp"), QStringLiteral("persp"),
             QStringLiteral("c a [b]"), QStringLiteral("[c] a b"));
    undoable(QStringLiteral("rvVellumLayer -move 0 99 persp"), QStringLiteral("persp"),
             QStringLiteral("[c] a b"), QStringLiteral("a b [c]"));
    undoable(QStringLiteral("rvVellumLayer -delete 2 persp"), QStringLiteral("persp"),
             QStringLiteral("a b [c]"), QStringLiteral("a [b]"));
    undoable(QStringLiteral("rvVellumLayer -nc shotCam -move 1 0 persp"), QStringLiteral("persp"),
             QStringLiteral("a [b]"), QStringLiteral("[a]"));
    EXPECT_EQ(stack(QStringLiteral("shotCam")), QStringLiteral("[b]"));
    undoable(QStringLiteral("rvVellumLayer -moveAll shotCam persp"), QStringLiteral("shotCam"),
             QStringLiteral("[b]"), QStringLiteral("b [a]"));
    undoable(QStringLiteral("rvVellumLayer -deleteAll shotCam"), QStringLiteral("shotCam"),
             QStringLiteral("b [a]"), QString());
}

TEST_F(Layers, PropertiesAreUndoable) {
    add("a");
    add("b");
    struct Case {
        const char* edit;
        const char* query;
        const char* before;
        const char* after;
    };
    for (const Case& c :
         {Case{"-en \"new \\\"name\\\"\" 0", "-qn 0", "a", "new \"name\""},
          Case{"-ev 0 0", "-qv 0", "1", "0"}, Case{"-eo 0.25 0", "-qo 0", "1", "0.25"},
          Case{"-es 2 0", "-qs 0", "0", "2"}}) {
        SCOPED_TRACE(c.edit);
        const QString query =
            QStringLiteral("$shown = string(`rvVellumLayer %1 persp`)").arg(QLatin1String(c.query));
        EXPECT_EQ(text(query).toStdString(), c.before) << c.edit;
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer %1 persp").arg(QLatin1String(c.edit))));
        EXPECT_EQ(text(query).toStdString(), c.after) << c.edit;
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(text(query).toStdString(), c.before) << c.edit;
    }
}

TEST_F(Layers, ShowingWhatIsShownIsNoStep) {
    add("a");
    for (const char* edit : {"-ev 0 0", "-ev 1 0"}) {
        SCOPED_TRACE(edit);
        const QString line = QStringLiteral("rvVellumLayer %1 persp").arg(QLatin1String(edit));
        ASSERT_TRUE(run(line));
        const std::size_t steps = host::undoQueue().undoCount();
        ASSERT_TRUE(run(QStringLiteral("file -modified 0; ") + line));
        EXPECT_EQ(host::undoQueue().undoCount(), steps);
        EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
    }
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Layers, RefusalsChangeNothing) {
    add("a");
    add("b");
    const QString before = stack(QStringLiteral("persp"));
    refuses(QStringLiteral("rvVellumLayer -count nobody"),
            QStringLiteral("[Vellum2] Camera does not exist: nobody"));
    refuses(QStringLiteral("rvVellumLayer -qn 7 persp"),
            QStringLiteral("[Vellum2] Layer does not exist for camera (index): persp (7)"));
    refuses(QStringLiteral("rvVellumLayer -es 3 0 persp"),
            QStringLiteral("[Vellum2] Invalid state value: 3"));
    refuses(QStringLiteral("rvVellumLayer -e -name x persp"),
            QStringLiteral("[Vellum2] Invalid edit parameter"));
    refuses(QStringLiteral("rvVellumLayer -q -count persp"),
            QStringLiteral("[Vellum2] Invalid query parameter"));
    refuses(QStringLiteral("rvVellumLayer persp"),
            QStringLiteral("[Vellum2] Invalid command parameters"));
    refuses(QStringLiteral("rvVellumLayer -moveAll nobody persp"),
            QStringLiteral("[Vellum2] Camera does not exist: nobody"));
    EXPECT_FALSE(run(QStringLiteral("rvVellumLayer -e -active 1 persp"))) << "already active";
    refuses(QStringLiteral("rvVellumLayer -delete 5 persp"),
            QStringLiteral("[Vellum2] Invalid layer: persp (5)"));
    EXPECT_EQ(stack(QStringLiteral("persp")), before);
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -q -active shotCam")), -1);
    ASSERT_TRUE(run(QStringLiteral("delete vellum")));
    refuses(QStringLiteral("rvVellumLayer -count persp"),
            QStringLiteral("[Vellum2] Node not found"));
    refuses(QStringLiteral("rvVellumLayer -add persp"),
            QStringLiteral("[Vellum2] Failed to add layer. Node does not exist."));
    refuses(QStringLiteral("rvVellumLayer -ins 0 persp"),
            QStringLiteral("[Vellum2] Failed to insert layer. Node does not exist."));
}

/// Renames a camera without the undo queue knowing.
void renameBehind(const char* from, const char* to) {
    MSelectionList list;
    MObject camera;
    list.add(from);
    ASSERT_EQ(list.getDependNode(0, camera), MS::kSuccess);
    MFnDependencyNode(camera).setName(to);
}

TEST_F(Layers, UndoRefusesWhatIsNotThereAnyMore) {
    add("a", "shotCam");
    add("b");
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -nc persp -move 0 0 shotCam")));
    EXPECT_EQ(stack(QStringLiteral("persp")), QStringLiteral("a [b]"));
    renameBehind("shotCam", "lost");
    refuses(QStringLiteral("undo"), QStringLiteral("[Vellum2] Camera does not exist: shotCam"));
    EXPECT_EQ(stack(QStringLiteral("persp")), QStringLiteral("a [b]"));
    renameBehind("lost", "shotCam");
    {
        const host::UndoSuspender off;
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -deleteAll persp")));
    }
    refuses(QStringLiteral("undo"),
            QStringLiteral("[Vellum2] The layers of the camera have changed since."));
    {
        // Another drawing in place of the one that was changed.
        const host::UndoSuspender off;
        ASSERT_TRUE(run(QStringLiteral("delete vellum; rvVellumNode")));
    }
    add("c");
    ASSERT_TRUE(run(QStringLiteral("undo")));
    refuses(QStringLiteral("undo"), QStringLiteral("[Vellum2] Node not found"));
}

TEST_F(Layers, UndoFindsItsOwnLayersWhateverWasDoneBehindIt) {
    const auto behind = [this](const char* line) {
        const host::UndoSuspender off;
        ASSERT_TRUE(run(QString::fromLatin1(line))) << line;
    };
    const QString persp = QStringLiteral("persp");
    for (const char* name : {"a", "b", "c"})
        add(name);
    const char* const edits[] = {"-en x 0",     "-ev 0 0",   "-eo 0.5 0",
                                 "-es 2 0",     "-delete 0", "-mv 0 1",
                                 "-ins 1 -n n", "-add -n n", "-mv 0 0 -nc shotCam"};
    for (const char* edit : edits) {
        SCOPED_TRACE(edit);
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer %1 persp").arg(QLatin1String(edit))));
        behind("rvVellumLayer -ins 0 -n under persp; rvVellumLayer -ins 0 -n under2 shotCam");
        ASSERT_TRUE(run(QStringLiteral("undo"))) << allErrors().toStdString();
        // Moves count from the bottom, so the order may be another one.
        EXPECT_EQ(stack(persp).count(QLatin1Char(' ')), 3) << stack(persp).toStdString();
        for (const char* name : {"a", "b", "[c]", "under"})
            EXPECT_TRUE(stack(persp).split(QLatin1Char(' ')).contains(QLatin1String(name)))
                << name << " in " << stack(persp).toStdString();
        EXPECT_EQ(stack(QStringLiteral("shotCam")), QStringLiteral("[under2]"));
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE("layer " + std::to_string(i));
            const QString at = QString::number(i);
            EXPECT_EQ(number(QStringLiteral("rvVellumLayer -qs %1 persp").arg(at)), 0);
            EXPECT_EQ(number(QStringLiteral("$v = int(`rvVellumLayer -qv %1 persp`)").arg(at)), 1);
            EXPECT_EQ(number(QStringLiteral("$o = int(`rvVellumLayer -qo %1 persp`)").arg(at)), 1);
        }
        // Redo changes the same layer again, and again it comes back.
        ASSERT_TRUE(run(QStringLiteral("redo; undo"))) << allErrors().toStdString();
        behind("rvVellumLayer -deleteAll shotCam; rvVellumLayer -deleteAll persp;"
               "rvVellumLayer -add -n a persp; rvVellumLayer -add -n b persp;"
               "rvVellumLayer -add -n c persp");
    }

    // Namesakes in their places are not theirs.
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -eo 0.5 0 persp")));
    behind("rvVellumLayer -delete 0 persp; rvVellumLayer -ins 0 -n a persp;"
           "rvVellumLayer -eo 0.25 0 persp");
    const QString changed =
        QStringLiteral("[Vellum2] The layers of the camera have changed since.");
    refuses(QStringLiteral("undo"), changed);
    EXPECT_EQ(number(QStringLiteral("$o = int(100 * `rvVellumLayer -qo 0 persp`)")), 25);
    ASSERT_TRUE(run(QStringLiteral("flushUndo; rvVellumLayer -moveAll shotCam persp")));
    behind("rvVellumLayer -delete 1 shotCam");
    refuses(QStringLiteral("undo"), changed);
    EXPECT_EQ(stack(QStringLiteral("shotCam")), QStringLiteral("a [c]"));
    behind("rvVellumLayer -deleteAll shotCam");
    ASSERT_TRUE(
        run(QStringLiteral("flushUndo; rvVellumLayer -add -n a persp; rvVellumLayer -delete "
                           "0 persp; undo")));
    behind("rvVellumLayer -deleteAll persp; rvVellumLayer -add -n a persp");
    refuses(QStringLiteral("redo"), changed);
    EXPECT_EQ(stack(persp), QStringLiteral("[a]"));
}

} // namespace
} // namespace vellum::test
