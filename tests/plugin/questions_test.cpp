// Questions the script commands ask the user, answered as a user would.
#include "support/Session.h"
#include "ui/MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

namespace vellum::test {
namespace {

class Questions : public Session {
protected:
    /// Runs the line and answers the dialog it opens; how many opened.
    int answered(const QString& line, const std::function<void(QDialog&)>& answer,
                 bool succeeds = true) {
        int seen = 0;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            ++seen;
            EXPECT_EQ(dialog->parentWidget(), window.get());
            answer(*dialog);
            if (dialog->isVisible())
                dialog->reject(); // an answer that did nothing
        });
        look.start(1);
        errors.clear();
        EXPECT_EQ(run(line), succeeds) << line.toStdString();
        EXPECT_EQ(errors.isEmpty(), succeeds) << allErrors().toStdString();
        return seen;
    }

    int layersOf(const char* camera) {
        return number(QStringLiteral("rvVellumLayer -count ") + QLatin1String(camera));
    }
};

TEST_F(Questions, WhichCameraToMoveLayersFrom) {
    const QString ask = QStringLiteral("rvVellumUtil -fvm \"\"");
    ASSERT_TRUE(run(QStringLiteral("camera; rename camera1 shotCam")));
    EXPECT_EQ(answered(ask, [](QDialog&) {}), 0) << "no drawing: there is nothing to ask";
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow;"
                                   "rvVellumNode -layer -camera shotCam; "
                                   "rvVellumLayer -add persp; rvVellumLayer -e -act 0 shotCam")));
    QStringList offered;
    const auto cancel = [&](QDialog& dialog) {
        auto* question = qobject_cast<QInputDialog*>(&dialog);
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Move Layers to View"));
        EXPECT_EQ(question->labelText(),
                  QStringLiteral("Select camera to move layers from:                 "));
        EXPECT_EQ(dialog.windowType(), Qt::Tool);
        EXPECT_FALSE(question->isComboBoxEditable());
        EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(), QStringLiteral("shotCam"));
        offered = question->comboBoxItems();
        dialog.reject();
    };
    EXPECT_EQ(answered(ask, cancel), 1);
    offered.sort();
    EXPECT_EQ(offered.join(QLatin1Char(' ')), QStringLiteral("front persp shotCam side top"))
        << "not the view's own";
    EXPECT_EQ(number(QStringLiteral("window -exists rvVlFloatingWindow")), 0);
    EXPECT_EQ(layersOf("shotCam"), 1);

    const auto choose = [](const char* camera) {
        return [camera](QDialog& dialog) {
            dialog.findChild<QComboBox*>()->setCurrentText(QLatin1String(camera));
            dialog.accept();
        };
    };
    EXPECT_EQ(answered(ask, choose("persp")), 1);
    EXPECT_EQ(number(QStringLiteral("window -q -visible rvVlFloatingWindow")), 1);
    EXPECT_EQ(layersOf("persp"), 0);
    EXPECT_EQ(layersOf("vellumCam"), 1);

    // The drawing's camera is in the scene no more: nothing is preselected, and none is an answer.
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow;"
                                   "rvVellumLayer -e -act 0 shotCam; delete shotCam")));
    EXPECT_EQ(answered(ask,
                       [](QDialog& dialog) {
                           EXPECT_EQ(dialog.findChild<QComboBox*>()->currentIndex(), -1);
                           dialog.accept();
                       }),
              1);
    EXPECT_EQ(number(QStringLiteral("window -exists rvVlFloatingWindow")), 0);
    EXPECT_EQ(layersOf("vellumCam"), 1);
}

TEST_F(Questions, WhetherToResetTheInterface) {
    const QString geometry = QStringLiteral("toolboxGeometry");
    for (const bool yes : {false, true}) {
        SCOPED_TRACE(yes ? "answered yes" : "answered no");
        const auto answer = [yes](QDialog& dialog) {
            auto* question = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(question, nullptr);
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Reset UI"));
            EXPECT_EQ(question->text(), QStringLiteral("Reset user interface elements?"));
            EXPECT_EQ(question->icon(), QMessageBox::Question);
            EXPECT_EQ(question->standardButtons(), QMessageBox::Yes | QMessageBox::No);
            question->button(yes ? QMessageBox::Yes : QMessageBox::No)->click();
        };
        EXPECT_EQ(answered(QStringLiteral("rvVellumUtil -resetUI"), answer), 1);
    }
    // Closing the box is no answer.
    EXPECT_EQ(answered(QStringLiteral("rvVellumUtil -rui"), [](QDialog& box) { box.reject(); }), 1);
}

TEST_F(Questions, WhetherToSaveOverAFileNotReadWhole) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("shot.ma"));
    const auto content = [&path] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    // In the coarser unit both drawings have the number 1.
    ASSERT_TRUE(
        run(QStringLiteral("currentUnit -time film; rvVellumNode -layer -camera persp;"
                           "currentTime 2; rvVellumFrame -insert persp; currentTime 3;"
                           "rvVellumFrame -insert persp; currentUnit -time \"12fps\";"
                           "file -rename \"%1\"; file -type mayaAscii -save; file -f -o \"%1\"")
                .arg(path)));
    const QByteArray before = content();
    ASSERT_FALSE(before.isEmpty());
    const QString save = QStringLiteral("file -save");
    for (const bool yes : {false, true}) {
        SCOPED_TRACE(yes ? "answered yes" : "answered no");
        const auto answer = [yes](QDialog& dialog) {
            auto* question = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(question, nullptr);
            EXPECT_TRUE(question->text().contains(QStringLiteral("1 (Layer at 1)")))
                << question->text().toStdString();
            EXPECT_EQ(question->defaultButton(), question->button(QMessageBox::No));
            question->button(yes ? QMessageBox::Yes : QMessageBox::No)->click();
        };
        EXPECT_EQ(answered(save, answer, yes), 1);
        EXPECT_EQ(content() == before, !yes);
    }
    EXPECT_EQ(answered(save, [](QDialog&) {}), 0) << "who has said yes is not asked again";
}

} // namespace
} // namespace vellum::test
