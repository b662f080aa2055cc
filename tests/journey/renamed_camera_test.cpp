// A camera that gets another name while something is under way in its view.
#include "journey/Desk.h"
#include "ui/ViewWidget.h"

namespace vellum::test {
namespace {

class RenamedCamera : public Desk {};

TEST_F(RenamedCamera, UndoOfTheFirstStrokeTakesItsLayerToo) {
    const QImage blank = picture();
    take("pencil");
    drag({{150, 100}, {250, 120}, {350, 150}});
    ASSERT_TRUE(run(QStringLiteral("rename shotCam hero")));
    hand.release();
    const QImage drawn = picture();
    EXPECT_TRUE(differAt(drawn, blank, {250, 120}));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count hero")), 1);
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(blank));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count hero")), 0);
    hand.type({Qt::Key_Shift, Qt::Key_Z});
    EXPECT_TRUE(shows(drawn));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(RenamedCamera, ATransformIsAppliedAllTheSame) {
    const QPoint before(200, 110);
    const QPoint offset(60, 120);
    take("pencil");
    stroke({{150, 100}, before, {250, 120}});
    const QImage drawn = picture();
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -transform")));
    stroke({{120, 70}, {200, 120}, {290, 160}});
    hand.type({Qt::Key_Return});
    stroke({before, before + offset / 2, before + offset});
    ASSERT_TRUE(run(QStringLiteral("rename shotCam hero")));
    hand.type({Qt::Key_Return});
    const QImage moved = picture();
    EXPECT_TRUE(differAt(moved, drawn, before));
    EXPECT_TRUE(differAt(moved, drawn, before + offset));
    save(file("moved.ma"));
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(drawn)) << "it was a step";
    open(file("moved.ma"));
    lookThrough("hero");
    EXPECT_TRUE(shows(moved)) << "what was seen is what was saved";
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace
} // namespace vellum::test
