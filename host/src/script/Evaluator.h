#pragma once

#include "script/Ast.h"
#include "script/InterpreterState.h"

namespace host::script {

struct CommandCall;

/// A local variable. An array handed to a procedure is the caller's own: `shared` points to it.
struct Slot {
    Type type = Type::None;
    Value own;
    Value* shared = nullptr;
    Value& value() { return shared ? *shared : own; }
};

/// Walks the tree of one script or one procedure call.
class Evaluator {
public:
    Evaluator(InterpreterState& state, const std::string& file,
              std::shared_ptr<LocalProcedures> locals, int slots);

    enum class Flow { Next, Break, Continue, Return };

    /// Defines the procedures of a script that nothing of their name exists for yet, so that code
    /// above a definition may call it.
    void defineAhead(const Unit& unit);

    Flow run(const Node& node);
    Value evaluate(const Node& node);

    Slot& slot(int index) { return slots_[static_cast<std::size_t>(index)]; }
    Value takeResult() { return std::move(result_); }

private:
    Flow runBody(const Node& node, std::size_t first);
    Flow runStatement(const Node& node);
    Flow runFor(const Node& node);
    Flow runForIn(const Node& node);
    Flow runSwitch(const Node& node);
    void declare(const Node& node);
    void defineProcedure(const Node& node);

    Value literalArray(const Node& node);
    Value literalMatrix(const Node& node);
    Value assign(const Node& node);
    Value increment(const Node& node);
    Value call(const Node& node);
    Value caught(const Node& node);
    Value readTarget(const Node& node);
    Value store(const Node& target, const Value& value);
    Value storeIn(Value& variable, Type& type, const Value& value);
    Value& variable(const Node& node);
    Type& variableType(const Node& node);
    const std::shared_ptr<Procedure>* findProcedure(const std::string& name) const;
    void locate(ScriptError& error, int line) const;

    InterpreterState& state_;
    const std::string& file_;
    std::shared_ptr<LocalProcedures> locals_;
    std::vector<Slot> slots_;
    Value result_;
};

/// Calls a parsed procedure. `call.variables` lets arrays be shared with the caller.
Value callProcedure(InterpreterState& state, const std::shared_ptr<Procedure>& procedure,
                    const CommandCall& call);

/// Calls what `call.name` names: procedure (of `locals` first), native procedure, command, or a
/// procedure found along the script path.
Value dispatch(InterpreterState& state, const LocalProcedures* locals, const CommandCall& call);

} // namespace host::script
