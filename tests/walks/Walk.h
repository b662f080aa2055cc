// Long sessions without a plan. After each thing that is done the scene is compared, in the form in
// which it is saved: undo and redo give back the very bytes, what is refused changes nothing, and a
// file that is opened holds what was saved.
#pragma once

#include "journey/Desk.h"
#include "walks/Action.h"

#include <maya/MTime.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellum::test {

class Walk : public Desk {
protected:
    void SetUp() override;

    /// Where a walk went wrong.
    struct Fault {
        std::size_t step; ///< counted from 0
        std::string what;
    };

    /// From a scene and settings as new, through all of it, back to where the history begins and on
    /// to the end again.
    std::optional<Fault> walk(const std::vector<Action>& actions, bool undoReturnsToFrame);

    /// As few of the actions as still end in a fault, as far as that is found in a minute, and the
    /// fault.
    std::string shortestWay(std::vector<Action> actions, bool undoReturnsToFrame);

private:
    void startAfresh(bool undoReturnsToFrame);
    void act(const Action& action);
    void command(const QString& line);
    void unrecorded(const Action& action);
    void draw(const Action& action);
    void drawBroken(const Action& action);
    void transform(const Action& action);
    void reopen(bool binary);
    void newScene(bool empty);
    void undoOne();
    enum class Compare { No, Yes };
    void redoOne(Compare compared = Compare::Yes);
    void backAndForth(std::size_t count);

    void goTo(const MTime& time);
    QString lookedThrough();
    /// A press makes the view's camera the current one, which is no step of its own.
    void pressMovesCurrentCamera();

    /// What cannot be undone was done: the walk's history begins here.
    void begin();
    struct State {
        QByteArray scene;
        MTime time; ///< when the step before it was done
    };
    QByteArray drawings(); ///< the scene as a file holds it, but for what no step is about
    QByteArray scene();    ///< and the selection
    /// The scene is the one of the queue's length; else the fault tells how it differs.
    void compare(const QByteArray& current);
    void expectSame(const QByteArray& is, const QByteArray& was, const char* when);
    /// After something was done: a step of the queue, or nothing.
    void checkDone(std::size_t before, std::size_t undone, bool done);
    void fault(const std::string& what);

    std::string fault_;         ///< the first one of this walk
    std::vector<State> states_; ///< by the length of the undo queue
    /// The current camera was changed by what is no step, or by undo of a stroke that made its
    /// camera's first layer, which gives the turn to the camera before, even if this one had it.
    bool currentCameraIsFree_ = false;
    bool returnsToFrame_ = false;
    std::set<MTime::Unit> units_; ///< of this scene so far
};

} // namespace vellum::test
