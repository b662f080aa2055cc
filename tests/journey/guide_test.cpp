// The guide's session, played as a user plays it: what it leaves in the scene, and what its
// pictures show.
#include "support/HostProgram.h"
#include "support/Paths.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const char* const kLook = R"mel(
    string $names = "", $states = "", $frames = "";
    int $i, $count = `rvVellumLayer -count "shotCam"`;
    for ($i = 0; $i < $count; $i++) {
        $names += `rvVellumLayer -queryName $i "shotCam"` + " ";
        $states += `rvVellumLayer -queryState $i "shotCam"` + " ";
    }
    currentTime 1;
    int $frame = 1, $before = 0;
    while ($frame > $before) {
        $frames += $frame + " ";
        $before = $frame;
        rvVellumFrame -stepForward;
        $frame = `currentTime -query`;
    }
    print ("at:" + $names + "/ " + $states + "/ " + $frames + "\n");
    quit -force;
)mel";

const QColor kCyan(0, 255, 255), kOrange(255, 138, 60);

/// Pixels of about this colour, drawn opaquely.
int inkOf(const QColor& color, const QImage& picture, const QRect& area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor at = picture.pixelColor(x, y);
            if (std::abs(at.red() - color.red()) + std::abs(at.green() - color.green()) +
                    std::abs(at.blue() - color.blue()) <
                40)
                ++count;
        }
    }
    return count;
}

} // namespace

TEST(Guide, ItsSessionMakesTheRoughThatItTellsOf) {
    const QTemporaryDir folder;
    const auto file = [&](const char* name) { return folder.filePath(QLatin1String(name)); };
    const QStringList environment = {"VELLUM_REPLAY_SPEED", "3",    "MAYA_APP_DIR",
                                     folder.path(),         "HOME", folder.path()};
    const support::Outcome played =
        support::HostProgram({"--plugin", support::pluginPath(), "--size", "1280x800", "--script",
                              support::sourcePath("resources/demo/first_hour.mel"), "--replay",
                              support::sourcePath("resources/demo/first_hour.session"),
                              "--screenshot", file("end.png")},
                             folder.path(), environment)
            .outcome();
    ASSERT_EQ(played.code, 0) << played.out << played.err;

    QFile look(file("look.mel"));
    ASSERT_TRUE(look.open(QIODevice::WriteOnly));
    look.write(kLook);
    look.close();
    const support::Outcome reopened =
        support::HostProgram({"--plugin", support::pluginPath(), "--open", file("first_hour.ma"),
                              "--script", look.fileName()},
                             folder.path(), environment)
            .outcome();
    EXPECT_EQ(reopened.code, 0) << reopened.err;
    EXPECT_NE(reopened.out.find("at:rough arcs / 0 1 / 1 3 5 7 10 12 14 16 18 20 22 24 \n"),
              std::string::npos)
        << reopened.out;

    const QRect drawing(QPoint(150, 60), QPoint(1050, 590)); // between the panels
    const auto picture = [&](const char* name) {
        const QImage read(file(name));
        EXPECT_EQ(read.size(), QSize(1280, 800)) << name;
        return read.convertToFormat(QImage::Format_RGB32);
    };
    const QImage first = picture("guide-3-drawing.png");
    EXPECT_GT(inkOf(kCyan, first, drawing), 500);
    EXPECT_EQ(inkOf(kCyan, first, QRect(550, 400, 200, 100)), 0) << "the slip was taken back";
    const QRect ball(360, 380, 140, 75); // above the floor, where it is rubbed out
    EXPECT_EQ(inkOf(kCyan, picture("guide-6-rubbed.png"), ball), 0);
    EXPECT_GT(inkOf(kCyan, picture("guide-7-fixed.png"), ball.translated(0, 75)), 500);
    const QImage retimed = picture("guide-11-retime.png");
    EXPECT_GT(inkOf(kOrange, retimed, drawing), 500);
    EXPECT_EQ(retimed.copy(drawing), picture("guide-12-reopened.png").copy(drawing));
    for (const char* each :
         {"guide-1-panels.png", "guide-2-size.png", "guide-4-ghosts.png", "guide-5-timeline.png",
          "guide-8-new-layer.png", "guide-9-palette.png", "guide-10-layers.png"})
        picture(each);
}

/// A picture that the page shows and the session does not take would grow old.
TEST(Guide, ItsPicturesAreThoseOfTheSession) {
    const auto names = [](const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        static const QRegularExpression pattern(QStringLiteral("guide-[0-9a-z-]+\\.png"));
        QStringList found;
        auto matches = pattern.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext())
            found.append(matches.next().captured());
        return found;
    };
    const QStringList taken = names(support::sourcePath("resources/demo/first_hour.session"));
    EXPECT_EQ(names(support::sourcePath("docs/guide.md")), taken);
    for (const QString& each : taken)
        EXPECT_TRUE(QFile::exists(support::sourcePath("docs/images/") + each)) << qPrintable(each);
}
