// The toolbox's colour control and the drawing colour follow each other.
#include "ui/ToolboxSession.h"

#include <QApplication>
#include <QColorDialog>
#include <QFrame>

namespace vellum::test {
namespace {

TEST_F(Toolbox, ColorsReadBackAreThoseThatWereSet) {
    for (int value = 0; value < 256; ++value) {
        const QString set =
            QStringLiteral("%1 %2 %3").arg(value).arg(255 - value).arg(value * 7 % 256);
        ASSERT_TRUE(
            run(QStringLiteral("rvVellumUtil -e -drawColor %1; rvVellumUtil -rtb").arg(set)));
        ASSERT_EQ(color(), set);
    }
}

TEST_F(Toolbox, ChoosingAColorChangesItAtOnceAndCancellingRestoresIt) {
    auto* swatch = box->findChild<QFrame*>(QStringLiteral("port"));
    ASSERT_TRUE(swatch);
    const auto chooser = [this] {
        QColorDialog* found = nullptr;
        support::waitFor([&] {
            found = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
            return found != nullptr;
        });
        return found;
    };
    for (const bool accept : {false, true}) {
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -drawColor 64 100 15")));
        click(*swatch);
        QColorDialog* dialog = chooser();
        ASSERT_TRUE(dialog);
        dialog->setCurrentColor(QColor(1, 2, 3));
        EXPECT_EQ(color(), QStringLiteral("1 2 3")) << "while it is chosen";
        dialog->setCurrentColor(QColor(200, 2, 127));
        accept ? dialog->accept() : dialog->reject();
        support::settle();
        EXPECT_EQ(color(), accept ? QStringLiteral("200 2 127") : QStringLiteral("64 100 15"));
        EXPECT_TRUE(viewHasKeyboard());
    }
}

TEST_F(Toolbox, GoesAndComesBackWithItsPicker) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(number(QStringLiteral("control -exists rvVlToolboxColorPickerBtn")), 1);
        reload("toolboxDrawToolContextMenu", true);
        EXPECT_EQ(box->pos(), QPoint(500, 60));
    }
}

} // namespace
} // namespace vellum::test
