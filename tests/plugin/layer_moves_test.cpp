// Layers moved within a camera, to another and onto their own, and back through the undo queue.
#include "document/LayerManager.h"
#include "foundation/UndoQueue.h"
#include "plugin/WatchedCommands.h"

#include <iterator>

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class LayerMoves : public WatchedCommands {
protected:
    void SetUp() override {
        WatchedCommands::SetUp();
        makeDrawing();
    }

    /// Names from the bottom, the active one in brackets; a star at the current camera.
    QString stacks() {
        QStringList all;
        for (const char* name : {"persp", "shotCam", "top"}) {
            const QString camera = line(name);
            QStringList names;
            for (int i = 0; i < document()->cameraLayerCount(camera); ++i) {
                const Layer& layer = *document()->layer(camera, i);
                names.append(layer.isActive() ? line("[%1]").arg(layer.name()) : layer.name());
            }
            all.append(names.join(QLatin1Char(' ')) +
                       (document()->currentCamera() == camera ? line("*") : QString()));
        }
        return all.join(line(" | "));
    }

    void goTo(int frame) {
        ASSERT_TRUE(run(line("currentTime ") + QString::number(frame)));
        document()->timeChanged(frame);
    }

    void setName(const char* camera, int index, const char* name) {
        document()->restoreLayerName(line(camera), index, line(name));
    }
};

TEST_F(LayerMoves, GoBackAndForthExactly) {
    const QString start = line("a [b] c* | [d] | ");
    const struct {
        const char* command;
        const char* after;
        const char* result;
    } rows[] = {
        {"-mv 0 2 persp", "[b] c a* | [d] | ", "int: 2"},
        {"-mv 1 99 persp", "a c [b]* | [d] | ", "int: 2"},
        {"-mv 2 -5 persp", "c a [b]* | [d] | ", "int: 0"},
        {"-mv 1 1 persp", "a [b] c* | [d] | ", "int: 1"},
        {"-mv 1 0 -nc shotCam persp", "[a] c* | b [d] | ", "int: 0"},
        {"-newCamera shotCam -move 0 99 persp", "[b] c* | [d] a | ", "int: 1"},
        {"-mv 1 -1 -nc top persp", "[a] c* | [d] | [b]", "int: 0"},
        {"-mv 0 -1 -nc persp shotCam", "a [b] c d* |  | ", "int: 3"},
        {"-mv 0 1 -nc persp persp", "[b] a c* | [d] | ", "int: 1"},
        {"-mv 1 0 -nc persp persp", "b [a] c* | [d] | ", "int: 0"},
        {"-mv 0 0 -nc shotCam shotCam", "a [b] c* | [d] | ", "int: 0"},
        {"-mva shotCam persp", " | d a [b] c* | ", "void: "},
        {"-mva persp shotCam", "a b c [d]* |  | ", "void: "},
        {"-mva top persp", " | [d] | a [b] c*", "void: "},
        {"-mva persp persp", "a [b] c* | [d] | ", "void: "},
        {"-mva shotCam shotCam", "a [b] c | [d]* | ", "void: "},
        {"-mva shotCam top", "a [b] c* | [d] | ", "void: "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        ASSERT_EQ(stacks().toStdString(), start.toStdString());
        const QString before = drawing();
        const Outcome outcome = call(line("rvVellumLayer ") + line(row.command));
        EXPECT_EQ(outcome.status, MS::kSuccess) << allErrors().toStdString();
        EXPECT_EQ(stacks().toStdString(), row.after);
        EXPECT_EQ(outcome.result.toStdString(), row.result);
        EXPECT_EQ(outcome.steps, 1U);
        goBackAndForth(before);
        // The scene is at another time when it is taken back.
        goTo(20);
        undo();
        const std::string then = drawing().toStdString();
        goTo(20);
        EXPECT_EQ(drawing().toStdString(), then) << "what comes back shows the frame of now";
        goTo(12);
        ASSERT_TRUE(run(line("flushUndo")));
        EXPECT_EQ(drawing().toStdString(), before.toStdString());
    }
}

TEST_F(LayerMoves, FirstAndLastLayersComeAndGo) {
    ASSERT_TRUE(run(line("rvVellumLayer -da shotCam; rvVellumLayer -da persp; flushUndo")));
    document()->restoreCurrentCamera(line("front"), line("side"));
    const struct {
        const char* command;
        const char* after;
    } rows[] = {{"-ins 7 -n x persp", "[x]* |  | "},   {"-ins 0 -n y shotCam", "[x]* | [y] | "},
                {"-add -n z top", "[x] | [y] | [z]*"}, {"-mva shotCam top", "[x] | y [z]* | "},
                {"-del 1 shotCam", "[x] | [y]* | "},   {"-mv 0 0 -nc top shotCam", "[x] | * | [y]"},
                {"-del 0 persp", " | * | [y]"},        {"-da top", " | * | "},
                {"-add persp", "[Layer]* |  | "}};
    const QString start = drawing();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        const QString before = drawing();
        EXPECT_EQ(call(line("rvVellumLayer ") + line(row.command)).status, MS::kSuccess);
        EXPECT_EQ(stacks().toStdString(), row.after);
        goBackAndForth(before);
    }
    const QString end = drawing();
    for (std::size_t i = 0; i < std::size(rows); ++i)
        undo();
    EXPECT_EQ(drawing().toStdString(), start.toStdString());
    for (std::size_t i = 0; i < std::size(rows); ++i)
        redo();
    EXPECT_EQ(drawing().toStdString(), end.toStdString());
}

TEST_F(LayerMoves, ManyInARowGoToTheStartAndTheEnd) {
    const QString start = drawing();
    const char* const moves[] = {
        "-mva top persp",  "-mv 0 0 -nc top shotCam", "-mv 3 1 top",
        "-en a 1 top",     "-mv 2 0 -nc persp top",   "-mva persp top",
        "-e -act 1 persp", "-mva persp persp",        "-mv 1 0 -nc shotCam persp",
        "-del 0 persp",    "-mva shotCam persp",      "-mva top shotCam"};
    std::vector<std::string> states{start.toStdString()};
    for (const char* move : moves) {
        EXPECT_EQ(call(line("rvVellumLayer ") + line(move)).status, MS::kSuccess) << move;
        states.push_back(drawing().toStdString());
    }
    for (int round = 0; round < 3; ++round) {
        for (std::size_t i = states.size() - 1; i > 0; --i) {
            EXPECT_EQ(drawing().toStdString(), states[i]) << moves[i - 1];
            undo();
        }
        for (std::size_t i = 0; i + 1 < states.size(); ++i) {
            EXPECT_EQ(drawing().toStdString(), states[i]) << moves[i];
            redo();
        }
    }
    EXPECT_EQ(drawing().toStdString(), states.back());
}

TEST_F(LayerMoves, OneThatFailsMidwayLeavesAllAsItWas) {
    const QString all = line("rvVellumLayer -moveAll shotCam persp");
    const QString missing = line("Camera does not exist: shotCam");
    for (int known = 0; known < 4; ++known) {
        SCOPED_TRACE(known);
        camerasLeft = known; // the camera goes while layers are on their way to it
        fails(all, missing);
        EXPECT_EQ(camerasLeft, 0);
        camerasLeft = 0;
        fails(line("rvVellumLayer -mv 1 0 -nc shotCam persp"), missing);
        camerasLeft = -1;
    }
    const QString before = drawing();
    ASSERT_EQ(call(all).status, MS::kSuccess);
    const QString after = drawing();
    undo();
    camerasLeft = 2;
    errors.clear();
    EXPECT_FALSE(run(line("redo")));
    EXPECT_EQ(drawing().toStdString(), before.toStdString());
    EXPECT_TRUE(errors.contains(line("[Vellum2] ") + missing)) << allErrors().toStdString();
    camerasLeft = -1;
    redo();
    EXPECT_EQ(drawing().toStdString(), after.toStdString());
    goBackAndForth(before);
}

TEST_F(LayerMoves, NamesAreKeptWhereverTheyClash) {
    // As a file that was put together by hand may have them.
    setName("shotCam", 0, "b");
    setName("persp", 2, "a");
    ASSERT_EQ(stacks(), line("a [b] a* | [b] | "));
    const struct {
        const char* command;
        const char* after;
    } rows[] = {{"-mva shotCam persp", " | b a [b] a* | "},
                {"-mv 1 0 -nc shotCam persp", "[a] a* | b [b] | "},
                {"-del 1 persp", "[a] a* | [b] | "},
                {"-da persp", "* | [b] | "},
                {"-en ink 1 persp", "a [ink] a* | [b] | "},
                {"-en a 1 persp", "a [Layer 1] a* | [b] | "},
                {"-en b 1 persp", "a [b] a* | [b] | "}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        const QString before = drawing();
        EXPECT_EQ(call(line("rvVellumLayer ") + line(row.command)).status, MS::kSuccess);
        EXPECT_EQ(stacks().toStdString(), row.after);
        goBackAndForth(before);
        undo();
        ASSERT_TRUE(run(line("flushUndo")));
    }
    // A name that is taken while the renaming is undone comes back all the same.
    ASSERT_EQ(call(line("rvVellumLayer -en ink 1 persp")).status, MS::kSuccess);
    const std::string renamed = stacks().toStdString();
    undo();
    setName("persp", 0, "ink");
    redo();
    setName("persp", 0, "a");
    EXPECT_EQ(stacks().toStdString(), renamed);
}

} // namespace
} // namespace vellum::test
