#include "commands/CoreCommands.h"
#include "foundation/UndoQueue.h"
#include "script/CallHelpers.h"
#include "script/Flags.h"
#include "script/InterpreterState.h"

#include <algorithm>

namespace host::script {

namespace {

Value undo(const CommandCall& call) {
    requireArguments(call, 0);
    const ChunkPause pause;
    if (!undoQueue().canUndo())
        throw ScriptError("There are no more commands to undo.");
    if (!undoQueue().undo())
        throw ScriptError("The command could not be undone.");
    return {};
}

Value redo(const CommandCall& call) {
    requireArguments(call, 0);
    const ChunkPause pause;
    if (!undoQueue().canRedo())
        throw ScriptError("There are no more commands to redo.");
    if (!undoQueue().redo())
        throw ScriptError("The command could not be redone.");
    return {};
}

Value flushUndo(const CommandCall& call) {
    requireArguments(call, 0);
    const ChunkPause pause;
    undoQueue().flush();
    return {};
}

Value undoInfo(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-st", "-state", {ArgKind::Boolean})
                                   .flag("-swf", "-stateWithoutFlush", {ArgKind::Boolean})
                                   .flag("-in", "-infinity", {ArgKind::Boolean})
                                   .flag("-l", "-length", {ArgKind::Int})
                                   .flag("-un", "-undoName")
                                   .flag("-rn", "-redoName")
                                   .flag("-uqe", "-undoQueueEmpty")
                                   .flag("-rqe", "-redoQueueEmpty")
                                   .flag("-ock", "-openChunk")
                                   .flag("-cck", "-closeChunk")
                                   .flag("-cn", "-chunkName", {ArgKind::String})
                                   .query();
    const ParsedFlags parsed = flags.parse(call);
    UndoQueue& queue = undoQueue();
    if (parsed.isQuery()) {
        const ChunkPause pause;
        if (parsed.isSet("-undoName"))
            return queue.undoLabel();
        if (parsed.isSet("-redoName"))
            return queue.redoLabel();
        if (parsed.isSet("-undoQueueEmpty"))
            return !queue.canUndo();
        if (parsed.isSet("-redoQueueEmpty"))
            return !queue.canRedo();
        if (parsed.isSet("-infinity"))
            return queue.limit() == 0;
        if (parsed.isSet("-length"))
            return static_cast<int>(queue.limit());
        return queue.enabled();
    }
    if (parsed.isSet("-length"))
        queue.setLimit(static_cast<std::size_t>(std::max(parsed.getInt("-length"), 1)));
    if (parsed.isSet("-infinity") && parsed.getBool("-infinity"))
        queue.setLimit(0);
    // A chunk opened here goes on over the statements that follow.
    if (parsed.isSet("-openChunk") || parsed.isSet("-closeChunk")) {
        const ChunkPause pause;
        if (parsed.isSet("-openChunk"))
            queue.openChunk(parsed.getString("-chunkName"));
        else
            queue.closeChunk();
    }
    if (parsed.isSet("-state")) {
        if (!parsed.getBool("-state")) {
            const ChunkPause pause;
            queue.flush();
        }
        queue.setEnabled(parsed.getBool("-state"));
    }
    if (parsed.isSet("-stateWithoutFlush"))
        queue.setEnabled(parsed.getBool("-stateWithoutFlush"));
    return {};
}

} // namespace

void registerUndoCommands() {
    registerCommand("undo", undo);
    registerCommand("redo", redo);
    registerCommand("flushUndo", flushUndo);
    registerCommand("undoInfo", undoInfo);
}

} // namespace host::script
