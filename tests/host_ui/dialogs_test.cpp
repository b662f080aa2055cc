// Dialogs, the Edit menu, and the contact sheet.
#include "host_ui/UiTest.h"
#include "scene/files/FileIO.h"
#include "ui/ContactSheet.h"
#include "ui/MenuSets.h"
#include "ui/SceneTime.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

using testing::HasSubstr;

class Dialogs : public uitest::UiTest {
protected:
    /// Does something with the next dialog of a kind as soon as it is there.
    template <class Dialog> void whenShown(std::function<void(Dialog&)> act) {
        QTimer::singleShot(0, window.get(), [this, act] {
            auto* dialog = window->findChild<Dialog*>();
            if (!dialog || !dialog->isVisible()) {
                whenShown<Dialog>(act);
                return;
            }
            act(*dialog);
        });
    }
    QMenu* menuTitled(const QString& title) {
        for (QAction* action : window->menuBar()->actions()) {
            if (action->text() == title)
                return action->menu();
        }
        return nullptr;
    }
    QAction* entry(const QString& menu, int index) {
        return menuTitled(menu)->actions().value(index);
    }
};

TEST_F(Dialogs, ConfirmDialogReturnsTheButton) {
    const std::string dialog = "confirmDialog -title \"T\" -message \"Really?\" -button \"Yes\" "
                               "-button \"No\" -defaultButton \"Yes\" -cancelButton \"No\" "
                               "-dismissString \"gone\"";
    whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "Really?");
        EXPECT_EQ(box.defaultButton()->text(), "Yes");
        box.defaultButton()->click();
    });
    EXPECT_EQ(runString(dialog), "Yes");
    whenShown<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(runString(dialog), "No") << "Escape presses the cancel button";
    whenShown<QMessageBox>([](QMessageBox& box) { box.reject(); });
    EXPECT_EQ(runString(dialog), "gone");
}

TEST_F(Dialogs, SaveAsChoosesTheFormBySuffix) {
    QTemporaryDir directory;
    for (const char* name : {"shot.mb", "shot.ma", "plain"}) {
        whenShown<QFileDialog>([&](QFileDialog& dialog) {
            dialog.selectFile(directory.filePath(name));
            static_cast<QDialog&>(dialog).accept();
        });
        ASSERT_TRUE(window->saveAs()) << name;
    }
    QFile ascii(directory.filePath("shot.ma")), binary(directory.filePath("shot.mb"));
    ASSERT_TRUE(ascii.open(QIODevice::ReadOnly) && binary.open(QIODevice::ReadOnly));
    EXPECT_TRUE(ascii.read(20).startsWith("//Maya ASCII"));
    EXPECT_FALSE(binary.read(20).startsWith("//Maya"));
    EXPECT_TRUE(QFile::exists(directory.filePath("plain.ma"))) << "the default suffix";
    whenShown<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(window->saveAs());
    // A failed save keeps the scene's name.
    const std::string name = host::fileIO().sceneName();
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        dialog.selectFile("/proc/shot.ma");
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_FALSE(window->saveAs());
    EXPECT_EQ(host::fileIO().sceneName(), name);
}

TEST_F(Dialogs, EditMenuNamesWhatItUndoes) {
    run("flushUndo; createNode transform -name \"made\"");
    QMenu* edit = menuTitled("Edit");
    QAction* undo = entry("Edit", 0);
    QAction* redo = entry("Edit", 1);
    Q_EMIT edit->aboutToShow();
    EXPECT_TRUE(undo->text().startsWith("Undo")) << undo->text().toStdString();
    EXPECT_GT(undo->text().size(), 5) << "the step has a name";
    EXPECT_EQ(redo->text(), "Redo");
    undo->trigger();
    EXPECT_EQ(runInt("objExists made"), 0);
    Q_EMIT edit->aboutToShow();
    EXPECT_GT(redo->text().size(), 5);
    redo->trigger();
    EXPECT_EQ(runInt("objExists made"), 1);
    run("select made");
    type({Qt::Key_Delete});
    EXPECT_EQ(runInt("objExists made"), 0) << "the select tool deletes what is selected";
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(runInt("objExists made"), 1);
}

TEST_F(Dialogs, MenuSetsAreChosenInTheMenuBar) {
    auto* chooser = window->menuBar()->findChild<QComboBox*>("menuSetChooser");
    EXPECT_EQ(chooser->currentText(), "Animation");
    host::MenuSets::instance().setCurrent("riggingMenuSet");
    EXPECT_EQ(chooser->currentText(), "Rigging");
    chooser->setCurrentIndex(0);
    Q_EMIT chooser->activated(0);
    EXPECT_EQ(runString("menuSet -q -currentMenuSet"), "animationMenuSet");
    EXPECT_FALSE(host::MenuSets::instance().setCurrent("none"));
}

TEST_F(Dialogs, ContactSheetRefusesNonsense) {
    QTemporaryDir directory;
    const QString file = directory.filePath("sheet.png");
    run("currentTime 5");
    std::string error;
    host::ContactSheet sheet;
    sheet.first = 10;
    sheet.last = 1;
    EXPECT_FALSE(sheet.write(file, error));
    sheet.first = 1;
    sheet.last = 40000;
    EXPECT_FALSE(sheet.write(file, error));
    EXPECT_THAT(error, HasSubstr("too large"));
    sheet.last = 3;
    EXPECT_FALSE(sheet.write("", error));
    EXPECT_FALSE(sheet.write("/proc/none/sheet.png", error));
    EXPECT_THAT(error, HasSubstr("sheet.png"));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(sheet.write(file, error)) << error;
    EXPECT_EQ(host::sceneTime::current(), 5);
    EXPECT_THAT(errorOf("hostContactSheet -start 1"), HasSubstr("hostContactSheet"));
    window.reset();
    EXPECT_FALSE(sheet.write(file, error));
    EXPECT_THAT(error, HasSubstr("no 3D view"));
}
