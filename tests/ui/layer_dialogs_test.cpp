// The two modal dialogs of layers: what they begin with, what they make and change, and what
// happens to the drawing while they are open.
#include "foundation/Idle.h"
#include "foundation/UndoQueue.h"
#include "ui/InputInjector.h"
#include "ui/ModelPanel.h"
#include "ui/PanelSession.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gmock/gmock.h>

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class LayerDialogs : public PanelSession {
protected:
    static void choose(QDialog& dialog, const char* radio) {
        for (QRadioButton* button : dialog.findChildren<QRadioButton*>()) {
            if (button->text() == line(radio))
                button->setChecked(true);
        }
    }
    static QString chosen(const QDialog& dialog) {
        QStringList names;
        for (const QRadioButton* button : dialog.findChildren<QRadioButton*>()) {
            if (button->isChecked())
                names.append(button->text());
        }
        return names.join(QLatin1Char(' '));
    }
    static void press(QDialog& dialog, const char* button) {
        for (QPushButton* one : dialog.findChildren<QPushButton*>()) {
            if (one->text() == line(button))
                one->click();
        }
    }
    void newLayer(const std::function<void(QDialog&)>& answer) {
        answering("vellum::NewLayerDialog", answer,
                  [&] { EXPECT_TRUE(run(line("rvVellumUtil -newLayer"))); });
        host::idle::drainAll();
    }
    /// Of the active layer.
    void properties(const std::function<void(QDialog&)>& answer) {
        answering("vellum::LayerPropertiesDialog", answer,
                  [&] { EXPECT_TRUE(run(line("rvVellumUtil -layerProperties"))); });
    }
    void makeLayers() {
        ASSERT_TRUE(run(line("rvVellumNode -layer -camera persp -layerName a;"
                             "rvVellumLayer -add -n b persp; rvVellumLayer -add -n c persp;"
                             "rvVellumLayer -e -act 1 persp; rvVellumLayer -ins 0 -n d top")));
    }
    /// "a b c" of persp, then those of top.
    QString names() {
        QStringList all;
        for (const char* camera : {"persp", "top"}) {
            const int count = number(line("rvVellumLayer -count ") + line(camera));
            for (int i = 0; i < count; ++i)
                all.append(
                    text(QStringLiteral("rvVellumLayer -queryName %1 ").arg(i) + line(camera)));
            all.append(line("|"));
        }
        return all.join(QLatin1Char(' '));
    }
};

TEST_F(LayerDialogs, TheFirstLayerComesWithTheDrawing) {
    const QString select = text(line("currentCtx"));
    newLayer([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), line("New Layer"));
        EXPECT_GE(dialog.minimumWidth(), 300);
        auto* name = dialog.findChild<QLineEdit*>();
        EXPECT_EQ(name->text(), line("Layer"));
        EXPECT_EQ(name->selectedText(), line("Layer"));
        EXPECT_EQ(dialog.findChild<QComboBox*>()->currentIndex(), 0);
        EXPECT_EQ(chosen(dialog), line("Anim"));
        name->setText(line("say \"ink\""));
        dialog.findChild<QComboBox*>()->setCurrentText(line("top"));
        choose(dialog, "Static");
        press(dialog, "OK");
    });
    EXPECT_EQ(names(), line("| say \"ink\" |"));
    EXPECT_EQ(number(line("rvVellumLayer -queryState 0 top")), 1);
    EXPECT_NE(text(line("currentCtx")), select) << "the draw tool is not taken";

    ASSERT_TRUE(run(line("setToolTo selectSuperContext")));
    newLayer([&](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(), line("top"));
        dialog.findChild<QLineEdit*>()->clear();
        press(dialog, "OK");
    });
    EXPECT_EQ(names(), line("| say \"ink\" Layer |"));
    EXPECT_NE(text(line("currentCtx")), select);
    newLayer([](QDialog& dialog) { press(dialog, "Cancel"); });
    EXPECT_EQ(number(line("rvVellumLayer -count top")), 2);
    // The drawing goes while the dialog is open: it is made anew.
    newLayer([&](QDialog& dialog) {
        EXPECT_TRUE(run(line("file -f -new")));
        press(dialog, "OK");
    });
    EXPECT_EQ(names(), line("| Layer |"));
    EXPECT_TRUE(viewHasKeyboard());
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(LayerDialogs, ThePropertiesChangeWhatTheUserChanged) {
    makeLayers();
    errors.clear();
    const std::size_t steps = host::undoQueue().undoCount();
    properties([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), line("Layer Properties"));
        EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), line("b"));
        EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(), line("persp"));
        EXPECT_TRUE(dialog.findChild<QCheckBox*>()->isChecked());
        EXPECT_EQ(chosen(dialog), line("Anim"));
        dialog.findChild<QLineEdit*>()->setText(line("B"));
        dialog.findChild<QComboBox*>()->setCurrentText(line("top"));
        dialog.findChild<QCheckBox*>()->setChecked(false);
        choose(dialog, "Locked");
        press(dialog, "OK");
    });
    EXPECT_EQ(names(), line("a c | d B |"));
    EXPECT_EQ(number(line("rvVellumLayer -queryVis 1 top")), 0);
    EXPECT_EQ(number(line("rvVellumLayer -queryState 1 top")), 2);
    while (host::undoQueue().undoCount() > steps)
        ASSERT_TRUE(run(line("undo")));
    EXPECT_EQ(names(), line("a b c | d |"));
    properties([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->clear();
        press(dialog, "OK");
    });
    EXPECT_EQ(names(), line("a b c | d |"));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    // Without a layer that is drawn on there is nothing to show.
    ASSERT_TRUE(run(line("file -f -new")));
    EXPECT_FALSE(run(line("rvVellumUtil -layerProperties")));
}

// What is changed is the layer that the dialog was opened for, or none.
TEST_F(LayerDialogs, TheDrawingMayChangeUnderTheProperties) {
    const struct {
        const char* meanwhile;
        const char* names; ///< after the layer b was called B
    } rows[] = {
        {"rvVellumLayer -move 1 0 persp", "B a c | d |"},
        {"rvVellumLayer -delete 1 persp", "a c | d |"},
        {"rvVellumLayer -newCamera top -move 1 -1 persp", "a c | d B |"},
        {"rename shotCam lens", "| d |"},
        {"delete vellum", "| |"},
        {"file -f -new", "| |"},
        {"file -f -new; rvVellumNode -l -c persp -ln other; rvVellumLayer -add -n more persp",
         "other more | |"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.meanwhile);
        ASSERT_TRUE(run(line("file -f -new")));
        makeLayers();
        if (line(row.meanwhile).contains(line("shotCam"))) {
            ASSERT_TRUE(
                run(line("camera; rename camera1 shotCam; rvVellumLayer -moveAll shotCam persp")));
        }
        errors.clear();
        properties([&](QDialog& dialog) {
            EXPECT_TRUE(run(line(row.meanwhile)));
            dialog.findChild<QLineEdit*>()->setText(line("B"));
            press(dialog, "OK");
        });
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        EXPECT_EQ(names(), line(row.names));
        if (line(row.meanwhile) == line("rename shotCam lens")) {
            EXPECT_EQ(text(line("rvVellumLayer -queryName 1 lens")), line("B"));
        }
    }
}

// A script closes every panel while a dialog of one of them is open.
TEST_F(LayerDialogs, ThePanelMayGoUnderItsDialog) {
    makeLayers();
    QDialog* panel = open("-lm", "LayerManagerDialog");
    ASSERT_TRUE(panel);
    for (QWidget* button : panel->findChildren<QWidget*>()) {
        if (button->toolTip() != line("New Layer"))
            continue;
        answering(
            "vellum::NewLayerDialog",
            [&](QDialog& dialog) {
                EXPECT_EQ(dialog.parentWidget(), panel);
                delete panel;
            },
            [&] { click(*button); });
        break;
    }
    EXPECT_EQ(LayerDialogs::panel("LayerManagerDialog"), nullptr);
    EXPECT_EQ(names(), line("a b c | d |"));
}

TEST_F(LayerDialogs, APressInTheViewAsksForTheFirstLayer) {
    ASSERT_TRUE(run(line("rvVellumNode; file -f -new")));
    const QString preferences = text(line("internalVar -userPrefDir")) + line("vellum2.ini");
    unloadPlugin();
    {
        QFile file(preferences);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Append));
        file.write("\n[preferences]\nalwaysDisplayNewLayerDialog=true\n");
    }
    loadPlugin();
    ASSERT_TRUE(run(line("rvVellumNode; rvVellumUtil -pencilTool")));
    answering(
        "vellum::NewLayerDialog",
        [&](QDialog& dialog) {
            EXPECT_TRUE(support::waitFor([&] { return dialog.isActiveWindow(); }));
            // The view does not see it: the dialog is modal.
            host::InputInjector::create()->release(Qt::LeftButton);
            hand.type({Qt::Key_I});
            hand.type({Qt::Key_Return});
        },
        [&] {
            hand.moveTo(view(), {200, 200});
            hand.press();
            EXPECT_TRUE(support::waitFor([] { return !QApplication::activeModalWidget(); }));
        });
    host::idle::drainAll();
    EXPECT_EQ(number(line("rvVellumLayer -count persp")), 1);
    EXPECT_TRUE(viewHasKeyboard());
    // Nothing of the press is left: moving draws nothing, pressing does.
    const std::size_t steps = host::undoQueue().undoCount();
    for (int x = 200; x < 300; x += 10)
        hand.moveTo(view(), QPointF(x, 200));
    support::settle();
    EXPECT_EQ(host::undoQueue().undoCount(), steps);
    hand.moveTo(view(), {200, 250});
    hand.press();
    for (int x = 200; x < 300; x += 10)
        hand.moveTo(view(), QPointF(x, 250));
    hand.release();
    EXPECT_TRUE(support::waitFor([&] { return host::undoQueue().undoCount() == steps + 1; }));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace
} // namespace vellum::test
