// Texts, from the press to the commit: where they stand, what is typed, what ends them.
#include "document/Frame.h"
#include "plugin/base/ToolOptions.h"
#include "support/Sure.h"
#include "tools/TextSession.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QProcess>

#include <functional>

using support::firstOf;
using support::sure;

namespace vellum::test {
namespace {

class Text : public TextSession {
protected:
    void compose(const QString& committed, const QString& composing = {}) {
        QInputMethodEvent event(composing, {});
        event.setCommitString(committed);
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    QImage shown() {
        const QImage* composite = document()->compositeCamera(camera);
        return composite ? composite->copy() : QImage();
    }
};

TEST_F(Text, FollowsThePointerUntilReleasedAndShowsItsFrameWhileEdited) {
    drawTo({150, 120}, {200, 160});
    release();
    const StrokePoint at = firstOf(sure(document()->currentStroke()).points);
    EXPECT_EQ(QPoint(at.x, at.y), imagePixel({200, 160}));
    const QImage empty = shown();
    EXPECT_GT(inkIn(empty), 100) << "the frame of an empty text";
    EXPECT_GT(qAlpha(empty.pixel(at.x - 4, at.y + 20)), 200) << "its left side";
    type({Qt::Key_I});
    const QImage one = shown();
    EXPECT_NE(one, empty);
    type({Qt::Key_W, Qt::Key_W, Qt::Key_Return, Qt::Key_I});
    EXPECT_GT(inkIn(shown()), inkIn(one)) << "text and frame have grown";
    EXPECT_EQ(inkIn(picture()), 0) << "nothing is in the frame yet";
    type({Qt::Key_Escape});
    EXPECT_EQ(document()->currentStroke(), nullptr);
    const QImage committed = picture();
    EXPECT_GT(inkIn(committed), 500);
    EXPECT_EQ(qAlpha(committed.pixel(at.x - 4, at.y + 20)), 0) << "the frame is gone";
    const auto visible = [](const QImage& image) {
        return image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    };
    EXPECT_EQ(visible(committed), visible(shown()));
    EXPECT_EQ(committed.pixelColor(at.x, at.y).alpha(), 0);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0) << "one step";
}

TEST_F(Text, KeysAreTyped) {
    begin();
    key(Qt::Key_Shift, true);
    type({Qt::Key_B, Qt::Key_M});
    key(Qt::Key_Shift, false);
    type({Qt::Key_B, Qt::Key_Space, Qt::Key_7, Qt::Key_Comma, Qt::Key_Return, Qt::Key_X, Qt::Key_Y,
          Qt::Key_Backspace, Qt::Key_Left, Qt::Key_F3});
    EXPECT_EQ(typed(), QStringLiteral("BMb 7,\nx"));
    for (int i = 0; i < 12; ++i)
        type({Qt::Key_Backspace});
    EXPECT_EQ(typed(), QString());
    type({Qt::Key_Escape});
    EXPECT_EQ(inkIn(picture()), 0) << "an empty text leaves nothing";
    const int before = settings().of(Tool::Text).size;
    key(Qt::Key_B, true); // no longer typed: the size again
    moveTo({200, 200});
    press();
    moveTo({220, 200});
    release();
    key(Qt::Key_B, false);
    EXPECT_EQ(settings().of(Tool::Text).size, before + 2);
}

// What a keyboard of another script sends: one key, its text.
TEST_F(Text, EveryCharacterThatAKeyWritesIsTyped) {
    begin();
    const auto send = [](int code, const QString& written) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, written);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    };
    const QString joiner(QChar(0x200c)), mark(QChar(0x0301)), ownSign(QChar(0xf8ff));
    const QString brush = QString::fromUcs4(U"\U0001F58C", 1);
    const QString meem(QChar(0x0645));
    for (const QString& each : {meem, joiner, meem, mark, ownSign, brush})
        send(0, each);
    EXPECT_EQ(typed(), meem + joiner + meem + mark + ownSign + brush);
    send(Qt::Key_Delete, QString(QChar(0x7f)));
    send(Qt::Key_A, QString(QChar(1)));
    send(Qt::Key_Pause, QString());
    EXPECT_EQ(typed(), meem + joiner + meem + mark + ownSign + brush) << "these write nothing";
    type({Qt::Key_Escape});
    EXPECT_GT(inkIn(picture()), 50);
}

TEST_F(Text, DeadKeysAndInputMethods) {
    EXPECT_FALSE(view().testAttribute(Qt::WA_InputMethodEnabled));
    begin();
    EXPECT_TRUE(view().testAttribute(Qt::WA_InputMethodEnabled));
    type({Qt::Key_A});
    compose(QString(), QStringLiteral("´"));
    EXPECT_EQ(typed(), QStringLiteral("a´")) << "seen while it is composed";
    compose(QString(), QStringLiteral("´´"));
    EXPECT_EQ(typed(), QStringLiteral("a´´"));
    compose(QStringLiteral("é"));
    compose(QString::fromUcs4(U"\U0001F58C", 1));
    EXPECT_EQ(typed(), QStringLiteral("aé") + QString::fromUcs4(U"\U0001F58C", 1));
    type({Qt::Key_Backspace});
    EXPECT_EQ(typed(), QStringLiteral("aé")) << "a whole character";
    compose(QString(), QStringLiteral("wwwwwwww"));
    type({Qt::Key_Escape});
    EXPECT_FALSE(view().testAttribute(Qt::WA_InputMethodEnabled));
    const QImage withoutTheUnsettled = picture();
    ASSERT_TRUE(run(QStringLiteral("undo")));
    begin();
    compose(QStringLiteral("aé"));
    type({Qt::Key_Escape});
    EXPECT_EQ(picture(), withoutTheUnsettled);
}

// The same with the window system's own keyboard.
TEST_F(Text, ComposesWithARealKeyboardOfAnotherLayout) {
    const auto layout = [](const QString& variant) {
        return QProcess::execute(QStringLiteral("setxkbmap"),
                                 {QStringLiteral("-layout"), QStringLiteral("us"),
                                  QStringLiteral("-variant"), variant}) == 0;
    };
    if (!support::Hand().isReal() || !layout(QStringLiteral("intl")))
        GTEST_SKIP() << "no X keyboard to be changed";
    begin();
    const auto keyboard = host::InputInjector::create();
    const auto strike = [&](Qt::Key each) {
        EXPECT_TRUE(keyboard->key(each, true));
        EXPECT_TRUE(keyboard->key(each, false));
    };
    // Nobody sees the dead key: the next one comes as what both of them write.
    const auto gives = [this](const QString& text) {
        return waitFor([&] { return typed() == text; });
    };
    strike(Qt::Key_B);
    EXPECT_TRUE(gives(QStringLiteral("b")));
    strike(Qt::Key_Dead_Acute);
    strike(Qt::Key_E);
    EXPECT_TRUE(gives(QStringLiteral("bé")));
    strike(Qt::Key_Dead_Grave);
    strike(Qt::Key_A);
    EXPECT_TRUE(gives(QStringLiteral("béà")));
    keyboard->key(Qt::Key_AltGr, true);
    strike(Qt::Key_S);
    keyboard->key(Qt::Key_AltGr, false);
    EXPECT_TRUE(gives(QStringLiteral("béàß"))) << typed().toStdString();
    strike(Qt::Key_Dead_Acute);
    strike(Qt::Key_Escape); // ends what is being composed
    strike(Qt::Key_Escape);
    EXPECT_TRUE(waitFor([this] { return document()->currentStroke() == nullptr; }));
    EXPECT_TRUE(layout(QString()));
    support::settle();
}

TEST_F(Text, IsCommittedByWhateverEndsIt) {
    const std::function<void()> ends[] = {
        [this] { type({Qt::Key_Escape}); },
        [this] {
            begin({300, 300});
        },
        [this] {
            moveTo({300, 300});
            press(Qt::RightButton);
            ASSERT_TRUE(waitFor([] { return QApplication::activePopupWidget() != nullptr; }));
            QApplication::activePopupWidget()->close();
            release(Qt::RightButton);
        },
        [this] { activateDrawTool(); },
        [this] { ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext"))); },
        [this] {
            at(9);
            type({Qt::Key_Escape});
            at(1);
        },
    };
    int number = 0;
    for (const auto& end : ends) {
        SCOPED_TRACE(number++);
        activateDrawTool();
        begin();
        type({Qt::Key_H});
        end();
        activateDrawTool(); // ends a text that was begun by the press
        const QPoint corner = imagePixel({150, 120});
        int ink = 0;
        for (int y = 0; y < 70; ++y) {
            for (int x = 0; x < 60; ++x)
                ink += alphaAt(corner + QPoint(x, y)) > 0 ? 1 : 0;
        }
        EXPECT_GT(ink, 150);
        ASSERT_TRUE(run(QStringLiteral("file -f -new")));
        node();
        settings().activeTool = Tool::Text;
    }
}

TEST_F(Text, FontFamilyReachesThePixels) {
    begin();
    type({Qt::Key_A, Qt::Key_Escape});
    const QImage sans = picture();
    ASSERT_TRUE(run(QStringLiteral("undo")));
    settings().of(Tool::Text).fontFamily = QStringLiteral("DejaVu Serif");
    begin();
    type({Qt::Key_A, Qt::Key_Escape});
    EXPECT_NE(picture(), sans);
}

} // namespace
} // namespace vellum::test
