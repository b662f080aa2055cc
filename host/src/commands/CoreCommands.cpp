#include "commands/CoreCommands.h"

#include "script/LanguageCommands.h"

namespace host::script {

void registerCoreCommands() {
    registerLanguageCommands();
    registerStringCommands();
    registerArrayCommands();
    registerMathCommands();
    registerSessionCommands();
    registerUndoCommands();
    registerScriptJobCommands();
}

} // namespace host::script
