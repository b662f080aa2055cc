// What holds for every floating panel: the keyboard stays with the view, the place is kept, and no
// dialog that is open loses its code.
#include "ui/MainWindow.h"
#include "ui/PanelSession.h"
#include "ui/ViewWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QLabel>
#include <QMessageBox>
#include <QTest>

#include <gmock/gmock.h>

namespace vellum::test {
namespace {

using testing::Contains;

const char* const kPalette[] = {"-cp", "ColorPaletteDialog"};

class Panels : public PanelSession {
protected:
    QDialog* palette() { return open(kPalette[0], kPalette[1]); }

    /// Swatches from the upper left, row by row.
    static QList<QLabel*> swatches(QDialog& palette) {
        QList<QLabel*> all;
        for (QLabel* label : palette.findChildren<QLabel*>()) {
            if (QByteArray(label->metaObject()->className()) == "vellum::FlatButton")
                all.append(label);
        }
        std::sort(all.begin(), all.end(), [](const QLabel* a, const QLabel* b) {
            return std::pair(a->y(), a->x()) < std::pair(b->y(), b->x());
        });
        return all;
    }

    QString drawColor() {
        QString all;
        for (int i = 0; i < 3; ++i)
            all += QStringLiteral("%1 ").arg(number(
                QStringLiteral("int $vlC[] = `rvVellumUtil -q -drawColor`; int($vlI = $vlC[%1])")
                    .arg(i)));
        return all.trimmed();
    }
};

TEST_F(Panels, SwatchesOfThePaletteStandInColumns) {
    for (int i = 0; i < 16; ++i)
        QColorDialog::setCustomColor(i, QColor(10 * i, 3, 255 - i));
    QDialog* dialog = palette();
    ASSERT_TRUE(dialog);
    const auto all = swatches(*dialog);
    ASSERT_EQ(all.size(), 16);
    for (int place = 0; place < 16; ++place) {
        const int custom = 2 * (place % 8) + place / 8;
        SCOPED_TRACE(custom);
        echoes.clear();
        click(*all[place]);
        EXPECT_EQ(drawColor(), QStringLiteral("%1 3 %2").arg(10 * custom).arg(255 - custom));
        EXPECT_THAT(echoes, Contains(QStringLiteral("rvVellumUtil -e -drawColor %1 3 %2")
                                         .arg(10 * custom)
                                         .arg(255 - custom)));
    }
    // A press that is let go elsewhere asks for nothing.
    echoes.clear();
    hand.moveTo(*all[0], {5, 5});
    hand.press();
    hand.moveTo(*all[3], {5, 5});
    hand.release();
    EXPECT_TRUE(echoes.isEmpty()) << echoes.join('|').toStdString();
}

TEST_F(Panels, CustomizingBringsTheSwatchesUpToDateAndLeavesTheDrawingColor) {
    QColorDialog::setCustomColor(1, Qt::white);
    QDialog* dialog = palette();
    ASSERT_TRUE(dialog);
    const QString before = drawColor();
    answering(
        "QColorDialog",
        [](QDialog& chooser) {
            EXPECT_EQ(chooser.windowTitle(), QStringLiteral("Customize Palette Colors"));
            QColorDialog::setCustomColor(1, QColor(1, 2, 3));
            chooser.reject();
        },
        [&] { QMetaObject::invokeMethod(dialog, "CustomizeColors"); });
    EXPECT_EQ(drawColor(), before);
    EXPECT_TRUE(viewHasKeyboard());
    click(*swatches(*dialog)[8]); // second row, first column
    EXPECT_EQ(drawColor(), QStringLiteral("1 2 3"));
}

TEST_F(Panels, KeysGoOnReachingTheView) {
    ASSERT_TRUE(
        run(QStringLiteral("rvVellumUtil -pencilTool; rvVellumUtil -pencilOptions 10 100 0")));
    QDialog* dialog = palette();
    ASSERT_TRUE(dialog);
    dialog->move(400, 300);
    support::settle();
    EXPECT_TRUE(viewHasKeyboard()) << "after opening";
    click(*swatches(*dialog)[2]);
    EXPECT_TRUE(viewHasKeyboard()) << "after a click";

    // Held B and a drag change the size; no stroke is drawn.
    hand.moveTo(view(), {200, 200});
    hand.key(Qt::Key_B, true);
    hand.press();
    for (int x = 205; x <= 260; x += 5)
        hand.moveTo(view(), QPointF(x, 200));
    hand.release();
    hand.key(Qt::Key_B, false);
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 0)
        << "B and a drag drew a stroke";

    click(*swatches(*dialog)[3]);
    ASSERT_TRUE(run(QStringLiteral("polyCube -name thing")));
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(support::waitFor([&] { return number(QStringLiteral("objExists thing")) == 0; }))
        << "Ctrl+Z after a click on a swatch";
    hand.type({Qt::Key_Escape});
    EXPECT_TRUE(dialog->isVisible());
}

// Also where the script line had the keyboard before.
TEST_F(Panels, TheViewNotTheScriptLineGetsTheKeyboard) {
    QDialog* dialog = palette();
    ASSERT_TRUE(dialog);
    dialog->move(400, 300);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (QByteArray(widget->metaObject()->className()).contains("ScriptLine"))
            widget->setFocus();
    }
    support::settle();
    ASSERT_NE(QApplication::focusWidget(), &view());
    click(*swatches(*dialog)[0]);
    EXPECT_TRUE(viewHasKeyboard());
}

TEST_F(Panels, ThePlaceIsKeptHoweverThePanelGoes) {
    const struct {
        const char* how;
        std::function<void(QDialog&)> go;
    } ways[] = {
        {"closed", [](QDialog& dialog) { dialog.close(); }},
        {"hidden", [](QDialog& dialog) { dialog.hide(); }},
        {"rejected", [](QDialog& dialog) { dialog.reject(); }},
        {"unloaded while open",
         [this](QDialog&) {
             unloadPlugin();
             EXPECT_FALSE(panel(kPalette[1]));
             loadPlugin();
         }},
        {"unloaded after closing",
         [this](QDialog& dialog) {
             dialog.close();
             unloadPlugin();
             loadPlugin();
         }},
    };
    QPoint place(150, 120);
    for (const auto& way : ways) {
        SCOPED_TRACE(way.how);
        QDialog* dialog = palette();
        ASSERT_TRUE(dialog);
        place += QPoint(20, 10);
        dialog->move(place);
        support::settle();
        way.go(*dialog);
        dialog = palette();
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->pos(), place);
    }
    // A second request brings it to the front, and makes no second one.
    QDialog* dialog = panel(kPalette[1]);
    EXPECT_EQ(palette(), dialog);
    // The reset forgets it all.
    answering(
        "QMessageBox",
        [](QDialog& question) {
            static_cast<QMessageBox&>(question).button(QMessageBox::Yes)->click();
        },
        [&] { EXPECT_TRUE(run(QStringLiteral("rvVellumUtil -resetUI"))); });
    EXPECT_FALSE(panel(kPalette[1]));
    dialog = palette();
    ASSERT_TRUE(dialog);
    EXPECT_NE(dialog->pos(), place);
}

TEST_F(Panels, UnloadingIsRefusedWhileADialogIsOpen) {
    bool tried = false;
    answering(
        "QMessageBox",
        [&](QDialog& question) {
            tried = true;
            errors.clear();
            EXPECT_FALSE(run(QStringLiteral("unloadPlugin vellum2")));
            EXPECT_FALSE(errors.isEmpty()) << "refused without a word";
            EXPECT_EQ(number(QStringLiteral("pluginInfo -q -loaded vellum2")), 1);
            question.reject();
        },
        [&] { EXPECT_TRUE(run(QStringLiteral("rvVellumUtil -resetUI"))); });
    EXPECT_TRUE(tried);
    EXPECT_EQ(number(QStringLiteral("exists rvVellumUtil")), 1) << "all of it is still there";
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -brushTool; rvVellumUtil -cp")));
}

TEST_F(Panels, ANewSceneAndAnOpenPanelGetOnWithEachOther) {
    QDialog* dialog = palette();
    ASSERT_TRUE(dialog);
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp; file -f -new")));
    EXPECT_TRUE(dialog->isVisible());
    click(*swatches(*dialog)[0]);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace
} // namespace vellum::test
