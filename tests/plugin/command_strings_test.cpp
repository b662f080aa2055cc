#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "support/Session.h"

#include <QStringList>

#include <maya/MGlobal.h>

#include <gtest/gtest.h>

namespace vellum {
namespace {

/// What people, or files from elsewhere, might call a layer, a camera, a font or a menu.
QStringList hostileNames() {
    return {QStringLiteral("plain"),
            QString(),
            QStringLiteral("two words"),
            QStringLiteral("\"; global int $pwned = 1; \""),
            QStringLiteral("`global int $pwned = 1`"),
            QStringLiteral("$pwned"),
            QStringLiteral("back\\slash\\"),
            QStringLiteral("\\\"; $pwned = 1; //"),
            QStringLiteral("line\nbreak\r\n$pwned = 1;\ttab"),
            QStringLiteral("%1 %2 %99"),
            QStringLiteral("слой 图层 レイヤー 😀 é"),
            QStringLiteral("-e"),
            QStringLiteral("{UTIL_CMD} // /* */")};
}

class CommandStrings : public test::HostSession {
protected:
    void SetUp() override {
        ASSERT_TRUE(script::execute(QStringLiteral("global int $pwned; $pwned = 0;")));
    }
    void TearDown() override {
        EXPECT_EQ(script::executeInt(QStringLiteral("$readBack = $pwned")).value_or(-1), 0)
            << "a name ran as script";
    }
};

TEST_F(CommandStrings, QuotedTextComesThroughTheInterpreterUnchanged) {
    for (const QString& name : hostileNames()) {
        const auto result =
            script::executeString(QStringLiteral("$echo = ") + command::quote(name));
        ASSERT_TRUE(result) << name.toStdString();
        EXPECT_EQ(result->toStdString(), name.toStdString());
    }
    EXPECT_EQ(
        script::executeString(QStringLiteral("$echo = ") +
                              command::quote(QStringLiteral("a") + QChar(0) + QStringLiteral("b"))),
        QStringLiteral("ab"));
}

TEST_F(CommandStrings, EveryArgumentOfEveryCommandIsQuoted) {
    // Procedures stand in for the commands and note the text they were given.
    ASSERT_TRUE(script::execute(QStringLiteral(
        "global string $given[]; global proc int note(string $text)"
        "{ global string $given[]; $given[size($given)] = $text; return 0; }"
        "global proc rvVlCreateFloatingViewport(string $camera) { note($camera); }")));
    for (const QString& name : hostileNames()) {
        SCOPED_TRACE(name.toStdString());
        ASSERT_TRUE(script::execute(QStringLiteral("clear $given;")));
        ASSERT_TRUE(script::execute(command::createFloatingView(name))) << name.toStdString();
        EXPECT_EQ(script::executeString(QStringLiteral("$echo = $given[0]")).value_or("-"), name);

        // A command inside a string inside a command.
        const QString nested = command::quote(
            QStringLiteral("note(%1)").replace(QStringLiteral("%1"), command::quote(name)));
        ASSERT_TRUE(script::execute(QStringLiteral("eval(") + nested + QLatin1Char(')')))
            << name.toStdString();
        EXPECT_EQ(script::executeString(QStringLiteral("$echo = $given[1]")).value_or("-"), name);
    }
    const QString hostile = QStringLiteral("\"; $pwned = 1; \"");
    const QString quoted = command::quote(hostile);
    ToolOptions text;
    text.fontFamily = hostile;
    for (const QString& built :
         {command::commitStroke(hostile, 2, true), command::addLayer(hostile, hostile, 1),
          command::setActiveLayer(0, hostile), command::deleteLayer(0, hostile),
          command::moveLayer(0, 1, hostile), command::moveLayerToCamera(hostile, 0, 1, hostile),
          command::moveAllLayers(hostile, hostile), command::renameLayer(hostile, 0, hostile),
          command::setLayerState(1, 0, hostile), command::setLayerVisible(true, 0, hostile),
          command::setToolOptions(Tool::Text, text), command::contextExists(hostile),
          command::setToolTo(hostile), command::colorSliderValue(hostile),
          command::setColorSliderValue(hostile, Qt::red),
          command::setColorSliderCommand(hostile, hostile)}) {
        EXPECT_TRUE(built.contains(quoted)) << built.toStdString();
        EXPECT_FALSE(QString(built).remove(quoted).contains(QStringLiteral("pwned")))
            << built.toStdString();
    }
}

TEST_F(CommandStrings, FormatsOfTheCallsThatOthersReadBack) {
    EXPECT_EQ(command::commitStroke(QStringLiteral("cam"), -1, false),
              QStringLiteral("rvVellumStroke \"cam\""));
    EXPECT_EQ(command::commitStroke(QStringLiteral("cam"), 0, true),
              QStringLiteral("rvVellumStroke -la 0 -fa \"cam\""));
    EXPECT_EQ(command::playbackJob(),
              QStringLiteral(
                  "scriptJob -cf \"playingBack\" \"if (`rvVellumNode -ex`) rvVellumNode -rg\""));
    EXPECT_EQ(command::updateMainMenu(Tool::Text, true, false, TimelineDisplay::Never),
              QStringLiteral("rvVlUpdateMainMenu(3, 1, 0, 2)"));
    EXPECT_EQ(command::drawDeferred(),
              QStringLiteral("evalDeferred(\"if (`exists rvVellumUtil`) rvVellumUtil -draw\")"));
    EXPECT_TRUE(command::chooseTool(Tool::Transform).isEmpty());
    EXPECT_TRUE(command::chooseTool(static_cast<Tool>(-1)).isEmpty());
}

} // namespace
} // namespace vellum
