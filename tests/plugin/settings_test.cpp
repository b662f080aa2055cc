#include "foundation/Faults.h"
#include "plugin/base/Settings.h"
#include "plugin/base/Tool.h"
#include "plugin/base/ToolOptions.h"
#include "support/Seed.h"
#include "support/Session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>

#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <vector>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace vellum {
namespace {

class SettingsFile : public ::testing::Test {
protected:
    void SetUp() override { resetSettings(); }
    void TearDown() override { resetSettings(); }

    QString path() const { return directory_.filePath(QStringLiteral("vellum2.ini")); }

    void write(const QString& text) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text.toUtf8());
    }

    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void load(const QString& text) {
        resetSettings();
        write(text);
        loadSettingsFrom(path());
    }

    QTemporaryDir directory_;
};

TEST_F(SettingsFile, NumbersOutOfRangeFollowTheirRule) {
    load(QStringLiteral("[tools]\npencilSize=0\nlineSize=80\neraserSize=500\npencilOpacity=-3\n"
                        "ghostPrevCount=0\nghostNextCount=10\nactiveTool=9\n"
                        "[preferences]\ntimelineFrameDisplay=3\ndefaultLayerState=-1\n"));
    EXPECT_EQ(settings().of(Tool::Pencil).size, 1);
    EXPECT_EQ(settings().of(Tool::Line).size, 50);
    EXPECT_EQ(settings().of(Tool::Eraser).size, 100);
    EXPECT_EQ(settings().of(Tool::Pencil).opacity, 1);
    EXPECT_EQ(settings().ghostPrevCount, 3);
    EXPECT_EQ(settings().ghostNextCount, 3);
    EXPECT_EQ(settings().activeTool, Tool::Brush);
    EXPECT_EQ(settings().timelineFrameDisplay, TimelineDisplay::Always);
    EXPECT_EQ(settings().defaultLayerState, 0);

    load(QStringLiteral("[tools]\nactiveTool=8\nghostPrevCount=9\n"
                        "[preferences]\ndefaultStaticFrameTime=-5000\n"));
    EXPECT_EQ(settings().activeTool, Tool::Transform);
    EXPECT_EQ(settings().ghostPrevCount, 9);
    EXPECT_EQ(settings().defaultStaticFrameTime, -5000);
}

TEST_F(SettingsFile, GarbageGivesDefaults) {
    load(
        QStringLiteral("[tools]\npencilSize=many\nactiveColor=@Variant(\\0\\0)\nghostPrev=perhaps\n"
                       "brushSize=99999999999999999\n[main]\nversion=junk\n"));
    EXPECT_EQ(settings().of(Tool::Pencil).size, 6);
    EXPECT_EQ(settings().activeColor, QColor(0, 255, 255));
    EXPECT_FALSE(settings().ghostPrev);
    EXPECT_EQ(settings().of(Tool::Brush).size, 6);

    load(QStringLiteral(
        "[main]\nmainMenuName=@Invalid()\ntoolboxGeometry=a, b\n"
        "[tools]\ntextFontFamily=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\a)\nlineSize=7.5\nghostPrevCount="
        "\n"
        "ghostNextCount=-99999999999999999999999\nactiveTool=1, "
        "2\nactiveColor=7\nellipseSize=0x10\n"
        "[preferences]\ndefaultStaticFrameTime=4294967296\ndefaultLayerState=true\n"
        "timelineFrameColor=@Size(3 4)\ndrawToolContextMenu=2\nignore2dPanZoom=@Rect(1 2 3 "
        "4)\n"));
    const Settings defaults;
    EXPECT_EQ(settings().mainMenuName, defaults.mainMenuName);
    EXPECT_EQ(settings().toolboxGeometry, defaults.toolboxGeometry);
    EXPECT_EQ(settings().of(Tool::Text).fontFamily, defaults.of(Tool::Text).fontFamily);
    EXPECT_EQ(settings().of(Tool::Line).size, defaults.of(Tool::Line).size);
    EXPECT_EQ(settings().of(Tool::Ellipse).size, defaults.of(Tool::Ellipse).size);
    EXPECT_EQ(settings().ghostPrevCount, defaults.ghostPrevCount);
    EXPECT_EQ(settings().ghostNextCount, defaults.ghostNextCount);
    EXPECT_EQ(settings().activeTool, defaults.activeTool);
    EXPECT_EQ(settings().activeColor, defaults.activeColor);
    EXPECT_EQ(settings().defaultStaticFrameTime, defaults.defaultStaticFrameTime);
    EXPECT_EQ(settings().defaultLayerState, defaults.defaultLayerState);
    EXPECT_EQ(settings().timelineFrameColor, defaults.timelineFrameColor);
    EXPECT_EQ(settings().drawToolContextMenu, defaults.drawToolContextMenu);
    EXPECT_EQ(settings().ignore2dPanZoom, defaults.ignore2dPanZoom);

    load(QString(QChar(0x1)) + QStringLiteral("\xff\xfe [[[ ==== \n\n]"));
    EXPECT_EQ(settings().of(Tool::Brush).size, 6);
    EXPECT_EQ(settings().mainMenuName, QStringLiteral("VL2"));
    EXPECT_TRUE(settings().of(Tool::Brush).tabletEnabled);

    resetSettings();
    loadSettingsFrom(directory_.filePath(QStringLiteral("missing/none.ini")));
    EXPECT_EQ(settings().of(Tool::Eraser).size, 40);
    // A color whose first byte, its color model, is none that there is.
    load(
        QStringLiteral("[tools]\nactiveColor=@Variant(\\0\\0\\0\\x43\\x5b\\xff\\xff\\xff\\xff\\0\\0"
                       "\\0\\0\\0\\0)\n"));
    EXPECT_EQ(settings().activeColor, defaults.activeColor);
}

TEST_F(SettingsFile, EveryKindOfValueComesBackAndStrangersStay) {
    write(QStringLiteral("[tools]\nlaterOption=7\n[companion]\nname=kept\n"));
    settings().mainMenuName = QStringLiteral("Скетч \"2\", \\ [x]=;");
    settings().toolboxGeometry = QByteArray::fromHex("00ff0d0a2c22");
    settings().activeColor = QColor(1, 2, 3, 4);
    settings().ghostNext = true;
    settings().of(Tool::Text).fontFamily = QStringLiteral("A, B");
    settings().timelineFrameDisplay = TimelineDisplay::Never;
    const Settings saved = settings();
    ASSERT_TRUE(saveSettingsTo(path()));

    resetSettings();
    loadSettingsFrom(path());
    EXPECT_EQ(settings().mainMenuName, saved.mainMenuName);
    EXPECT_EQ(settings().toolboxGeometry, saved.toolboxGeometry);
    EXPECT_EQ(settings().activeColor, saved.activeColor);
    EXPECT_TRUE(settings().ghostNext);
    EXPECT_EQ(settings().of(Tool::Text).fontFamily, saved.of(Tool::Text).fontFamily);
    EXPECT_EQ(settings().timelineFrameDisplay, TimelineDisplay::Never);

    QSettings file(path(), QSettings::IniFormat);
    EXPECT_EQ(file.value(QStringLiteral("main/version")).toInt(), 1);
    EXPECT_EQ(file.value(QStringLiteral("tools/laterOption")).toInt(), 7);
    EXPECT_EQ(file.value(QStringLiteral("companion/name")).toString(), QStringLiteral("kept"));
    // version, 6 main, 28 tools, 17 preferences, 2 strangers
    EXPECT_EQ(file.allKeys().size(), 1 + 6 + 28 + 17 + 2);
}

TEST_F(SettingsFile, KeysStandInTheirOrderWhateverTheFileLookedLike) {
    write(QStringLiteral("[preferences]\ntimelineFrameColor=x\nlater=1\n[companion]\nname=kept\n"
                         "[tools]\nghostNext=true\nactiveTool=2\n[main]\nmainMenuName=Скетч\n"));
    loadSettingsFrom(path());
    EXPECT_EQ(settings().mainMenuName, QStringLiteral("Скетч")) << "UTF-8, as Qt 6 writes it";
    ASSERT_TRUE(saveSettingsTo(path()));
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList order;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QString text = QString::fromUtf8(line.split('=').front());
        if (!text.trimmed().isEmpty())
            order.append(text);
    }
    const QStringList expected =
        QStringLiteral(
            "[main] version mainMenuName toolboxGeometry toolOptionsGeometry layerManagerGeometry "
            "colorPaletteGeometry retimingToolGeometry "
            "[tools] activeTool activeColor pencilSize pencilOpacity pencilTabletEnabled brushSize "
            "brushOpacity brushTabletEnabled eraserSize textFontFamily textSize textOpacity "
            "lineSize lineOpacity arrowSize arrowOpacity ellipseSize ellipseOpacity rectangleSize "
            "rectangleOpacity ghostPrev ghostNext ghostPrevCount ghostNextCount ghostColorOverride "
            "ghostColorOverridePrev ghostColorOverrideNext retimeMoveToNextFrame "
            "[preferences] drawToolContextMenu transformToolContextMenu timelineContextMenu "
            "toolboxDrawToolContextMenu toolboxGhostingContextMenu showMainMenuInAnimationSet "
            "disableGhostingDuringPlayback timeControlRangeMoveEnabled ignore2dPanZoom "
            "defaultLayerState automaticallyAddFirstLayer alwaysDisplayNewLayerDialog "
            "insertDefaultStaticFrame defaultStaticFrameTime timelineFrameDisplay "
            "timelineFrameColor undoReturnsToFrame later [companion] name")
            .split(QLatin1Char(' '));
    EXPECT_EQ(order.join(QLatin1Char(' ')).toStdString(),
              expected.join(QLatin1Char(' ')).toStdString());
    resetSettings();
    loadSettingsFrom(path());
    EXPECT_EQ(settings().activeTool, Tool::Eraser);
    EXPECT_TRUE(settings().ghostNext);
}

TEST_F(SettingsFile, ObjectsInTheFileAreNeitherBuiltNorLost) {
    // Lists, polygons and dates of two thousand million elements, plain, escaped and torn apart.
    const QByteArray later = "text=\"a; b\"\n"
                             "list=\"@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff\\0)\"\n"
                             "texts=@Variant(\\0\\0\\0\\v\\x7f\\xff\\xff\\xff\\0)\n"
                             "polygon=1, \\x40Va\\qriant(\\0\\0\\0G\\x7f\\xff\\xff\\xff\\0)\n"
                             "torn=\"@Vari\"\"ant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff\\0)\"\n"
                             "octal=\\100Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff\\0)\n"
                             "date=@DateTime(\\0\\0\\0\\x10\\xff\\xff)\n"
                             "spread=one\\\ntwo\n";
    const QByteArray list = "@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff\\0)\n";
    const QByteArray color = "@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\x1\\x1\\x2\\x2\\x3\\x3\\0\\0)";
    load(QString::fromLatin1("lost=1\n[later]\n" + later + "[tools]\npencilSize=9\nactiveColor=" +
                             color + "\nghostColorOverridePrev=" + list +
                             "ghostColorOverrideNext=\"@Variant(\\0\\0\\0\\x430)\"\n"
                             "[main]\nmainMenuName=" +
                             list +
                             "; a comment\n"
                             "toolboxGeometry=\"never closed\n[preferences]\nstranger=\\"));
    EXPECT_EQ(settings().of(Tool::Pencil).size, 9) << "what is sound counts";
    EXPECT_EQ(settings().activeColor, QColor(1, 2, 3));
    EXPECT_EQ(settings().ghostColorOverridePrev, QColor(0, 128, 0));
    EXPECT_EQ(settings().ghostColorOverrideNext, QColor(128, 0, 0));
    EXPECT_EQ(settings().mainMenuName, QStringLiteral("VL2"));

    for (int i = 0; i < 2; ++i) {
        SCOPED_TRACE(i == 0 ? "saved" : "saved once more");
        ASSERT_TRUE(saveSettingsTo(path()));
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        EXPECT_TRUE(text.endsWith("\n[General]\nlost=1\n\n[later]\n" + later)) << text.constData();
        EXPECT_TRUE(text.startsWith("[main]\nversion=1\nmainMenuName=VL2\n"));
        EXPECT_EQ(text.count("version="), 1);
        EXPECT_EQ(text.count("pencilSize="), 1);
    }
    resetSettings();
    loadSettingsFrom(path());
    EXPECT_EQ(settings().of(Tool::Pencil).size, 9);
    EXPECT_EQ(settings().activeColor, QColor(1, 2, 3));
}

TEST_F(SettingsFile, DamageNeverReachesWhatIsSaved) {
    write(QStringLiteral("[later]\nlist=\"a, b\", c\nlines=one\\\ntwo\n[main]\nstranger=1\n"));
    settings().mainMenuName = QStringLiteral("\"Скетч\"; @[x]");
    settings().toolboxGeometry = QByteArray::fromHex("00ff0d0a2c2240");
    ASSERT_TRUE(saveSettingsTo(path()));
    const QByteArray sound = content();
    std::mt19937 random(support::seed());
    const auto pick = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    const QByteArray hostile = "\"\\;@[]=\n\r,%x0(\xff";
    for (int round = 0; round < 150; ++round) {
        QByteArray text = sound;
        for (int damage = 1 + pick(6); damage > 0; --damage) {
            const int at = pick(static_cast<int>(text.size()));
            if (pick(3) == 0)
                text.remove(at, 1 + pick(40));
            else
                text.insert(at, hostile[pick(static_cast<int>(hostile.size()))]);
        }
        SCOPED_TRACE("VELLUM_TEST_SEED=" + std::to_string(support::seed()) + " " +
                     text.toStdString());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        resetSettings();
        loadSettingsFrom(path());
        for (int number = 0; number < kDrawToolCount; ++number) {
            SCOPED_TRACE("tool " + std::to_string(number));
            const auto tool = static_cast<Tool>(number);
            EXPECT_GE(toolSize(tool), 1);
            EXPECT_LE(toolSize(tool), 100);
        }
        ASSERT_TRUE(saveSettingsTo(path()));
        const QByteArray saved = content();
        ASSERT_TRUE(saved.startsWith("[main]\nversion=1\n"));
        // Whatever stays of the strangers, the known keys read and are written as they were.
        resetSettings();
        loadSettingsFrom(path());
        ASSERT_TRUE(saveSettingsTo(path()));
        ASSERT_EQ(content().toStdString(), saved.toStdString());
    }
}

TEST_F(SettingsFile, WhatIsNoFileIsLeftAlone) {
    ASSERT_TRUE(QDir().mkpath(path() + QStringLiteral("/inside")));
    loadSettingsFrom(path());
    EXPECT_EQ(settings().of(Tool::Pencil).size, 6);
    EXPECT_FALSE(saveSettingsTo(path()));
    EXPECT_TRUE(QFileInfo(path() + QStringLiteral("/inside")).isDir());
    ASSERT_TRUE(QDir(path()).removeRecursively());
    // Larger than any settings, at no cost on the disk.
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(qint64(1) << 40));
    loadSettingsFrom(path());
    EXPECT_EQ(settings().of(Tool::Pencil).size, 6);
    EXPECT_FALSE(saveSettingsTo(path()));
    EXPECT_EQ(file.size(), qint64(1) << 40);
}

#ifdef Q_OS_UNIX
/// While it lives, files have this room; of a full disk the same becomes of a write. With `once`,
/// the first write that fails makes room for those after it, as when the draft's disk is the full
/// one.
class FullDisk {
public:
    FullDisk(rlim_t room, bool once) : handler_(std::signal(SIGXFSZ, once ? makeRoom : SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit small = before_;
        small.rlim_cur = room;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    static void makeRoom(int) { setrlimit(RLIMIT_FSIZE, &before_); }

    static inline rlimit before_{};
    void (*handler_)(int);
};

TEST_F(SettingsFile, AWriteThatBreaksOffLeavesTheOldFile) {
    ASSERT_TRUE(saveSettingsTo(path()));
    const auto whole = static_cast<rlim_t>(content().size());
    struct Case {
        rlim_t room;
        QByteArray geometry;
        QByteArray stranger;
    };
    // Of little text, what breaks off is the draft's only write; of much, one of many. Strangers'
    // keys are in no draft.
    std::vector<Case> cases{{0, {}, {}},
                            {100, {}, "x"},
                            {whole / 2, {}, {}},
                            {100000, QByteArray(200000, 'g'), "x"},
                            {100000, {}, QByteArray(200000, 's')}};
    for (rlim_t missing = 1; missing < 10; ++missing) // all keys are there, and most of the last
        cases.push_back({whole - missing, {}, {}});
    for (const Case& one : cases) {
        for (const bool once : {false, true}) {
            SCOPED_TRACE(testing::Message() << one.room << (once ? ", once" : ""));
            resetSettings();
            write(one.stranger.isEmpty()
                      ? QString()
                      : QStringLiteral("[strangers]\nkey=") + QString::fromLatin1(one.stranger));
            ASSERT_TRUE(saveSettingsTo(path()));
            const QByteArray old = content();
            settings().toolboxGeometry = one.geometry;
            bool saved = true;
            {
                const FullDisk disk(one.room, once);
                saved = saveSettingsTo(path());
            }
            EXPECT_FALSE(saved);
            EXPECT_TRUE(content() == old);
            EXPECT_EQ(QDir(directory_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        }
    }
}
#endif

TEST_F(SettingsFile, UnwritablePlaceIsToldAndLeavesTheFile) {
    const QString inside = directory_.filePath(QStringLiteral("file"));
    QFile file(inside);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_FALSE(saveSettingsTo(inside + QStringLiteral("/vellum2.ini")));
    EXPECT_TRUE(QFileInfo(inside).isFile());
}

TEST_F(SettingsFile, ToolOptionsAreClampedPerTool) {
    for (int number = 0; number < kDrawToolCount; ++number) {
        const auto tool = static_cast<Tool>(number);
        const bool shape = tool >= Tool::Line;
        setToolSize(tool, 1000);
        EXPECT_EQ(toolSize(tool), shape ? 50 : 100) << number;
        setToolSize(tool, -4);
        EXPECT_EQ(toolSize(tool), 1) << number;
        setToolOpacity(tool, 0);
        EXPECT_EQ(toolOpacity(tool), 1) << number;
        setToolOpacity(tool, 101);
        EXPECT_EQ(toolOpacity(tool), 100) << number;
        setToolTabletEnabled(tool, true);
        EXPECT_EQ(toolTabletEnabled(tool), tool <= Tool::Eraser) << number;
        setToolHardness(tool, 150);
        EXPECT_EQ(toolHardness(tool), 100) << number;
        setToolHardness(tool, -1);
        EXPECT_EQ(toolHardness(tool), tool == Tool::Brush    ? 10
                                      : tool == Tool::Eraser ? 0
                                                             : 100)
            << number;
    }
    EXPECT_EQ(settings().of(Tool::Pencil).size, 1) << "options are the settings themselves";
}

class SettingsPlace : public test::HostSession {
protected:
    void TearDown() override {
        host::faults::clear();
        resetSettings();
    }
};

TEST_F(SettingsPlace, IsThePreferencesDirectoryWhenMayaNamesOne) {
    const QString path = settingsPath();
    const QString directory = text(QStringLiteral("internalVar -userPrefDir"));
    EXPECT_EQ(path, QDir(directory).absoluteFilePath(QStringLiteral("vellum2.ini")));
    EXPECT_FALSE(path.contains(QStringLiteral("//")));
    settings().of(Tool::Eraser).size = 55;
    ASSERT_TRUE(saveSettings()) << "makes the directory when it has to";
    settings().of(Tool::Eraser).size = 66;
    loadSettings();
    EXPECT_EQ(settings().of(Tool::Eraser).size, 55);

    host::faults::arm("command internalVar");
    settings().of(Tool::Eraser).size = 77;
    errors.clear();
    EXPECT_EQ(settingsPath(), QString());
    EXPECT_TRUE(
        errors.contains(QStringLiteral("[Vellum2] Failed to retrieve Maya prefs directory")));
    loadSettings();
    EXPECT_FALSE(saveSettings());
    EXPECT_EQ(settings().of(Tool::Eraser).size, 77);
    host::faults::clear();
    loadSettings();
    EXPECT_EQ(settings().of(Tool::Eraser).size, 55) << "nothing was written meanwhile";
}

} // namespace
} // namespace vellum
