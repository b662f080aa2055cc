// Random work with the scene commands: every undo and redo gives exactly the scene that was there,
// as a file would hold it, and both forms of file give it back.
#include "host_scene/FileFixture.h"
#include "support/Seed.h"

#include <random>

namespace {

class RandomWork : public FileFixture {
protected:
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    std::string number() { return std::to_string(pick(2001) / 8.0 - 125.0); }

    /// The scene as text, without the lines that tell when and by what it was written.
    std::string scene() {
        const std::string modified = host::sceneModified() ? "1" : "0";
        const std::string name = host::fileIO().sceneName();
        const host::FileFormat format = host::fileIO().format();
        save("snapshot.ma");
        host::fileIO().setSceneName(name);
        host::fileIO().setFormat(format);
        host::setSceneModified(modified == "1");
        std::string text;
        for (const QByteArray& line : bytes("snapshot.ma").split('\n')) {
            if (!line.startsWith("//") && !line.startsWith("fileInfo"))
                text += line.toStdString() + '\n';
        }
        return text;
    }

    /// A node of the user's, by its full name; "" while there is none.
    std::string anyNode() {
        return run("string $own[] = `ls -long -type transform \"n*_*\"`;"
                   "size($own) ? $own[" +
                   std::to_string(pick(1000)) + " % size($own)] : \"\"");
    }

    std::string randomCommand();

private:
    std::mt19937 random_{support::seed()};
    int made_ = 0;
};

std::string quoted(const std::string& text) {
    return host::script::quoted(text);
}

std::string RandomWork::randomCommand() {
    const std::string name = quoted("n" + std::to_string(++made_ % 5) + "_");
    const std::vector<std::string> nodes = {anyNode(), anyNode()};
    const std::string first = quoted(nodes[0]);
    const std::string second = quoted(nodes[1]);
    if (nodes[0].empty() || pick(6) == 0) {
        const char* makers[] = {"createNode transform -name ", "polySphere -name ",
                                "spaceLocator -name ", "polyCube -width 2 -name "};
        return makers[pick(4)] + name;
    }
    const std::string axis(1, "XYZ"[pick(3)]);
    switch (pick(12)) {
    case 0:
        return "parent -world " + first;
    case 1:
        return "parent " + first + " " + second;
    case 2:
        return "group -name " + name + " " + first;
    case 3:
        return "duplicate -name " + name + " " + first;
    case 4:
        return pick(2) ? "delete " + first : "rename " + first + " " + name;
    case 5:
        return "setAttr " + quoted(nodes[0] + ".rotate" + axis) + " " + number();
    case 6:
        return "setKeyframe -time " + std::to_string(pick(40)) + " -attribute \"translate" + axis +
               "\" -value " + number() + " " + first;
    case 7:
        return "addAttr -longName \"note" + std::to_string(pick(3)) + "\" -dataType \"string\" " +
               first;
    case 8:
        return "setAttr -type \"string\" " + quoted(nodes[0] + ".note" + std::to_string(pick(3))) +
               " \"a \\\"quoted\\\" \\\\ line\\nand $more; // ü\"";
    case 9:
        return "connectAttr -force " + quoted(nodes[0] + ".scale" + axis) + " " +
               quoted(nodes[1] + ".translateX");
    case 10:
        return "setAttr -lock " + std::to_string(pick(2)) + " " +
               quoted(nodes[0] + ".scale" + axis);
    default:
        return "move -relative " + number() + " 0 " + number() + " " + first;
    }
}

TEST_F(RandomWork, UndoRedoAndFilesGiveTheSameScene) {
    struct State {
        std::string text, made;
    };
    std::vector<State> history = {{scene(), "nothing"}};
    std::size_t present = 0;
    int refused = 0;
    for (int step = 0; step < 250 && !HasFailure(); ++step) {
        const int kind = pick(10);
        std::string what;
        if (kind < 2 && present > 0) {
            what = "undo of " + history[present].made;
            run("undo");
            --present;
        } else if (kind < 3 && present + 1 < history.size()) {
            what = "redo of " + history[present + 1].made;
            run("redo");
            ++present;
        } else {
            what = randomCommand();
            try {
                host::script::execute(what);
            } catch (const host::script::ScriptError&) {
                ++refused; // a locked attribute, a parent below itself, ...
                ASSERT_EQ(scene(), history[present].text)
                    << "refused, but not without effect: " << what;
                continue;
            }
            history.resize(present + 1);
            history.push_back({scene(), what});
            ++present;
            continue;
        }
        ASSERT_EQ(scene(), history[present].text) << "seed " << support::seed() << ": " << what;
    }
    EXPECT_LT(refused, 150) << "most of the work must be done";

    const std::string last = scene();
    save("end.mb");
    save("end.ma");
    for (const char* name : {"end.mb", "end.ma"}) {
        forget();
        open(name);
        EXPECT_EQ(scene(), last) << name;
        EXPECT_TRUE(errors.empty()) << name << ": " << errors.front();
    }
}

} // namespace
