// What each control of toolbox and tool options issues: script, echo, undo, now or when idle.
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/base/ToolTable.h"
#include "ui/ToolOptionsCommands.h"
#include "ui/ToolboxCommands.h"

#include <gtest/gtest.h>

namespace vellum {
namespace {

/// "script | echo", one a line.
std::string told(const PanelCommands& commands) {
    std::string all;
    for (const PanelCommand& command : commands) {
        all += (all.empty() ? "" : "\n") + command.script.toStdString();
        all += command.echo ? " | echo" : "";
        all += command.undo ? " | undo" : "";
        all += command.when == PanelCommand::When::Idle ? " | idle" : "";
    }
    return all;
}

struct Row {
    PanelCommands commands;
    const char* expected;
};

void check(const std::vector<Row>& rows) {
    for (const Row& row : rows)
        EXPECT_EQ(told(row.commands), row.expected);
}

TEST(ToolboxCommands, EveryButtonAndMenuEntry) {
    Settings off;
    Settings on;
    on.ghostPrev = on.ghostNext = true;
    using namespace toolbox;
    check({
        {chooseTool(Tool::Pencil), "rvVellumUtil -pencilTool | echo"},
        {chooseTool(Tool::Brush), "rvVellumUtil -brushTool | echo"},
        {chooseTool(Tool::Eraser), "rvVellumUtil -eraserTool | echo"},
        {chooseTool(Tool::Text), "rvVellumUtil -textTool | echo"},
        {chooseTool(Tool::Line), "rvVellumUtil -lineTool | echo"},
        {chooseTool(Tool::Arrow), "rvVellumUtil -arrowTool | echo"},
        {chooseTool(Tool::Ellipse), "rvVellumUtil -ellipseTool | echo"},
        {chooseTool(Tool::Rectangle), "rvVellumUtil -rectangleTool | echo"},
        {switchGhostPrevious(off), "rvVellumUtil -e -ghostPrevious 1 | echo"},
        {switchGhostPrevious(on), "rvVellumUtil -e -ghostPrevious 0 | echo"},
        {switchGhostNext(off), "rvVellumUtil -e -ghostNext 1 | echo"},
        {switchGhostNext(on), "rvVellumUtil -e -ghostNext 0 | echo"},
        {ghostPreviousCount(1), "rvVellumUtil -e -ghostPreviousCount 1 | echo"},
        {ghostNextCount(5), "rvVellumUtil -e -ghostNextCount 5 | echo"},
        {ghostingSettings(), "rvVellumUtil -ghostingSettings | echo"},
        {insertFrames(true), "rvVellumFrame -insert | echo"},
        {insertFrames(false), "rvVellumNode -l -f | idle"},
        {frames("-duplicate"), "rvVellumFrame -duplicate | echo"},
        {frames("-delete"), "rvVellumFrame -delete | echo"},
        {frames("-cut"), "rvVellumFrame -cut | echo"},
        {frames("-copy"), "rvVellumFrame -copy | echo"},
        {frames("-paste"), "rvVellumFrame -paste | echo"},
    });
}

// Hardness has no control and goes on unchanged.
TEST(ToolOptionsCommands, OneOptionChangesTheOthersGoOn) {
    Settings set;
    for (ToolOptions& options : set.toolOptions) {
        options.size = 7;
        options.opacity = 60;
        options.hardness = 30;
        options.tabletEnabled = true;
        options.fontFamily = QStringLiteral("Arial");
    }
    using namespace tool_options;
    check({
        {setSize(set, Tool::Pencil, 8), "rvVellumUtil -pencilOptions 8 60 1 | echo"},
        {setSize(set, Tool::Brush, 100), "rvVellumUtil -brushOptions 100 60 30 1 | echo"},
        {setSize(set, Tool::Eraser, 1), "rvVellumUtil -eraserOptions 1 60 30 1 | echo"},
        {setSize(set, Tool::Text, 8), "rvVellumUtil -textOptions 8 60 \"Arial\" | echo"},
        {setSize(set, Tool::Line, 50), "rvVellumUtil -lineOptions 50 60 | echo"},
        {setOpacity(set, Tool::Pencil, 59), "rvVellumUtil -pencilOptions 7 59 1 | echo"},
        {setOpacity(set, Tool::Brush, 1), "rvVellumUtil -brushOptions 7 1 30 1 | echo"},
        {setOpacity(set, Tool::Arrow, 99), "rvVellumUtil -arrowOptions 7 99 | echo"},
        {setOpacity(set, Tool::Ellipse, 99), "rvVellumUtil -ellipseOptions 7 99 | echo"},
        {setOpacity(set, Tool::Rectangle, 99), "rvVellumUtil -rectangleOptions 7 99 | echo"},
        {setTabletEnabled(set, Tool::Pencil, false), "rvVellumUtil -pencilOptions 7 60 0 | echo"},
        {setTabletEnabled(set, Tool::Brush, false), "rvVellumUtil -brushOptions 7 60 30 0 | echo"},
        {setTabletEnabled(set, Tool::Eraser, false),
         "rvVellumUtil -eraserOptions 7 60 30 0 | echo"},
        {setFontFamily(set, Tool::Text, QStringLiteral("a\"; quit; \"\\")),
         "rvVellumUtil -textOptions 7 60 \"a\\\"; quit; \\\"\\\\\" | echo"},
    });
}

TEST(ToolOptionsCommands, NothingToChangeIssuesNothing) {
    const Settings set;
    const Tool none[] = {Tool::Transform, static_cast<Tool>(-1), static_cast<Tool>(99)};
    using namespace tool_options;
    for (const ToolInfo& tool : kTools) {
        const ToolOptions& options = set.of(tool.tool);
        SCOPED_TRACE(tool.name);
        EXPECT_TRUE(setSize(set, tool.tool, options.size).empty());
        EXPECT_TRUE(setOpacity(set, tool.tool, options.opacity).empty());
        EXPECT_TRUE(setTabletEnabled(set, tool.tool, options.tabletEnabled).empty());
        EXPECT_TRUE(setFontFamily(set, tool.tool, options.fontFamily).empty());
        EXPECT_TRUE(setFontFamily(set, tool.tool, QString()).empty());
        const bool knowsPressure = tool.tablet.keep != Keep::Nowhere;
        EXPECT_EQ(setTabletEnabled(set, tool.tool, !options.tabletEnabled).empty(), !knowsPressure);
        EXPECT_EQ(setFontFamily(set, tool.tool, QStringLiteral("Other")).empty(),
                  !tool.factoryFont);
    }
    for (const Tool tool : none)
        EXPECT_TRUE(setSize(set, tool, 9).empty() && setOpacity(set, tool, 9).empty() &&
                    setTabletEnabled(set, tool, true).empty() &&
                    setFontFamily(set, tool, QStringLiteral("Arial")).empty());
}

} // namespace
} // namespace vellum
