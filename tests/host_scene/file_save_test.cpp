#include "FaultyTarget.h"
#include "FileFixture.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Saving : public FileFixture, public ::testing::WithParamInterface<const char*> {
protected:
    std::string file() const { return std::string("scene") + GetParam(); }
    // An old file, and a scene in memory that differs from it.
    void makeOldAndNew() {
        loadTestPlugin();
        run("createNode transform -n old");
        save(file());
        old = bytes(file());
        run("createNode transform -n fresh; createNode hostTestNode -n d;"
            "hostTestData -text \"big\" -numbers 60000 d");
        forget();
    }
    void useSteps(Steps& steps) {
        host::fileIO().setTargetFactory([&steps](const QString& target) {
            return std::make_unique<FaultyTarget>(target, steps);
        });
    }
    QStringList leftBehind() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    }

    QByteArray old;
};

INSTANTIATE_TEST_SUITE_P(BothForms, Saving, ::testing::Values(".ma", ".mb"));

TEST_P(Saving, AFailureAtAnyStepKeepsTheOldFileAndSaysSo) {
    makeOldAndNew();
    int failures = 0;
    for (int bad = 0;; ++bad) {
        SCOPED_TRACE("step " + std::to_string(bad));
        Steps steps([bad](int step) { return step == bad; });
        useSteps(steps);
        std::string message;
        try {
            host::script::execute("file -save");
        } catch (const host::script::ScriptError& error) {
            message = error.what();
        }
        if (message.empty()) {
            EXPECT_LE(steps.count(), bad) << "step " << bad << " failed and nobody noticed";
            break;
        }
        ++failures;
        EXPECT_NE(message.find("Could not save"), std::string::npos) << message;
        EXPECT_TRUE(message.find("Injected failure") != std::string::npos ||
                    message.find("No space left") != std::string::npos)
            << message;
        ASSERT_EQ(bytes(file()), old) << "step " << bad;
        EXPECT_EQ(leftBehind().size(), 1) << "step " << bad;
        EXPECT_EQ(run("file -q -mf"), "1");
        EXPECT_FALSE(host::fileIO().isWriting());
    }
    EXPECT_GT(failures, 6);
    EXPECT_EQ(run("file -q -mf"), "0");
    host::fileIO().setTargetFactory({});
    open(file());
    EXPECT_EQ(run("objExists fresh") + run("hostTestData d"), "1big");
}

TEST_P(Saving, AProcessKilledAtAnyStepLeavesTheOldOrTheNewSceneWhole) {
    makeOldAndNew();
    const std::string target = file();
    Steps counting([](int) { return false; });
    useSteps(counting);
    const std::string copy = std::string("again") + GetParam();
    run("file -rename " + quotedPath(copy) + "; file -save");
    const QByteArray fresh = bytes(copy);
    const int last = counting.count();
    run("file -rename " + quotedPath(target));
    int sawOld = 0;
    int sawNew = 0;
    for (int bad = 0; bad <= last; ++bad) {
        write(target, old);
        const pid_t child = ::fork();
        if (child == 0) {
            Steps steps([bad](int step) {
                if (step == bad)
                    ::raise(SIGKILL);
                return false;
            });
            useSteps(steps);
            try {
                host::script::execute("file -save");
            } catch (const host::script::ScriptError&) {
                ::_exit(3);
            }
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << bad;
        const QByteArray found = bytes(target);
        sawOld += found == old ? 1 : 0;
        // The file's name is in its head, so the new scene is told by its length.
        sawNew += found != old && found.size() == fresh.size() ? 1 : 0;
        ASSERT_EQ(sawOld + sawNew, bad + 1) << "neither old nor new after step " << bad;
    }
    EXPECT_GT(sawOld, 0);
    EXPECT_GT(sawNew, 0) << "the last round runs to its end";
    host::fileIO().setTargetFactory({});
    forget();
    open(target);
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(run("objExists fresh") + run("hostTestData d"), "1big");
}

TEST_P(Saving, DataThatCannotBeWrittenStopTheSaveUnlessForced) {
    makeOldAndNew();
    run("createNode hostTestNode -n bad; hostTestData -text \"FAIL\" -numbers 0 bad");
    EXPECT_NE(failing("file -save").find("bad.pay"), std::string::npos);
    EXPECT_EQ(bytes(file()), old);
    run("file -f -save");
    EXPECT_TRUE(mentions(warnings, "bad.pay"));
    run("file -f -new");
    forget();
    open(file());
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_EQ(run("hostTestData bad") + run("hostTestData d"), "(none)big");
}

TEST_P(Saving, PlacesThatCannotBeWrittenAreNamed) {
    run("createNode transform -n t");
    run("file -rename " + quotedPath("no/such/folder/x.ma"));
    EXPECT_NE(failing("file -save").find("no/such/folder"), std::string::npos);
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("taken.ma")));
    run("file -rename " + quotedPath("taken.ma"));
    EXPECT_NE(failing("file -save").find("Not a regular file"), std::string::npos);
    EXPECT_EQ(run("file -q -mf"), "1");
    run("file -f -new");
    EXPECT_NE(failing("file -save").find("has no name"), std::string::npos);
    EXPECT_NE(failing("file -type \"fbx\" -save").find("fbx"), std::string::npos);
}

TEST_P(Saving, TheFileCommandKeepsBooks) {
    EXPECT_EQ(run("file -q -sn") + run("file -q -mf"), "0");
    run("createNode transform -n t");
    EXPECT_EQ(run("file -q -mf"), "1");
    EXPECT_EQ(failing("file -new"), "Unsaved changes.");
    save(file());
    EXPECT_EQ(run("file -q -sn"), path(file()));
    EXPECT_EQ(run("file -q -sn -shn"), file());
    EXPECT_EQ(run("file -q -type"), std::string(GetParam()) == ".ma" ? "mayaAscii" : "mayaBinary");
    EXPECT_EQ(run("file -q -mf"), "0");
    run("setAttr t.tx 1; undo");
    run("file -mf 0; file -new");
    EXPECT_EQ(run("file -q -sn") + run("objExists t"), "0");
    // A copy beside the scene changes neither its name nor whether it is saved.
    run("createNode transform -n u; file -ea -type \"mayaAscii\" " + quotedPath("copy.ma"));
    EXPECT_EQ(run("file -q -sn") + run("file -q -mf"), "1");
    EXPECT_NE(bytes("copy.ma").indexOf("\"u\""), -1);

    std::string order;
    const int id = host::fileIO().addBeforeSceneReplaced(
        [&] { order += run("objExists u") == "1" ? "before " : "late "; });
    open(file());
    run("file -f -new");
    EXPECT_EQ(order, "before late ");
    host::fileIO().removeBeforeSceneReplaced(id);
    run("file -f -new");
    EXPECT_EQ(order, "before late ");
}

} // namespace
