// The one thing a modifier does that takes the script language.
#include "foundation/UndoQueue.h"
#include "scene/api/ModifierSteps.h"

#include <maya/MDGModifier.h>
#include <maya/MGlobal.h>

MStatus MDGModifier::commandToExecute(const MString& command) {
    const auto ran = std::make_shared<bool>(false);
    steps_->add({[=] { return *ran = bool(MGlobal::executeCommand(command, false, true)); },
                 [=] {
                     if (*ran)
                         host::undoQueue().undo();
                 }});
    return MS::kSuccess;
}
