#pragma once

#include "script/Value.h"

#include <QCursor>

#include <maya/MCursor.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

#include <string>

class MArgList;

namespace host {

/// What a context tells the interface about itself.
struct ContextState {
    std::string title, help;
    std::string images[3];
    MCursor cursor = MCursor::defaultCursor;

    static ContextState& of(MPxContext& context) { return *context.state_; }
    static const ContextState& of(const MPxContext& context) { return *context.state_; }
};

/// What an MCursor shows.
struct CursorShape {
    int standard = 0; ///< Qt::CursorShape
    short width = 0, height = 0, hotX = 0, hotY = 0;
    std::string bits, mask; ///< empty for a standard shape

    /// Needs a QGuiApplication.
    static QCursor toQt(const MCursor& cursor);
};

/// One call of a context command.
struct ContextCall {
    MSyntax syntax;
    MArgParser parser;
    script::Value result;

    static void attach(MPxContextCommand& command, std::shared_ptr<ContextCall> call) {
        command.call_ = std::move(call);
    }
};

/// Makes the events that tools get.
class EventAccess {
public:
    static MEvent make(int x, int y, int windowX, int windowY, int button, int modifiers, int held);
};

} // namespace host
