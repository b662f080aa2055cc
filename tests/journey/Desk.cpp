#include "journey/Desk.h"

#include "support/Paths.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/TimeSlider.h"
#include "ui/ViewWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTest>
#include <QTimer>

namespace vellum::test {

void Desk::SetUp() {
    Session::SetUp();
    ASSERT_TRUE(hand.isReal()) << "these tests need an X server with XTEST";
    window->move(0, 0);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    ASSERT_TRUE(
        run(QStringLiteral("source \"%1\"").arg(support::sourcePath("resources/demo/shot.mel"))));
    errors.clear();
}

host::ViewWidget& Desk::view() {
    return window->mainPanel().viewWidget();
}

void Desk::take(const char* tool) {
    const QString options = QLatin1String(tool) == QLatin1String("pencil")
                                ? QStringLiteral("12 100 0")
                                : QStringLiteral("24 100 80 0");
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -%1Tool; rvVellumUtil -%1Options %2;"
                                   "rvVellumUtil -e -drawColor 255 40 200")
                        .arg(QLatin1String(tool), options)));
}

void Desk::drag(const std::vector<QPoint>& places) {
    bool down = false;
    for (const QPoint place : places) {
        const QImage before = onScreen();
        hand.moveTo(view(), place);
        if (!down)
            hand.press();
        down = true;
        // A hand is never quite still, and the view is drawn anew at each event of the pointer.
        int tremble = 0;
        ASSERT_TRUE(support::waitFor([&] {
            hand.moveTo(view(), place + QPoint(++tremble % 2, 0));
            return onScreen() != before;
        })) << "the stroke does not follow to "
            << place.x() << ", " << place.y();
    }
}

void Desk::stroke(const std::vector<QPoint>& places) {
    drag(places);
    hand.release();
}

void Desk::scrub(int frame) {
    host::TimeSlider& slider = window->timeSlider();
    hand.click(slider, {slider.xOf(frame + 0.5) * slider.devicePixelRatioF(), 5});
    ASSERT_EQ(now(), frame);
}

void Desk::chooseFromMenu(const QString& menu, const QString& entryStart) {
    QMenuBar& bar = *window->menuBar();
    for (QAction* title : bar.actions()) {
        if (title->text() != menu)
            continue;
        hand.click(bar, bar.actionGeometry(title).center());
        QMenu* list = title->menu();
        ASSERT_TRUE(support::waitFor([&] { return list->isVisible(); })) << menu.toStdString();
        for (QAction* entry : list->actions()) {
            if (!entry->text().startsWith(entryStart))
                continue;
            hand.click(*list, list->actionGeometry(entry).center());
            ASSERT_TRUE(support::waitFor([&] { return !list->isVisible(); }))
                << entryStart.toStdString() << " was clicked";
            return;
        }
        FAIL() << "no entry " << entryStart.toStdString();
    }
    FAIL() << "no menu " << menu.toStdString();
}

void Desk::lookThrough(const char* camera) {
    ASSERT_TRUE(run(QStringLiteral("lookThroughModelPanel %1 `getPanel -withFocus`")
                        .arg(QLatin1String(camera))));
}

bool Desk::closeAsks(QMessageBox::StandardButton answer) {
    bool asked = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (auto* box = window->findChild<QMessageBox*>(QStringLiteral("saveChangesBox"))) {
            asked = true;
            box->button(answer)->click();
        }
    });
    watch.start(5);
    if (!window->close()) {
        window->activateWindow(); // a window manager would do it
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    return asked;
}

QImage Desk::onScreen() {
    const QPoint corner = view().mapTo(window.get(), QPoint(0, 0));
    return window->screen()
        ->grabWindow(window->winId(), corner.x(), corner.y(), view().width(), view().height())
        .toImage();
}

QImage Desk::picture() {
    QImage last;
    int unchanged = 0;
    EXPECT_TRUE(support::waitFor([&] {
        support::settle();
        const QImage current = onScreen();
        unchanged = current == last ? unchanged + 1 : 0;
        last = current;
        return unchanged >= 3;
    })) << "the view does not come to rest";
    return last;
}

bool Desk::shows(const QImage& picture) {
    return support::waitFor([&] { return onScreen() == picture; });
}

void Desk::save(const QString& path) {
    const char* form = path.endsWith(QLatin1String(".mb")) ? "mayaBinary" : "mayaAscii";
    ASSERT_TRUE(run(QStringLiteral("file -rename \"%1\"; file -type \"%2\"; file -save")
                        .arg(path, QLatin1String(form))));
}

void Desk::open(const QString& path) {
    ASSERT_TRUE(run(QStringLiteral("file -force -open \"%1\"").arg(path)));
}

bool differAt(const QImage& a, const QImage& b, QPoint place) {
    const QRect area(place - QPoint(2, 2), QSize(5, 5));
    return a.copy(area) != b.copy(area);
}

} // namespace vellum::test
