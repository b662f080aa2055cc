// What plug-ins are told about the scene as a file, and what they can refuse.
#include "FileFixture.h"

#include <maya/MSceneMessage.h>

#include <gmock/gmock.h>
#include <list>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SceneMessages : public FileFixture {
protected:
    ~SceneMessages() override { MMessage::removeCallbacks(ids); }

    void listen(MSceneMessage::Message message, const char* name) {
        heard.push_back({name, this});
        ids.append(MSceneMessage::addCallback(message, hear, &heard.back()));
    }
    void ask(MSceneMessage::Message message) {
        ids.append(MSceneMessage::addCheckCallback(
            message,
            [](bool* allowed, void* self) { *allowed = static_cast<SceneMessages*>(self)->allow; },
            this));
    }
    std::vector<std::string> take() { return std::exchange(told, {}); }

    MCallbackIdArray ids;
    bool allow = true;
    std::vector<std::string> told;

private:
    struct Heard {
        const char* name;
        SceneMessages* self;
    };
    static void hear(void* data) {
        const auto* heard = static_cast<Heard*>(data);
        heard->self->told.emplace_back(heard->name);
    }
    std::list<Heard> heard;
};

TEST_F(SceneMessages, ComeInPairsAroundWhatHappens) {
    listen(MSceneMessage::kBeforeNew, "before new");
    listen(MSceneMessage::kAfterNew, "after new");
    listen(MSceneMessage::kBeforeOpen, "before open");
    listen(MSceneMessage::kAfterOpen, "after open");
    listen(MSceneMessage::kBeforeImport, "before import");
    listen(MSceneMessage::kAfterImport, "after import");
    listen(MSceneMessage::kBeforeFileRead, "before read");
    listen(MSceneMessage::kAfterFileRead, "after read");
    listen(MSceneMessage::kBeforeSave, "before save");
    listen(MSceneMessage::kAfterSave, "after save");
    listen(MSceneMessage::kBeforeExport, "before export");
    listen(MSceneMessage::kAfterExport, "after export");
    run("file -f -new");
    EXPECT_THAT(take(), ElementsAre("before new", "after new"));
    save("a.ma");
    EXPECT_THAT(take(), ElementsAre("before save", "after save"));
    open("a.ma");
    EXPECT_THAT(take(), ElementsAre("before open", "before read", "after read", "after open"));
    run("file -import " + quotedPath("a.ma"));
    EXPECT_THAT(take(), ElementsAre("before import", "before read", "after read", "after import"));
    run("file -ea " + quotedPath("b.ma"));
    EXPECT_THAT(take(), ElementsAre("before export", "after export"));
    MMessage::removeCallbacks(ids);
    ids.clear();
    open("a.ma");
    EXPECT_THAT(take(), IsEmpty());
    MStatus status;
    MSceneMessage::addCallback(
        MSceneMessage::kBeforeSaveCheck, [](void*) {}, nullptr, &status);
    EXPECT_FALSE(status) << "only a check callback can answer";
    MSceneMessage::addCheckCallback(
        MSceneMessage::kBeforeSave, [](bool*, void*) {}, nullptr, &status);
    EXPECT_FALSE(status);
}

TEST_F(SceneMessages, ARefusalChangesNothing) {
    run("createNode transform -n kept");
    save("a.ma");
    const QByteArray before = bytes("a.ma");
    run("createNode transform -n later");
    for (const auto message : {MSceneMessage::kBeforeNewCheck, MSceneMessage::kBeforeOpenCheck,
                               MSceneMessage::kBeforeSaveCheck, MSceneMessage::kBeforeImportCheck,
                               MSceneMessage::kBeforeExportCheck})
        ask(message);
    listen(MSceneMessage::kBeforeSave, "before save");
    listen(MSceneMessage::kBeforeOpen, "before open");
    allow = false;
    for (const std::string& script :
         {std::string("file -f -new"), "file -f -o " + quotedPath("a.ma"),
          std::string("file -f -save"), "file -import " + quotedPath("a.ma"),
          "file -ea " + quotedPath("b.ma")})
        EXPECT_THAT(failing(script), HasSubstr("cancelled")) << script;
    EXPECT_THAT(take(), IsEmpty());
    EXPECT_EQ(run("objExists kept") + run("objExists later") + run("objExists kept1"), "110");
    EXPECT_EQ(bytes("a.ma"), before);
    EXPECT_TRUE(bytes("b.ma").isEmpty());
    EXPECT_EQ(run("file -q -mf"), "1");
    allow = true;
    run("file -save");
    EXPECT_NE(bytes("a.ma"), before);
    allow = true;
}

TEST_F(SceneMessages, OnlySavingOverTheDamagedFileNeedsForce) {
    run("createNode transform -n a");
    save("whole.ma");
    const QByteArray damaged = bytes("whole.ma").replace("-n \"a\";", "-n \"a;");
    write("damaged.ma", damaged);
    QFile::link(folder.filePath("damaged.ma"), folder.filePath("link.ma"));
    failing("file -f -o " + quotedPath("damaged.ma"));
    const auto refused = [&](const char* name) {
        return failing("file -rename " + quotedPath(name) + "; file -save")
                   .find("Errors occurred while reading") != std::string::npos;
    };
    EXPECT_TRUE(refused("damaged.ma"));
    EXPECT_TRUE(refused("link.ma")) << "by whatever name";
    run("file -rename " + quotedPath("other.ma") + "; file -save");
    EXPECT_TRUE(refused("damaged.ma")) << "what it holds is still not all here";
    EXPECT_EQ(bytes("damaged.ma"), damaged);
    run("file -f -save; file -save");
    EXPECT_NE(bytes("damaged.ma"), damaged);
    open("damaged.ma");
    run("file -save");
}

} // namespace
