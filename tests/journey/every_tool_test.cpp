// Each tool of the table, from its flag to its ink: a tool with a place that somebody forgot fails
// here under its name.
#include "journey/Desk.h"
#include "plugin/base/ToolTable.h"
#include "ui/MainWindow.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class EveryTool : public Desk {
protected:
    /// rvVellumUtil with a flag.
    bool util(const char* flag, const QString& arguments = QString()) {
        return run(line("rvVellumUtil %1 %2").arg(line(flag), arguments));
    }

    /// Size and opacity, and what else the tool's options flag takes.
    static QString arguments(const ToolInfo& info, int size, int opacity, bool tablet = false) {
        QString text = line("%1 %2").arg(size).arg(opacity);
        text += info.hardness.keep == Keep::Nowhere ? QString() : line(" 100");
        text += info.tablet.keep == Keep::Nowhere ? QString() : line(tablet ? " 1" : " 0");
        return text + (info.factoryFont ? line(" \"DejaVu Sans\"") : QString());
    }

    /// A tool that is another one.
    static const ToolInfo& before(const ToolInfo& info) {
        return &info == &kTools.front() ? kTools.back() : *(&info - 1);
    }

    /// Names of the tools that the main menu marks.
    std::string marked() {
        QStringList names;
        for (const ToolInfo& info : kTools) {
            const QString item = line("$gRvVl%1ToolMenuItem").arg(line(info.name));
            if (number(line("menuItem -q -radioButton ") + item) == 1)
                names.append(line(info.name));
        }
        return names.join(QLatin1Char(' ')).toStdString();
    }

    static QAction* entry(const QMenu* menu, const char* label) {
        for (QAction* action : menu ? menu->actions() : QList<QAction*>()) {
            if (action->text() == line(label))
                return action;
        }
        ADD_FAILURE() << "no entry " << label;
        return nullptr;
    }

    void chooseFromMainMenu(const ToolInfo& info) {
        for (const QAction* title : window->menuBar()->actions()) {
            if (title->text() != line("VL2"))
                continue;
            if (const QAction* tools = entry(title->menu(), "Draw Tool")) {
                if (QAction* tool = entry(tools->menu(), info.name))
                    tool->trigger();
            }
        }
    }

    /// By the menu under the right button, which marks the tool there was.
    void chooseFromView(const ToolInfo& info, const ToolInfo& active) {
        // Not where the button was pressed last, which would be a double click.
        hand.moveTo(view(), QPointF(100 + 20 * numberOf(info.tool), 60));
        hand.press(Qt::RightButton);
        hand.release(Qt::RightButton);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        const QAction* tools = entry(menu, "Draw Tool");
        QStringList checked;
        for (const QAction* action : tools ? tools->menu()->actions() : QList<QAction*>()) {
            if (action->isChecked())
                checked.append(action->text());
        }
        EXPECT_EQ(checked.join(QLatin1Char(' ')).toStdString(), active.name);
        if (QAction* tool = tools ? entry(tools->menu(), info.name) : nullptr)
            tool->trigger();
        if (menu)
            menu->close();
        support::settle();
    }

    void drawWith(const ToolInfo& info) {
        stroke({kFrom, kBeyond, kTo});
        if (info.kind != ToolKind::Text)
            return;
        hand.type({Qt::Key_H});
        hand.type({Qt::Key_Escape});
    }

    const QPoint kFrom{120, 120};
    const QPoint kBeyond{320, 120}; ///< on the way
    const QPoint kTo{200, 200};
};

TEST_F(EveryTool, IsChosenByItsFlagAndFromTheMenusAndIsThereAfterTheNextLoad) {
    for (const ToolInfo& info : kTools) {
        SCOPED_TRACE(info.name);
        const ToolInfo& other = before(info);
        for (const char* flag : {info.toolFlag.shortName, info.toolFlag.longName}) {
            ASSERT_TRUE(util(other.toolFlag.longName));
            ASSERT_TRUE(util(flag));
            EXPECT_EQ(marked(), info.name) << flag;
        }
        EXPECT_EQ(number(line("gmatch(`currentCtx`, \"rvVlDrawCtx*\")")), 1);
        ASSERT_TRUE(util(other.toolFlag.longName));
        chooseFromMainMenu(info);
        EXPECT_EQ(marked(), info.name) << "main menu";
        ASSERT_TRUE(util(other.toolFlag.longName));
        chooseFromView(info, other);
        EXPECT_EQ(marked(), info.name) << "draw menu";
        ASSERT_TRUE(run(line("file -f -new")));
        unloadPlugin();
        loadPlugin();
        EXPECT_EQ(marked(), info.name) << "next load";
    }
}

TEST_F(EveryTool, OptionsThatAreKeptAreInTheFile) {
    for (const ToolInfo& info : kTools)
        ASSERT_TRUE(util(info.optionsFlag.longName,
                         arguments(info, 11 + numberOf(info.tool), 31 + numberOf(info.tool),
                                   !info.tablet.factory)))
            << info.name;
    ASSERT_TRUE(run(line("file -f -new")));
    const QString path = text(line("internalVar -userPrefDir")) + line("/vellum2.ini");
    unloadPlugin();
    const QSettings stored(path, QSettings::IniFormat);
    for (const ToolInfo& info : kTools) {
        SCOPED_TRACE(info.name);
        const auto value = [&](const char* option) {
            return stored.value(line("tools/") + line(info.key) + line(option));
        };
        const int opacity = info.opacity.keep == Keep::File ? 31 + numberOf(info.tool) : 0;
        const char* tablet = info.tablet.factory ? "false" : "true";
        EXPECT_EQ(value("Size").toInt(), 11 + numberOf(info.tool));
        EXPECT_EQ(value("Opacity").toInt(), opacity);
        EXPECT_EQ(value("FontFamily").toString().toStdString(),
                  info.factoryFont ? "DejaVu Sans" : "");
        EXPECT_EQ(value("TabletEnabled").toString().toStdString(),
                  info.tablet.keep == Keep::File ? tablet : "");
    }
    loadPlugin();
}

TEST_F(EveryTool, LeavesItsOwnInkWhichUndoTakesAway) {
    ASSERT_TRUE(run(line("rvVellumUtil -e -drawColor 255 40 200")));
    std::map<std::string, QImage> pictures;
    for (const ToolInfo& info : kTools) {
        SCOPED_TRACE(info.name);
        ASSERT_TRUE(util("-pencilTool"));
        ASSERT_TRUE(util("-pencilOptions", line("60 100 0")));
        const bool erases = info.kind == ToolKind::Erasing;
        if (erases)
            stroke({kFrom, kBeyond, kTo});
        const QImage blank = picture();
        ASSERT_TRUE(util(info.toolFlag.longName));
        ASSERT_TRUE(util(info.optionsFlag.longName, arguments(info, 20, 100)));
        drawWith(info);
        const QImage drawn = picture();
        EXPECT_NE(drawn, blank) << "nothing was drawn";
        if (isFreehand(info.kind)) {
            EXPECT_TRUE(differAt(drawn, blank, (kFrom + kBeyond) / 2)) << "where the hand went";
        } else {
            EXPECT_FALSE(differAt(drawn, blank, kBeyond - QPoint(10, 0))) << "where it ended";
        }
        for (const auto& [name, other] : pictures)
            EXPECT_NE(drawn, other) << "draws what " << name << " draws";
        pictures[info.name] = drawn;
        ASSERT_TRUE(run(line("undo")));
        EXPECT_TRUE(shows(blank)) << "undo";
        if (erases) {
            ASSERT_TRUE(run(line("undo")));
        }
    }
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace
} // namespace vellum::test
