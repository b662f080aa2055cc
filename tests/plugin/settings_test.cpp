#include "plugin/leaves/Settings.h"
#include "plugin/leaves/Tool.h"
#include "plugin/leaves/ToolOptions.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <gtest/gtest.h>

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
    EXPECT_EQ(settings().pencilSize, 1);
    EXPECT_EQ(settings().lineSize, 50);
    EXPECT_EQ(settings().eraserSize, 100);
    EXPECT_EQ(settings().pencilOpacity, 1);
    EXPECT_EQ(settings().ghostPrevCount, 3);
    EXPECT_EQ(settings().ghostNextCount, 3);
    EXPECT_EQ(settings().activeTool, 1);
    EXPECT_EQ(settings().timelineFrameDisplay, 0);
    EXPECT_EQ(settings().defaultLayerState, 0);

    load(QStringLiteral("[tools]\nactiveTool=8\nghostPrevCount=9\n"
                        "[preferences]\ndefaultStaticFrameTime=-5000\n"));
    EXPECT_EQ(settings().activeTool, 8);
    EXPECT_EQ(settings().ghostPrevCount, 9);
    EXPECT_EQ(settings().defaultStaticFrameTime, -5000);
}

TEST_F(SettingsFile, GarbageGivesDefaults) {
    load(
        QStringLiteral("[tools]\npencilSize=many\nactiveColor=@Variant(\\0\\0)\nghostPrev=perhaps\n"
                       "brushSize=99999999999999999\n[main]\nversion=junk\n"));
    EXPECT_EQ(settings().pencilSize, 6);
    EXPECT_EQ(settings().activeColor, QColor(0, 255, 255));
    EXPECT_FALSE(settings().ghostPrev);
    EXPECT_EQ(settings().brushSize, 100) << "a number all the same";

    load(QString(QChar(0x1)) + QStringLiteral("\xff\xfe [[[ ==== \n\n]"));
    EXPECT_EQ(settings().brushSize, 6);
    EXPECT_EQ(settings().mainMenuName, QStringLiteral("VL2"));
    EXPECT_TRUE(settings().brushTabletEnabled);

    resetSettings();
    loadSettingsFrom(directory_.filePath(QStringLiteral("missing/none.ini")));
    EXPECT_EQ(settings().eraserSize, 40);
}

TEST_F(SettingsFile, EveryKindOfValueComesBackAndStrangersStay) {
    write(QStringLiteral("[tools]\nlaterOption=7\n[companion]\nname=kept\n"));
    settings().mainMenuName = QStringLiteral("Скетч \"2\", \\ [x]=;");
    settings().toolboxGeometry = QByteArray::fromHex("00ff0d0a2c22");
    settings().activeColor = QColor(1, 2, 3, 4);
    settings().ghostNext = true;
    settings().textFontFamily = QStringLiteral("A, B");
    settings().timelineFrameDisplay = 2;
    const Settings saved = settings();
    ASSERT_TRUE(saveSettingsTo(path()));

    resetSettings();
    loadSettingsFrom(path());
    EXPECT_EQ(settings().mainMenuName, saved.mainMenuName);
    EXPECT_EQ(settings().toolboxGeometry, saved.toolboxGeometry);
    EXPECT_EQ(settings().activeColor, saved.activeColor);
    EXPECT_TRUE(settings().ghostNext);
    EXPECT_EQ(settings().textFontFamily, saved.textFontFamily);
    EXPECT_EQ(settings().timelineFrameDisplay, 2);

    QSettings file(path(), QSettings::IniFormat);
    EXPECT_EQ(file.value(QStringLiteral("main/version")).toInt(), 1);
    EXPECT_EQ(file.value(QStringLiteral("tools/laterOption")).toInt(), 7);
    EXPECT_EQ(file.value(QStringLiteral("companion/name")).toString(), QStringLiteral("kept"));
    // version, 6 main, 28 tools, 16 preferences, 2 strangers
    EXPECT_EQ(file.allKeys().size(), 1 + 6 + 28 + 16 + 2);
}

TEST_F(SettingsFile, UnwritablePlaceIsToldAndLeavesTheFile) {
    const QString inside = directory_.filePath(QStringLiteral("file"));
    QFile file(inside);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_FALSE(saveSettingsTo(inside + QStringLiteral("/vellum2.ini")));
    EXPECT_TRUE(QFileInfo(inside).isFile());
}

TEST_F(SettingsFile, ToolOptionsAreClampedPerTool) {
    for (int tool = 0; tool < kDrawToolCount; ++tool) {
        const bool shape = tool >= static_cast<int>(Tool::Line);
        setToolSize(tool, 1000);
        EXPECT_EQ(toolSize(tool), shape ? 50 : 100) << tool;
        setToolSize(tool, -4);
        EXPECT_EQ(toolSize(tool), 1) << tool;
        setToolOpacity(tool, 0);
        EXPECT_EQ(toolOpacity(tool), 1) << tool;
        setToolOpacity(tool, 101);
        EXPECT_EQ(toolOpacity(tool), 100) << tool;
        setToolTabletEnabled(tool, true);
        EXPECT_EQ(toolTabletEnabled(tool), tool <= static_cast<int>(Tool::Eraser)) << tool;
        setToolHardness(tool, 150);
        EXPECT_EQ(toolHardness(tool), 100) << tool;
        setToolHardness(tool, -1);
        EXPECT_EQ(toolHardness(tool), tool == 1 ? 10 : tool == 2 ? 0 : 100) << tool;
    }
    EXPECT_EQ(settings().pencilSize, 1) << "options are the settings themselves";
}

} // namespace
} // namespace vellum
