// A long session without a plan: strokes, undo and redo, time, cameras, saving and opening in
// random order. Whatever state the drawings come back to, they look as they did when it was left.
#include "journey/Desk.h"
#include "support/Seed.h"
#include "ui/ViewWidget.h"

#include <optional>
#include <random>
#include <tuple>

namespace vellum::test {
namespace {

class Wandering : public Desk {
protected:
    static constexpr int kSteps = 70;

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    void SetUp() override {
        Desk::SetUp();
        take("brush");
        look();
    }

    void act();
    void draw();
    void undo();
    void redo();
    void saveOrOpen();
    /// The view shows what it showed when this state was last seen at this time and camera.
    void look();

    std::string trail; ///< what has been done, for the failure's message

private:
    std::mt19937 random_{support::seed()};
    // States of the drawings have numbers; the same number means the same drawings.
    struct State {
        int number;
        int frame; ///< where the stroke that led to it was drawn
    };
    std::vector<State> states_ = {{0, 1}}; ///< as far as undo and redo reach
    std::size_t present_ = 0;
    int newest_ = 0;
    std::optional<std::pair<QString, int>> saved_;
    int frame_ = 1;
    QString camera_ = QStringLiteral("shotCam");
    std::map<std::tuple<int, QString, int>, QImage> seen_;
};

void Wandering::act() {
    const int kind = pick(10);
    if (kind < 3)
        draw();
    else if (kind < 5)
        undo();
    else if (kind < 6)
        redo();
    else if (kind < 8)
        scrub(frame_ = 1 + 4 * pick(3));
    else if (kind < 9)
        lookThrough((camera_ = pick(2) ? QStringLiteral("shotCam") : QStringLiteral("persp"))
                        .toUtf8()
                        .constData());
    else
        saveOrOpen();
    trail += " frame " + std::to_string(frame_) + " " + camera_.toStdString() + " state " +
             std::to_string(states_[present_].number) + ";";
}

void Wandering::draw() {
    const QPoint from(120 + pick(300), 60 + pick(250));
    const QPoint way(pick(2) ? 40 : -40, pick(2) ? 15 : -15);
    trail += " draw";
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -drawColor %1 %2 %3")
                        .arg(pick(256))
                        .arg(pick(2) * 255)
                        .arg(pick(256))));
    // Held without waiting for the screen: what is drawn may lie under what is there already.
    hand.moveTo(view(), from);
    hand.press();
    for (int i = 1; i <= 3; ++i)
        hand.moveTo(view(), from + i * way);
    hand.release();
    states_.resize(present_ + 1);
    states_.push_back({++newest_, frame_});
    ++present_;
}

void Wandering::undo() {
    if (present_ == 0)
        return;
    trail += " undo";
    // Undo and redo exchange the picture of the frame that is current, so one goes there first.
    scrub(frame_ = states_[present_].frame);
    hand.type({Qt::Key_Control, Qt::Key_Z});
    --present_;
}

void Wandering::redo() {
    if (present_ + 1 == states_.size())
        return;
    trail += " redo";
    scrub(frame_ = states_[present_ + 1].frame);
    hand.type({Qt::Key_Shift, Qt::Key_Z});
    ++present_;
}

void Wandering::saveOrOpen() {
    if (!saved_ || pick(2)) {
        saved_ = {file(pick(2) ? "w.ma" : "w.mb"), states_[present_].number};
        trail += " save " + saved_->first.right(2).toStdString();
        save(saved_->first);
        EXPECT_FALSE(isModified());
        return;
    }
    trail += " open " + saved_->first.right(2).toStdString();
    open(saved_->first);
    states_ = {{saved_->second, frame_}};
    present_ = 0;
    take("brush"); // opening a scene puts the tool down
    scrub(frame_);
    lookThrough(camera_.toUtf8().constData());
}

void Wandering::look() {
    const auto [found, isNew] = seen_.try_emplace({states_[present_].number, camera_, frame_});
    if (isNew)
        found->second = picture();
    else
        EXPECT_TRUE(shows(found->second)) << "seed " << support::seed() << ":" << trail;
}

TEST_F(Wandering, EveryStateLooksAsItDid) {
    for (int step = 0; step < kSteps && !HasFailure(); ++step) {
        act();
        look();
    }
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString() << trail;
}

} // namespace
} // namespace vellum::test
