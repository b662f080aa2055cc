// A film whose file is damaged: every drawing that is whole comes back, whatever the damage hit.
#include "support/HostProgram.h"
#include "support/Paths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <gmock/gmock.h>

using support::HostProgram;
using support::Outcome;
using testing::HasSubstr;

namespace vellum::test {
namespace {

constexpr int kDrawings = 40;
const QByteArray kHexPicture = "89504e470d0a1a0a";
const QByteArray kPicture = "\x89PNG\r\n\x1a\n";

class DamagedFilm : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<QTemporaryDir>();
        run("rvVellumNode -layer -camera persp;"
            "for ($i = 1; $i <= " +
            QByteArray::number(kDrawings) +
            "; ++$i) { currentTime $i; rvVellumFrame -insert persp; }"
            "file -rename \"film.ma\"; file -save; file -rename \"film.mb\"; file -save;");
        ASSERT_EQ(bytes("film.ma").count(kHexPicture), kDrawings);
        ASSERT_EQ(bytes("film.mb").count(kPicture), kDrawings);
    }
    static void TearDownTestSuite() { folder_.reset(); }

    static QString path(const QString& name) { return folder_->filePath(name); }
    static QByteArray bytes(const QString& name) {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString& name, const QByteArray& content) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    static Outcome run(const QByteArray& script) {
        write("script.mel", script);
        return HostProgram(
                   {"--batch", "--plugin", support::pluginPath(), "--script", path("script.mel")},
                   folder_->path(),
                   {"DISPLAY", "", "WAYLAND_DISPLAY", "", "MAYA_APP_DIR", path("prefs")})
            .outcome();
    }
    // How many drawings a damaged file gives; what it said meanwhile.
    static int drawings(const QString& name, const QByteArray& content, std::string& said) {
        write(name, content);
        QFile::remove(path("out.ma"));
        said = run("catch(`file -f -o \"" + name.toUtf8() +
                   "\"`); file -rename \"out.ma\"; file -type mayaAscii -f -save;")
                   .err;
        return int(bytes("out.ma").count(kHexPicture));
    }

private:
    static std::unique_ptr<QTemporaryDir> folder_;
};

std::unique_ptr<QTemporaryDir> DamagedFilm::folder_;

qsizetype place(const QByteArray& film, const QByteArray& what, int ordinal = 0) {
    qsizetype at = film.indexOf(what);
    for (; ordinal > 0 && at >= 0; --ordinal)
        at = film.indexOf(what, at + 1);
    return at;
}

QByteArray changed(QByteArray film, const QByteArray& before, const QByteArray& after) {
    const auto at = film.indexOf(before);
    EXPECT_GE(at, 0) << before.constData();
    return film.replace(at, before.size(), after);
}

QByteArray flipped(QByteArray film, qsizetype at) {
    film[int(at)] = char(film.at(int(at)) ^ 0x40);
    return film;
}

TEST_F(DamagedFilm, AsciiGivesEveryWholeDrawingBack) {
    const QByteArray film = bytes("film.ma");
    const auto twentieth = int(place(film, kHexPicture, 19));
    const struct {
        const char* what;
        QByteArray content;
        int lost;
    } cases[] = {
        {"a quote within a drawing", QByteArray(film).insert(twentieth + 500, '"'), 1},
        {"a line break within a drawing", QByteArray(film).insert(twentieth + 500, '\n'), 1},
        {"a drawing without its closing quote",
         QByteArray(film).remove(int(film.indexOf('"', twentieth)), 1), 0},
        {"a semicolon before a drawing", QByteArray(film).insert(twentieth - 2, ';'), 0},
        {"the end missing", film.left(film.size() - 3000), 1},
        {"the command", changed(film, "setAttr \".ld\"", "setAttx \".ld\""), 0},
        {"a quote in the command", changed(film, "setAttr \".ld\"", "set\"Attr \".ld\""), 0},
        {"the attribute's name", changed(film, "\".ld\"", "\".lf\""), 0},
        {"the command of the node", changed(film, "createNode rvVellum", "createNose rvVellum"), 0},
        {"a quote in the node's name",
         changed(film, "createNode rvVellum -n \"", "createNode rvVellum -n \"\""), 0},
    };
    for (const auto& one : cases) {
        std::string said;
        EXPECT_EQ(drawings("damaged.ma", one.content, said), kDrawings - one.lost) << one.what;
        EXPECT_THAT(said, HasSubstr("damaged.ma, line ")) << one.what;
    }
}

TEST_F(DamagedFilm, BinaryGivesEveryWholeDrawingBack) {
    const QByteArray film = bytes("film.mb");
    const auto twentieth = place(film, kPicture, 19);
    const auto data = place(film, "DATA");
    const auto node = film.lastIndexOf("rvVellum", int(place(film, "vellumShape")));
    const struct {
        const char* what;
        QByteArray content;
        int lost;
    } cases[] = {
        {"a byte of a drawing", flipped(film, twentieth + 100), 1},
        {"its size", flipped(film, twentieth - 3), 0},
        {"the end missing", film.left(film.size() - 3000), 1},
        {"the header of the data", flipped(film, data + 5), 0},
        {"the name of the node", flipped(film, node + 16), 0},
        {"the type of the node", flipped(film, node + 2), 0},
        {"the header of the node", flipped(film, node - 22), 0},
    };
    for (const auto& one : cases) {
        std::string said;
        EXPECT_EQ(drawings("damaged.mb", one.content, said), kDrawings - one.lost) << one.what;
        EXPECT_THAT(said, HasSubstr("damaged.mb, byte ")) << one.what;
    }
}

TEST_F(DamagedFilm, IsSavedOverOnlyByWhoInsists) {
    const QByteArray damaged = bytes("film.ma").left(bytes("film.ma").size() - 3000);
    write("damaged.ma", damaged);
    const QByteArray open = "catch(`file -f -o \"damaged.ma\"`);";
    const QByteArray save = "print (\"refused \" + catch(`file -f -save`) + \"\\n\");";
    Outcome outcome = run(open + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 1"));
    EXPECT_THAT(outcome.err, HasSubstr("[Vellum2] Not every drawing of this file could be read"));
    EXPECT_EQ(bytes("damaged.ma"), damaged);
    outcome = run(open + "file -rename \"other.ma\";" + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 0"));
    ASSERT_TRUE(QFile::link(path("."), path("alias")));
    outcome = run(open + "file -rename \"alias/damaged.ma\";" + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 1")) << "another way to the same file";
    outcome =
        run(open + "file -f -new; file -f -o \"film.ma\"; file -rename \"damaged.ma\";" + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 0")) << "another scene was opened since";
    write("damaged.ma", damaged);
    outcome = run(open + "print (\"refused \" + catch(`file -f -type mayaAscii -exportAll "
                         "\"alias/damaged.ma\"`) + \"\\n\");");
    EXPECT_THAT(outcome.out, HasSubstr("refused 1")) << "exporting over it is no better";
    outcome = run(open + save + "file -rename \"other.ma\";" + save +
                  "file -rename \"damaged.ma\";" + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 1\nrefused 0\nrefused 1")) << "away and back";
    outcome = run("catch(`file -import \"damaged.ma\"`); file -rename \"damaged.ma\";" + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 1")) << "imported, then written over";
    EXPECT_EQ(bytes("damaged.ma"), damaged);
    outcome = run(open + save + save);
    EXPECT_THAT(outcome.out, HasSubstr("refused 1\nrefused 0"));
    EXPECT_EQ(bytes("damaged.ma").count(kHexPicture), kDrawings - 1);
}

// A film's frames 1 to 6 have the numbers 0, 1, 1, 2, 2 and 3 at half the rate.
TEST_F(DamagedFilm, DrawingsThatMeetAreToldAndGuardedAsDamageIs) {
    for (const QByteArray name : {"coarser.ma", "coarser.mb"}) {
        SCOPED_TRACE(name.constData());
        const QByteArray picture = name.endsWith("ma") ? kHexPicture : kPicture;
        const QByteArray save = "print (\"refused \" + catch(`file -f -save`) + \"\\n\");";
        run("currentUnit -time film; rvVellumNode -layer -camera persp;"
            "for ($i = 1; $i <= 6; ++$i) { currentTime $i; rvVellumFrame -insert persp; }"
            "currentUnit -time \"12fps\"; file -rename \"" +
            name + "\";" + save);
        const QByteArray film = bytes(QString::fromLatin1(name));
        ASSERT_EQ(film.count(picture), 6);
        const QByteArray open = "file -f -o \"" + name + "\";";
        const std::string told = "Drawings dropped, because their layer has another one at their "
                                 "frame: 2 (Layer at 1, 2)";

        Outcome outcome = run(open + save + "file -rename \"other\";" + save);
        EXPECT_THAT(outcome.out, HasSubstr("refused 1\nrefused 0"));
        const auto at = outcome.err.find(told);
        ASSERT_NE(at, std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.err.find("dropped", at + told.size()), std::string::npos) << "told twice";
        EXPECT_EQ(bytes(QString::fromLatin1(name)), film);

        outcome = run(open + save + save);
        EXPECT_THAT(outcome.out, HasSubstr("refused 1\nrefused 0"));
        EXPECT_EQ(bytes(QString::fromLatin1(name)).count(picture), 4);
        outcome = run(open + save);
        EXPECT_THAT(outcome.out, HasSubstr("refused 0")) << "nothing meets any more";
    }
}

// Nothing is dropped: in the file's own unit every frame has its number again.
TEST_F(DamagedFilm, AnImportTellsOfFramesThatMeetInTheScenesUnit) {
    for (const QByteArray name : {"film.ma", "film.mb"}) {
        SCOPED_TRACE(name.constData());
        const QByteArray import = "file -import \"" + name + "\";";
        EXPECT_EQ(run(import).err.find("share a number"), std::string::npos);
        const Outcome outcome = run("currentUnit -time \"12fps\";" + import +
                                    "currentUnit -time film; file -rename \"out.ma\"; file -save;");
        EXPECT_THAT(outcome.err, HasSubstr("of its frames share a number with another one"));
        EXPECT_EQ(bytes("out.ma").count(kHexPicture), kDrawings);
    }
}

} // namespace
} // namespace vellum::test
