// Ghosting, retiming, preferences, about and import: what each shows, issues and changes.
#include "foundation/Events.h"
#include "ui/GhostingCommands.h"
#include "ui/MainWindow.h"
#include "ui/PanelSession.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QStackedWidget>

#include <gmock/gmock.h>
#include <map>

namespace vellum::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

std::vector<std::string> scripts(const PanelCommands& commands) {
    std::vector<std::string> all;
    for (const PanelCommand& command : commands)
        all.push_back(command.script.toStdString() + (command.echo ? " | echo" : "") +
                      (command.undo ? " | undo" : ""));
    return all;
}

TEST(DialogCommands, GhostingIssuesAllFiveInOrder) {
    EXPECT_THAT(scripts(ghostingCommands({9, 1, true, QColor(1, 2, 3), QColor(255, 0, 7)})),
                ElementsAre("rvVellumUtil -e -ghostPreviousCount 9 | echo",
                            "rvVellumUtil -e -ghostNextCount 1 | echo",
                            "rvVellumUtil -e -ghostColorOverride 1 | echo",
                            "rvVellumUtil -e -ghostColorPrevious 1 2 3 | echo",
                            "rvVellumUtil -e -ghostColorNext 255 0 7 | echo"));
}

TEST(DialogCommands, RetimingReadsTheButton) {
    const struct {
        const char* button;
        bool relative;
        bool moveToNext;
        const char* script;
    } rows[] = {
        {"1f", false, false, "rvVellumFrame -retime 1 | echo | undo"},
        {"6f", false, true, "rvVellumFrame -moveToNext -retime 6 | echo | undo"},
        {"-2f", true, false, "rvVellumFrame -relative -retime -2 | echo | undo"},
        {"-1f", true, true, "rvVellumFrame -relative -moveToNext -retime -1 | echo | undo"},
        {"+1f", true, false, "rvVellumFrame -relative -retime 1 | echo | undo"},
        {"+2f", true, true, "rvVellumFrame -relative -moveToNext -retime 2 | echo | undo"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(
            scripts(retimeCommands(QString::fromLatin1(row.button), row.relative, row.moveToNext)),
            ElementsAre(row.script));
    for (const char* text : {"f", "", "af", "--1f"})
        EXPECT_TRUE(retimeCommands(QString::fromLatin1(text), true, true).empty()) << text;
}

class Dialogs : public PanelSession {
protected:
    template <class Widget> static Widget* named(QDialog& dialog, const char* name) {
        auto* widget = dialog.findChild<Widget*>(QLatin1String(name));
        EXPECT_TRUE(widget) << name;
        return widget;
    }
    static QAbstractButton* button(QDialog& dialog, const QString& text) {
        for (auto* one : dialog.findChildren<QAbstractButton*>()) {
            if (one->text() == text)
                return one;
        }
        ADD_FAILURE() << text.toStdString();
        return nullptr;
    }
    void during(const char* flag, const char* className,
                const std::function<void(QDialog&)>& answer) {
        answering((QByteArray("vellum::") + className).constData(), answer,
                  [&] { EXPECT_TRUE(run(QStringLiteral("rvVellumUtil ") + QLatin1String(flag))); });
        EXPECT_FALSE(panel(className)) << "the dialog is gone afterwards";
        EXPECT_TRUE(viewHasKeyboard()) << className;
    }
    QVariant stored(const char* key) {
        const QSettings file(text(QStringLiteral("internalVar -userPrefDir")) +
                                 QStringLiteral("/vellum2.ini"),
                             QSettings::IniFormat);
        return file.value(QLatin1String(key));
    }
};

TEST_F(Dialogs, GhostingShowsAndAppliesWhatIsSet) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -gpc 9; rvVellumUtil -e -gnc 2;"
                                   "rvVellumUtil -e -gcp 10 127 255; rvVellumUtil -e -gco 1")));
    during("-gs", "GhostingDialog", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Ghosting Settings"));
        const auto counts = dialog.findChildren<QSpinBox*>();
        ASSERT_EQ(counts.size(), 2);
        EXPECT_EQ(counts[0]->value(), 9);
        EXPECT_EQ(counts[1]->value(), 2);
        EXPECT_EQ(counts[0]->maximum(), 9);
        counts[0]->setValue(4);
        EXPECT_TRUE(dialog.findChild<QCheckBox*>()->isChecked());
        echoes.clear();
        click(*button(dialog, QStringLiteral("OK")));
    });
    EXPECT_EQ(echoes.filter(QStringLiteral("rvVellumUtil -e -ghost")).size(), 5)
        << echoes.join('|').toStdString();
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gpc")), 4);
    EXPECT_THAT(echoes, Contains(QStringLiteral("rvVellumUtil -e -ghostColorPrevious 10 127 255")));
    // Once more, with the same names for its controls; cancelled, it issues nothing.
    during("-gs", "GhostingDialog", [&](QDialog& dialog) {
        dialog.findChild<QSpinBox*>()->setValue(1);
        echoes.clear();
        click(*button(dialog, QStringLiteral("Cancel")));
    });
    EXPECT_TRUE(echoes.filter(QStringLiteral("-ghost")).isEmpty());
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gpc")), 4);
}

TEST_F(Dialogs, RetimingWorksTheDrawingAndKeepsItsSwitch) {
    ASSERT_TRUE(run(QStringLiteral("currentTime 1; rvVellumNode -layer -camera persp;"
                                   "rvVellumFrame -insert persp; currentTime 2;"
                                   "rvVellumFrame -insert persp; currentTime 1")));
    QDialog* dialog = open("-rtt", "RetimingDialog");
    ASSERT_TRUE(dialog);
    dialog->move(420, 320);
    support::settle();
    echoes.clear();
    click(*button(*dialog, QStringLiteral("3f")));
    EXPECT_THAT(echoes, Contains(QStringLiteral("rvVellumFrame -retime 3")));
    EXPECT_TRUE(viewHasKeyboard());
    const QString moved = QStringLiteral("currentTime 1; rvVellumFrame -stepForward persp;"
                                         "int($vlNow = `currentTime -q`)");
    EXPECT_EQ(number(moved), 4) << "the next drawing follows three frames later";
    ASSERT_TRUE(run(QStringLiteral("currentTime 1")));

    auto* onward = dialog->findChild<QCheckBox*>();
    hand.click(*onward, {8, onward->height() / 2.0});
    ASSERT_TRUE(onward->isChecked());
    click(*button(*dialog, QStringLiteral("-1f")));
    EXPECT_THAT(echoes, Contains(QStringLiteral("rvVellumFrame -relative -moveToNext -retime -1")));
    EXPECT_EQ(now(), 3);
    hand.type({Qt::Key_Control, Qt::Key_Z});
    ASSERT_TRUE(support::waitFor([&] { return number(moved) == 4; })) << "undone by key";

    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    unloadPlugin();
    loadPlugin();
    dialog = open("-rtt", "RetimingDialog");
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->findChild<QCheckBox*>()->isChecked());
    EXPECT_EQ(dialog->pos(), QPoint(420, 320));
}

// The boxes of the form, each with the key of its setting.
const std::map<const char*, const char*> kBoxes = {
    {"disableGhostingDuringPlaybackCB", "disableGhostingDuringPlayback"},
    {"drawToolContextMenuCB", "drawToolContextMenu"},
    {"transformToolContextMenuCB", "transformToolContextMenu"},
    {"timelineContextMenuCB", "timelineContextMenu"},
    {"toolboxDrawToolContextMenuCB", "toolboxDrawToolContextMenu"},
    {"toolboxGhostingContextMenuCB", "toolboxGhostingContextMenu"},
    {"timeControlRangeMoveEnabledCB", "timeControlRangeMoveEnabled"},
    {"ignore2dPanZoomCB", "ignore2dPanZoom"},
    {"mainMenuInAnimationSetCB", "showMainMenuInAnimationSet"},
    {"undoReturnsToFrameCB", "undoReturnsToFrame"},
    {"automaticallyAddFirstLayerOnDrawCB", "automaticallyAddFirstLayer"},
    {"alwaysDisplayNewLayerDialogCB", "alwaysDisplayNewLayerDialog"},
    {"insertDefaultStaticFrameCB", "insertDefaultStaticFrame"},
};

TEST_F(Dialogs, EveryPreferenceIsStoredUnderItsKeyAtOnce) {
    std::map<std::string, bool> wanted;
    during("-pr", "PreferencesDialog", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Preferences"));
        EXPECT_EQ(dialog.findChildren<QCheckBox*>().size(), int(kBoxes.size()));
        for (const auto& [name, key] : kBoxes) {
            auto* box = named<QCheckBox>(dialog, name);
            box->toggle();
            wanted[key] = box->isChecked();
        }
        named<QRadioButton>(dialog, "staticLayerTypeRB")->click();
        auto* time = named<QSpinBox>(dialog, "defaultStaticFrameTimeSB");
        time->setValue(-20000);
        EXPECT_EQ(time->value(), -9999);
        time->setValue(20000);
        EXPECT_EQ(time->value(), 9999);
        click(*button(dialog, QStringLiteral("OK")));
    });
    for (const auto& [key, on] : wanted)
        EXPECT_EQ(stored(("preferences/" + key).c_str()).toBool(), on) << key;
    EXPECT_EQ(stored("preferences/defaultLayerState").toInt(), 1);
    EXPECT_EQ(stored("preferences/defaultStaticFrameTime").toInt(), 9999);
    // And they are shown again; cancelled, nothing changes.
    during("-pr", "PreferencesDialog", [&](QDialog& dialog) {
        for (const auto& [name, key] : kBoxes) {
            auto* box = named<QCheckBox>(dialog, name);
            EXPECT_EQ(box->isChecked(), wanted[key]) << name;
            box->toggle();
        }
        EXPECT_TRUE(named<QRadioButton>(dialog, "staticLayerTypeRB")->isChecked());
        auto* list = named<QListWidget>(dialog, "menuListWdg");
        auto* pages = named<QStackedWidget>(dialog, "preferencesStackedWdg");
        EXPECT_EQ(list->currentRow(), 0);
        EXPECT_EQ(pages->currentWidget()->objectName(), QStringLiteral("generalPage"));
        list->setCurrentRow(1);
        EXPECT_EQ(pages->currentWidget()->objectName(), QStringLiteral("advancedPage"));
        hand.type({Qt::Key_Escape});
    });
    unloadPlugin();
    for (const auto& [key, on] : wanted)
        EXPECT_EQ(stored(("preferences/" + key).c_str()).toBool(), on) << key;
    loadPlugin();
}

TEST_F(Dialogs, TheMarkersShowTheColorWhileItIsChosen) {
    ASSERT_TRUE(run(QStringLiteral("currentTime 3; rvVellumNode -layer -camera persp;"
                                   "rvVellumFrame -insert persp; currentTime 1")));
    const auto showsOnSlider = [&](const QColor& color) {
        return support::waitFor([&] {
            const QImage slider = window->grab().toImage();
            for (int y = slider.height() / 2; y < slider.height(); ++y) {
                for (int x = 0; x < slider.width(); ++x) {
                    if (slider.pixelColor(x, y) == color)
                        return true;
                }
            }
            return false;
        });
    };
    const QColor factory(143, 193, 207);
    const QColor red(250, 10, 30);
    EXPECT_TRUE(showsOnSlider(factory));
    const auto pickRed = [&](QDialog& dialog) {
        answering(
            "QColorDialog",
            [&](QDialog& chooser) {
                EXPECT_EQ(chooser.windowTitle(), QStringLiteral("Timeline Frame Color"));
                static_cast<QColorDialog&>(chooser).setCurrentColor(red);
                chooser.accept();
            },
            [&] { click(*named<QLabel>(dialog, "timelineFrameColorBtn")); });
        EXPECT_TRUE(showsOnSlider(red)) << "while the dialog is open";
    };
    during("-pr", "PreferencesDialog", [&](QDialog& dialog) {
        pickRed(dialog);
        click(*button(dialog, QStringLiteral("Cancel")));
    });
    EXPECT_TRUE(showsOnSlider(factory)) << "as before the dialog";
    during("-pr", "PreferencesDialog", [&](QDialog& dialog) {
        pickRed(dialog);
        click(*button(dialog, QStringLiteral("OK")));
    });
    EXPECT_TRUE(showsOnSlider(red));
    during("-pr", "PreferencesDialog", [&](QDialog& dialog) {
        click(*named<QPushButton>(dialog, "timelineFrameColorDefaultBtn"));
        click(*button(dialog, QStringLiteral("OK")));
    });
    EXPECT_TRUE(showsOnSlider(factory));
    during("-pr", "PreferencesDialog", [&](QDialog& dialog) {
        pickRed(dialog);
        host::events::emit("quitApplication");
        EXPECT_TRUE(dialog.isHidden());
        dialog.reject(); // else nothing would end it
    });
    EXPECT_EQ(stored("preferences/timelineFrameColor").value<QColor>(), factory)
        << "nobody has said OK";
}

TEST_F(Dialogs, AboutTellsWhatAReportNeeds) {
    during("-ab", "AboutDialog", [&](QDialog& dialog) {
        click(*button(dialog, QStringLiteral("Copy for a Report")));
        dialog.reject();
    });
    const QString copied = QGuiApplication::clipboard()->text();
    for (const QString& part :
         {QStringLiteral("Vellum 2"), QStringLiteral("2.4.1"), QStringLiteral("MIT"),
          QString::fromLatin1(qVersion()), QString::number(20240000), QStringLiteral("zlib"),
          QStringLiteral("Lesser General Public License"),
          text(QStringLiteral("internalVar -userPrefDir")), QStringLiteral("vellum2.ini")})
        EXPECT_TRUE(copied.contains(part)) << part.toStdString();
}

TEST_F(Dialogs, TheImportIsAPlaceholderThatChangesNothing) {
    ASSERT_TRUE(run(QStringLiteral("file -modified 0")));
    QDialog* dialog = open("-rvi", "ReelviewProImportDialog");
    ASSERT_TRUE(dialog);
    echoes.clear();
    click(*button(*dialog, QStringLiteral("Import")));
    EXPECT_THAT(notes,
                Contains(QStringLiteral("[Vellum2] TODO: ReelviewProImportDialog::Import()")));
    click(*button(*dialog, QStringLiteral("Close")));
    EXPECT_TRUE(support::waitFor([] { return !panel("ReelviewProImportDialog"); }));
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
}

} // namespace
} // namespace vellum::test
