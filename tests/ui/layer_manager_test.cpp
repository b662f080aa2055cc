// The layer manager of the loaded plug-in: what its clicks do to the drawing, and what changes of
// the drawing do to it.
#include "foundation/Idle.h"
#include "foundation/UndoQueue.h"
#include "ui/MainWindow.h"
#include "ui/PanelSession.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <gmock/gmock.h>

namespace vellum::test {
namespace {

using testing::ElementsAre;

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class LayerPanel : public PanelSession {
protected:
    void SetUp() override {
        PanelSession::SetUp();
        ASSERT_TRUE(run(line("camera; rename camera1 shotCam; select -cl;"
                             "rvVellumNode -layer -camera persp -layerName a;"
                             "rvVellumLayer -add -n b persp; rvVellumLayer -add -n c persp;"
                             "rvVellumLayer -ins -1 -n d top;"
                             "rvVellumLayer -e -act 1 persp")));
        dialog = open("-lm", "LayerManagerDialog");
        ASSERT_TRUE(dialog);
        dialog->setGeometry(400, 60, 260, 300);
        support::settle();
        errors.clear();
    }

    QList<QWidget*> all(const char* className) {
        QList<QWidget*> found;
        const QByteArray wanted = QByteArray("vellum::") + className;
        for (QWidget* widget : dialog->findChildren<QWidget*>()) {
            if (widget->metaObject()->className() == wanted && widget->isVisibleTo(dialog))
                found.append(widget);
        }
        std::sort(found.begin(), found.end(), [this](const QWidget* a, const QWidget* b) {
            return a->mapTo(dialog, QPoint()).y() < b->mapTo(dialog, QPoint()).y();
        });
        return found;
    }
    static QString nameIn(const QWidget& row) { return row.findChild<QLabel*>()->text(); }
    QWidget* row(const char* name) {
        for (QWidget* one : all("LayerItem")) {
            if (nameIn(*one) == line(name))
                return one;
        }
        ADD_FAILURE() << "no row " << name;
        return nullptr;
    }

    /// From the top: "<b>persp</b> c: b:V* a:VS", a star behind the row that is drawn on.
    std::string shown() {
        support::settle();
        QStringList text;
        for (QWidget* list : all("CameraLayerList")) {
            text.append(list->findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly)->text());
            for (QWidget* one : all("LayerItem")) {
                if (one->parentWidget() != list)
                    continue;
                QString row = nameIn(*one) + QLatin1Char(':');
                for (const QPushButton* button : one->findChildren<QPushButton*>())
                    row += button->text();
                const QColor drawnOn = window->palette().color(QPalette::Highlight);
                text.append(one->palette().color(QPalette::Window) == drawnOn
                                ? row + QLatin1Char('*')
                                : row);
            }
        }
        return text.join(QLatin1Char(' ')).toStdString();
    }
    QPushButton* button(const char* name, int column) {
        QWidget* at = row(name);
        return at ? at->findChildren<QPushButton*>().value(column) : nullptr;
    }
    QWidget* control(const char* toolTip) {
        for (QWidget* one : all("FlatButton")) {
            if (one->toolTip() == line(toolTip))
                return one;
        }
        ADD_FAILURE() << "no button " << toolTip;
        return nullptr;
    }
    void doubleClick(const QWidget& widget) {
        click(widget);
        click(widget);
    }

    QMenu* menuOf(const QWidget& widget) {
        support::settle(); // rows find their places
        // Never so near to the last place that it is a double click.
        hand.moveTo(widget, QPointF(60 + ++menus_ % 2 * 20, 5) * widget.devicePixelRatioF());
        hand.press(Qt::RightButton);
        hand.release(Qt::RightButton);
        EXPECT_TRUE(support::waitFor([] { return QApplication::activePopupWidget(); }));
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    static std::vector<std::string> entries(const QMenu& menu) {
        std::vector<std::string> texts;
        for (const QAction* action : menu.actions())
            texts.push_back(action->text().toStdString());
        return texts;
    }

    QDialog* dialog = nullptr;

private:
    int menus_ = 0;
};

TEST_F(LayerPanel, ClicksDoWhatTheirCommandsDo) {
    EXPECT_EQ(dialog->windowTitle(), line("Layer Manager"));
    EXPECT_EQ(shown(), "<b>persp</b> c:V b:V* a:V <b>top</b> d:V");
    const std::size_t steps = host::undoQueue().undoCount();
    click(*button("c", 0));
    click(*button("a", 1));
    click(*button("b", 1));
    click(*button("b", 1));
    EXPECT_EQ(shown(), "<b>persp</b> c: b:VL* a:VS <b>top</b> d:V");
    EXPECT_EQ(number(line("rvVellumLayer -queryVis 2 persp")), 0);
    EXPECT_EQ(number(line("rvVellumLayer -queryState 0 persp")), 1);
    EXPECT_EQ(number(line("rvVellumLayer -queryState 1 persp")), 2);
    click(*button("b", 1));
    click(*button("c", 0));
    click(*button("a", 1));
    click(*button("a", 1));
    click(*control("Move Up")); // towards the bottom of the stack
    EXPECT_EQ(shown(), "<b>persp</b> c:V a:V b:V* <b>top</b> d:V");
    click(*control("Move Up")); // is there already
    click(*control("Move Down"));
    click(*control("Move Down"));
    click(*control("Move Down"));
    EXPECT_EQ(shown(), "<b>persp</b> b:V* c:V a:V <b>top</b> d:V");
    EXPECT_EQ(host::undoQueue().undoCount(), steps + 11) << "each is a step, if it did anything";
    click(*control("Delete Layer"));
    EXPECT_EQ(shown(), "<b>persp</b> c:V* a:V <b>top</b> d:V");
    EXPECT_TRUE(viewHasKeyboard());
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(support::waitFor([&] {
        return shown() == "<b>persp</b> b:V* c:V a:V <b>top</b> d:V";
    })) << shown();
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(LayerPanel, AClickOnARowDrawsOnItsLayer) {
    ASSERT_TRUE(run(line("setToolTo selectSuperContext")));
    const QString before = text(line("currentCtx"));
    QWidget* const clicked = row("a");
    click(*clicked);
    EXPECT_EQ(shown(), "<b>persp</b> c:V b:V a:V* <b>top</b> d:V");
    EXPECT_EQ(row("a"), clicked) << "the row is another one after its own click";
    host::idle::drain();
    EXPECT_NE(text(line("currentCtx")), before) << "the draw tool is not taken";

    // On the same again only the tool is taken.
    ASSERT_TRUE(run(line("setToolTo selectSuperContext")));
    const std::size_t steps = host::undoQueue().undoCount();
    hand.click(*clicked, {60, 5}); // too far away for a double click
    host::idle::drain();
    EXPECT_NE(text(line("currentCtx")), before);
    EXPECT_EQ(host::undoQueue().undoCount(), steps);

    click(*row("d"));
    EXPECT_EQ(shown(), "<b>persp</b> c:V b:V a:V <b>top</b> d:V*");
    EXPECT_TRUE(viewHasKeyboard());
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();

    // Layers of a camera that is not looked at: nothing of it is drawn on.
    ASSERT_TRUE(run(line("lookThroughModelPanel shotCam `getPanel -withFocus`; rvVellumNode -r")));
    EXPECT_EQ(shown(), "<b>persp</b> c:V b:V a:V <b>top</b> d:V");
    const std::size_t before2 = host::undoQueue().undoCount();
    for (const char* name : {"Delete Layer", "Move Up", "Move Down"})
        click(*control(name));
    EXPECT_EQ(host::undoQueue().undoCount(), before2);
}

TEST_F(LayerPanel, ADoubleClickOpensThePropertiesWithoutAnError) {
    answering(
        "vellum::LayerPropertiesDialog",
        [&](QDialog& properties) {
            EXPECT_EQ(properties.parentWidget(), dialog);
            EXPECT_EQ(properties.findChild<QLineEdit*>()->text(), line("a"));
            // The row goes while its double click is hardly over.
            EXPECT_TRUE(run(line("rvVellumLayer -delete 0 persp")));
            properties.reject();
        },
        [&] {
            doubleClick(*row("a"));
            support::settle();
        });
    EXPECT_EQ(shown(), "<b>persp</b> c:V b:V* <b>top</b> d:V");
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(LayerPanel, RowsStayWhileOthersComeAndGo) {
    const QPointer<QWidget> a = row("a");
    const QPointer<QWidget> b = row("b");
    const QPointer<QWidget> c = row("c");
    ASSERT_TRUE(run(line("rvVellumLayer -move 2 0 persp; rvVellumLayer -delete 1 persp;"
                         "rvVellumLayer -en x 1 persp; rvVellumLayer -add -n new persp")));
    EXPECT_EQ(shown(), "<b>persp</b> new:V* x:V c:V <b>top</b> d:V");
    EXPECT_EQ(row("x"), b);
    EXPECT_EQ(row("c"), c);
    EXPECT_TRUE(support::waitFor([&] { return a.isNull(); }));

    // What is looked at stays where it is, whatever happens above.
    for (int i = 0; i < 40; ++i)
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -ins -1 -n n%1 persp").arg(i)));
    support::settle();
    auto* area = dialog->findChild<QScrollArea*>();
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum() / 2);
    support::settle();
    QWidget* watched = row("n20");
    const auto place = [&] {
        support::settle();
        return watched->mapTo(area->viewport(), QPoint()).y();
    };
    hand.moveTo(*watched, {30, 5});
    const int y = place();
    ASSERT_TRUE(area->viewport()->rect().contains(5, y));
    ASSERT_TRUE(run(line("rvVellumLayer -ins -1 -n above persp")));
    EXPECT_EQ(place(), y);
    ASSERT_TRUE(run(line("rvVellumLayer -delete 41 persp; rvVellumLayer -delete 40 persp")));
    EXPECT_EQ(place(), y);
    ASSERT_TRUE(run(line("rvVellumLayer -ins 0 -n below persp")));
    EXPECT_EQ(place(), y);
    ASSERT_TRUE(run(line("undo")));
    EXPECT_EQ(place(), y);
}

TEST_F(LayerPanel, MenusOfferTheOtherCameras) {
    QMenu* menu = menuOf(*row("b"));
    ASSERT_TRUE(menu);
    EXPECT_THAT(entries(*menu), ElementsAre("b...", "", "Move layer to         "));
    QMenu* list = menu->actions().last()->menu();
    std::vector<std::string> others = entries(*list);
    EXPECT_EQ(std::count(others.begin(), others.end(), "persp"), 0);
    ASSERT_EQ(std::count(others.begin(), others.end(), "shotCam"), 1);
    // The row may have changed its place by the time an entry is chosen.
    ASSERT_TRUE(run(line("rvVellumLayer -move 1 2 persp")));
    const auto shotCam = std::find(others.begin(), others.end(), "shotCam") - others.begin();
    list->actions()[static_cast<int>(shotCam)]->trigger();
    menu->close();
    EXPECT_EQ(shown(), "<b>persp</b> c:V* a:V <b>shotCam</b> b:V <b>top</b> d:V");

    QWidget* header =
        all("CameraLayerList")[0]->findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    menu = menuOf(*header);
    ASSERT_TRUE(menu);
    EXPECT_THAT(entries(*menu), ElementsAre("Move all layers to         "));
    list = menu->actions().last()->menu();
    others = entries(*list);
    const auto top = std::find(others.begin(), others.end(), "top") - others.begin();
    list->actions()[static_cast<int>(top)]->trigger();
    menu->close();
    EXPECT_EQ(text(line("rvVellumLayer -queryName 1 top")), line("a"));

    // With its layer the menu goes.
    QPointer<QMenu> open = menuOf(*row("c"));
    ASSERT_TRUE(run(line("rvVellumLayer -deleteAll top")));
    EXPECT_TRUE(support::waitFor([&] { return open.isNull(); }));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(LayerPanel, FollowsTheScene) {
    ASSERT_TRUE(run(line("rvVellumLayer -ins -1 -n e shotCam; rename shotCam lens")));
    EXPECT_EQ(shown(), "<b>lens</b> e:V <b>persp</b> c:V b:V* a:V <b>top</b> d:V");
    QWidget* header =
        all("CameraLayerList")[0]->findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_TRUE(header->isEnabled());
    ASSERT_TRUE(run(line("select -cl; delete lens")));
    EXPECT_TRUE(support::waitFor([&] { return !header->isEnabled(); }));
    ASSERT_TRUE(run(line("undo")));
    EXPECT_TRUE(support::waitFor([&] { return header->isEnabled(); }));

    // Not selected, so nothing else tells of it.
    ASSERT_TRUE(run(line("delete vellum")));
    EXPECT_TRUE(support::waitFor([&] { return shown().empty(); })) << shown();
    for (const char* name : {"Delete Layer", "Move Up", "Move Down"})
        click(*control(name));
    ASSERT_TRUE(run(line("undo")));
    EXPECT_EQ(shown(), "<b>lens</b> e:V <b>persp</b> c:V b:V* a:V <b>top</b> d:V");
    ASSERT_TRUE(run(line("file -f -new")));
    EXPECT_EQ(shown(), "");
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();

    // A panel that was closed is up to date when it is shown again.
    dialog->close();
    ASSERT_TRUE(run(line("rvVellumNode -layer -camera persp -layerName z")));
    ASSERT_EQ(open("-lm", "LayerManagerDialog"), dialog);
    EXPECT_EQ(shown(), "<b>persp</b> z:V*");
}

TEST_F(LayerPanel, NamesMayBeAnything) {
    const int width = dialog->width();
    const QString names[] = {QStringLiteral("say \"no\""), QStringLiteral("two\nlines\tand a tab"),
                             QStringLiteral("ink & <b>bold</b>"), QString(10000, QLatin1Char('w')),
                             QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d & <i>")};
    int index = 3;
    for (const QString& name : names) {
        QString quoted = name;
        quoted.replace(line("\""), line("\\\"")).replace(line("\n"), line("\\n"));
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -add -n \"%1\" persp").arg(quoted)));
        SCOPED_TRACE(index);
        support::settle();
        QWidget* top = all("LayerItem")[0];
        EXPECT_EQ(text(QStringLiteral("rvVellumLayer -queryName %1 persp").arg(index++)),
                  nameIn(*top));
        EXPECT_EQ(top->findChild<QLabel*>()->textFormat(), Qt::PlainText);
        EXPECT_LE(top->width(), width);
        QMenu* menu = menuOf(*top);
        ASSERT_TRUE(menu);
        EXPECT_LT(menu->width(), 800);
        const QString entry = menu->actions()[0]->text();
        EXPECT_FALSE(entry.contains(QLatin1Char('\n')) || entry.contains(QLatin1Char('\t')));
        EXPECT_EQ(entry.count(QLatin1Char('&')), 2 * name.count(QLatin1Char('&')));
        menu->close();
        answering(
            "vellum::LayerPropertiesDialog",
            [&](QDialog& properties) {
                EXPECT_LT(properties.width(), 500);
                properties.findChild<QPushButton*>()->click();
            },
            [&] { QMetaObject::invokeMethod(top, "ShowLayerPropertiesDialog"); });
    }
    EXPECT_EQ(dialog->width(), width);
    EXPECT_FALSE(all("LayerItem")[1]->findChild<QLabel*>()->toolTip().isEmpty());
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace
} // namespace vellum::test
