// A text that is being typed when the scene is saved, exported or left.
#include "foundation/UndoQueue.h"
#include "journey/Desk.h"
#include "ui/MainWindow.h"
#include "ui/ViewWidget.h"

#include <QAbstractButton>
#include <QTimer>

#include <functional>

namespace vellum::test {
namespace {

class Typing : public Desk {
protected:
    void SetUp() override {
        Desk::SetUp();
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -textOptions 60 100 \"DejaVu Sans\";"
                                       "rvVellumUtil -textTool")));
        save(file("shot.ma"));
        blank = picture();
    }
    void typeText() {
        hand.click(view(), {150, 100});
        hand.type({Qt::Key_W});
        hand.type({Qt::Key_M});
    }
    /// What a file shows, as it is opened.
    QImage opened(const char* name) {
        EXPECT_TRUE(run(QStringLiteral("file -force -new")));
        open(file(name));
        lookThrough("shotCam");
        return picture();
    }
    /// Pixels of the view that the committed text covers, the scene being as it was afterwards.
    int textPixels() {
        typeText();
        hand.type({Qt::Key_Escape});
        const int pixels = changedPixels(picture());
        hand.type({Qt::Key_Control, Qt::Key_Z});
        EXPECT_TRUE(shows(blank));
        return pixels;
    }
    int changedPixels(const QImage& image) const {
        int changed = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                changed += image.pixel(x, y) != blank.pixel(x, y) ? 1 : 0;
        }
        return changed;
    }
    /// The field, one letter more or less would be another tenth.
    void expectText(const QImage& image, int pixels) const {
        EXPECT_GT(pixels, 500);
        EXPECT_NEAR(changedPixels(image), pixels, 0.05 * pixels);
    }
    bool asks(const std::function<void()>& act, QMessageBox::StandardButton answer) {
        bool asked = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            if (auto* box = window->findChild<QMessageBox*>(QStringLiteral("saveChangesBox"))) {
                asked = true;
                box->button(answer)->click();
            }
        });
        watch.start(5);
        act();
        return asked;
    }

    QImage blank;
};

TEST_F(Typing, SavedAndExportedWithTheText) {
    const int text = textPixels();
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"shot.ma",
         [this] {
             hand.type({Qt::Key_Control, Qt::Key_S});
         }},
        {"shot.ma",
         [this] { chooseFromMenu(QStringLiteral("File"), QStringLiteral("Save Scene")); }},
        {"copy.ma",
         [this] {
             ASSERT_TRUE(run(QStringLiteral("file -force -exportAll -type mayaAscii \"%1\"")
                                 .arg(file("copy.ma"))));
         }},
    };
    int way = 0;
    for (const auto& [name, act] : ways) {
        SCOPED_TRACE(way++);
        ASSERT_TRUE(run(QStringLiteral("file -modified off; rvVellumUtil -textTool")));
        typeText();
        EXPECT_TRUE(isModified());
        act();
        EXPECT_EQ(isModified(), QLatin1String(name) == QLatin1String("copy.ma"));
        expectText(picture(), text);
        expectText(opened(name), text);
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -del 0 shotCam")));
        save(file("shot.ma"));
    }
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Typing, LeavingTheSceneAsksAndSavesIt) {
    const int text = textPixels();
    const std::function<void()> leave = [this] {
        chooseFromMenu(QStringLiteral("File"), QStringLiteral("New Scene"));
    };
    ASSERT_TRUE(run(QStringLiteral("file -modified off")));
    EXPECT_FALSE(asks(leave, QMessageBox::Cancel)) << "nothing to be saved";
    EXPECT_EQ(opened("shot.ma"), blank);

    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -textTool")));
    typeText();
    EXPECT_TRUE(asks(leave, QMessageBox::Cancel));
    hand.type({Qt::Key_Backspace});
    hand.type({Qt::Key_M}); // it goes on
    EXPECT_TRUE(asks(leave, QMessageBox::No));
    EXPECT_FALSE(isModified());
    EXPECT_EQ(host::undoQueue().undoCount(), 0U) << "nothing of it is in the new scene";
    EXPECT_EQ(opened("shot.ma"), blank);

    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -textTool")));
    typeText();
    EXPECT_TRUE(asks(leave, QMessageBox::Yes));
    expectText(opened("shot.ma"), text);

    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -del 0 shotCam; rvVellumUtil -textTool")));
    save(file("shot.ma"));
    typeText();
    EXPECT_TRUE(closeAsks(QMessageBox::Yes));
    EXPECT_FALSE(window->isVisible());
    window->show();
    expectText(opened("shot.ma"), text);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Typing, NothingIsSavedWithoutATextThatHasNoPlace) {
    typeText();
    ASSERT_TRUE(run(QStringLiteral("delete shotCam")));
    const QString reason =
        QStringLiteral("[Vellum2] Text \"wm\" is not committed: its camera does not exist. "
                       "Press Escape to discard it.");
    const QString notSaved = QStringLiteral(
        "[Vellum2] Scene not saved: the text that is being typed cannot be committed.");
    hand.type({Qt::Key_Control, Qt::Key_S});
    EXPECT_EQ(errors.count(reason), 1) << allErrors().toStdString();
    EXPECT_EQ(errors.count(notSaved), 1);
    EXPECT_TRUE(isModified());
    EXPECT_TRUE(closeAsks(QMessageBox::Yes));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(errors.count(notSaved), 2);
    EXPECT_TRUE(
        run(QStringLiteral("file -force -exportAll -type mayaAscii \"%1\"").arg(file("copy.ma"))))
        << "a copy is better than none";
    hand.type({Qt::Key_Control, Qt::Key_Z}); // brings the camera back
    lookThrough("shotCam");
    errors.clear();
    hand.type({Qt::Key_Control, Qt::Key_S});
    EXPECT_FALSE(isModified());
    EXPECT_NE(opened("shot.ma"), blank);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Typing, WhateverHappensMeanwhile) {
    const int text = textPixels();
    const std::pair<const char*, std::function<void()>> events[] = {
        {"the camera is renamed and named back",
         [this] { run(QStringLiteral("rename shotCam hero")); }},
        {"the time goes on", [this] { scrub(9); }},
        {"another step is undone", [this] { run(QStringLiteral("undo")); }},
        {"it plays",
         [this] {
             hand.type({Qt::Key_Alt, Qt::Key_V});
         }},
        {"the other tool is taken", [this] { run(QStringLiteral("rvVellumUtil -transform")); }},
        {"the plug-in is to go",
         [this] { EXPECT_FALSE(run(QStringLiteral("unloadPlugin vellum2"))); }},
    };
    for (const auto& [name, happens] : events) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(run(QStringLiteral("group -empty -name left; rvVellumUtil -textTool")));
        typeText();
        happens();
        hand.type({Qt::Key_Escape});
        if (number(QStringLiteral("play -q -state")) == 1)
            hand.type({Qt::Key_Alt, Qt::Key_V});
        run(QStringLiteral(
            "if (`objExists hero`) rename hero shotCam; if (`objExists left`) delete left"));
        scrub(1);
        lookThrough("shotCam");
        expectText(picture(), text);
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -del 0 shotCam")));
        EXPECT_TRUE(shows(blank));
    }
}

} // namespace
} // namespace vellum::test
