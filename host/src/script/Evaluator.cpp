#include "script/Evaluator.h"

#include "foundation/Report.h"
#include "script/Commands.h"
#include "script/Operators.h"

namespace host::script {

Evaluator::Evaluator(InterpreterState& state, const std::string& file,
                     std::shared_ptr<LocalProcedures> locals, int slots)
    : state_(state), file_(file), locals_(std::move(locals)),
      slots_(static_cast<std::size_t>(slots)) {
}

void Evaluator::locate(ScriptError& error, int line) const {
    if (error.line == 0) {
        error.file = file_;
        error.line = line;
    }
}

Evaluator::Flow Evaluator::run(const Node& node) {
    state_.step();
    state_.file = &file_;
    state_.line = node.line;
    try {
        return runStatement(node);
    } catch (ScriptError& error) {
        locate(error, node.line);
        throw;
    }
}

Evaluator::Flow Evaluator::runBody(const Node& node, std::size_t first) {
    for (std::size_t i = first; i < node.children.size(); ++i)
        if (const Flow flow = run(*node.children[i]); flow != Flow::Next)
            return flow;
    return Flow::Next;
}

Evaluator::Flow Evaluator::runStatement(const Node& node) {
    const auto child = [&node](std::size_t i) -> const Node& { return *node.children[i]; };
    switch (node.kind) {
    case NodeKind::ExpressionStatement:
        result_ = evaluate(child(0));
        return Flow::Next;
    case NodeKind::Declare:
        declare(node);
        return Flow::Next;
    case NodeKind::Block:
        return runBody(node, 0);
    case NodeKind::If:
        if (evaluate(child(0)).toBool())
            return run(child(1));
        return node.children.size() > 2 ? run(child(2)) : Flow::Next;
    case NodeKind::While:
        while (evaluate(child(0)).toBool()) {
            const Flow flow = run(child(1));
            if (flow == Flow::Break)
                break;
            if (flow == Flow::Return)
                return flow;
        }
        return Flow::Next;
    case NodeKind::DoWhile:
        do {
            const Flow flow = run(child(0));
            if (flow == Flow::Break)
                break;
            if (flow == Flow::Return)
                return flow;
        } while (evaluate(child(1)).toBool());
        return Flow::Next;
    case NodeKind::For:
        return runFor(node);
    case NodeKind::ForIn:
        return runForIn(node);
    case NodeKind::Switch:
        return runSwitch(node);
    case NodeKind::Break:
        return Flow::Break;
    case NodeKind::Continue:
        return Flow::Continue;
    case NodeKind::Return:
        result_ = node.children.empty() ? Value() : evaluate(child(0));
        return Flow::Return;
    case NodeKind::Procedure:
        defineProcedure(node);
        return Flow::Next;
    default:
        result_ = evaluate(node);
        return Flow::Next;
    }
}

Evaluator::Flow Evaluator::runFor(const Node& node) {
    run(*node.children[0]);
    const Node* condition = node.children[1].get();
    while (!condition || evaluate(*condition).toBool()) {
        const Flow flow = run(*node.children[3]);
        if (flow == Flow::Break)
            break;
        if (flow == Flow::Return)
            return flow;
        run(*node.children[2]);
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::runForIn(const Node& node) {
    const Value list = evaluate(*node.children[1]);
    if (!list.isArray() && !list.isNone())
        throw ScriptError("A for-in loop needs an array.");
    for (std::size_t i = 0; i < list.size(); ++i) {
        store(*node.children[0], list.element(i));
        const Flow flow = run(*node.children[2]);
        if (flow == Flow::Break)
            break;
        if (flow == Flow::Return)
            return flow;
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::runSwitch(const Node& node) {
    const Value value = evaluate(*node.children[0]);
    std::size_t start = 0, fallback = 0;
    for (std::size_t i = 1; i < node.children.size() && !start; ++i) {
        const Node& label = *node.children[i];
        if (label.count)
            fallback = i;
        else if (equal(value, evaluate(*label.children[0])))
            start = i;
    }
    if (!start)
        start = fallback;
    for (std::size_t i = start; start && i < node.children.size(); ++i) {
        const Node& label = *node.children[i];
        const Flow flow = runBody(label, label.count ? 0 : 1);
        if (flow == Flow::Break)
            return Flow::Next;
        if (flow != Flow::Next)
            return flow;
    }
    return Flow::Next;
}

void Evaluator::declare(const Node& node) {
    for (const NodePtr& child : node.children) {
        const bool assigns = child->kind == NodeKind::Assign;
        const Node& target = assigns ? *child->children[0] : *child;
        Type& type = variableType(target);
        const bool isNew = type == Type::None || (target.global && target.global->value.isNone());
        if (type != Type::None && type != target.type)
            throw ScriptError("Invalid redeclaration of variable \"$" + target.name +
                              "\" as a different type.");
        type = target.type;
        Value& value = variable(target);
        // Declaring a global again keeps its value; a local starts anew each time.
        if (isNew || (!target.global && !target.flag))
            value = Value::ofType(target.type);
        if (assigns) {
            if (!node.flag || !target.global->initialised)
                result_ = store(target, evaluate(*child->children[1]));
        } else if (target.type == Type::Matrix) {
            MatrixValue matrix{
                evaluate(*target.children[0]).toInt(), evaluate(*target.children[1]).toInt(), {}};
            if (matrix.rows < 1 || matrix.columns < 1 || matrix.rows > 1000 ||
                matrix.columns > 1000)
                throw ScriptError("A matrix needs between 1 and 1000 rows and columns.");
            matrix.cells.resize(static_cast<std::size_t>(matrix.rows * matrix.columns));
            value = std::move(matrix);
        } else if (!target.children.empty() && value.size() == 0) {
            resizeArray(value, evaluate(*target.children[0]).toInt());
        }
        if (target.global)
            target.global->initialised = true;
    }
}

void Evaluator::defineProcedure(const Node& node) {
    const std::shared_ptr<Procedure>& procedure = node.procedure;
    // Text that belongs to no file has nobody to keep its procedures to itself for.
    if (procedure->isGlobal || procedure->file.empty()) {
        procedure->locals = locals_;
        state_.natives.erase(procedure->name);
        state_.procedures[procedure->name] = procedure;
    } else {
        procedure->siblings = locals_;
        (*locals_)[procedure->name] = procedure;
    }
    result_ = Value();
}

void Evaluator::defineAhead(const Unit& unit) {
    for (const NodePtr& statement : unit.statements) {
        if (statement->kind != NodeKind::Procedure)
            continue;
        const std::string& name = statement->name;
        if (!locals_->count(name) && !state_.procedures.count(name) && !state_.natives.count(name))
            defineProcedure(*statement);
    }
}

Value Evaluator::evaluate(const Node& node) {
    state_.step();
    const auto child = [&node](std::size_t i) -> const Node& { return *node.children[i]; };
    switch (node.kind) {
    case NodeKind::Literal:
        return node.value;
    case NodeKind::ArrayLiteral:
        return literalArray(node);
    case NodeKind::VectorLiteral:
        return Vec3{evaluate(child(0)).toFloat(), evaluate(child(1)).toFloat(),
                    evaluate(child(2)).toFloat()};
    case NodeKind::MatrixLiteral:
        return literalMatrix(node);
    case NodeKind::Variable:
    case NodeKind::Index:
    case NodeKind::Component:
        return readTarget(node);
    case NodeKind::Unary: {
        const Value value = evaluate(child(0));
        return node.name == "!" ? Value(!value.toBool()) : negated(value);
    }
    case NodeKind::Binary: {
        const Value left = evaluate(child(0));
        return applyOperator(node.op, left, evaluate(child(1)));
    }
    case NodeKind::And:
        return evaluate(child(0)).toBool() && evaluate(child(1)).toBool();
    case NodeKind::Or:
        return evaluate(child(0)).toBool() || evaluate(child(1)).toBool();
    case NodeKind::Conditional:
        return evaluate(child(evaluate(child(0)).toBool() ? 1 : 2));
    case NodeKind::Assign:
        return assign(node);
    case NodeKind::Increment:
        return increment(node);
    case NodeKind::Cast: {
        Value value = evaluate(child(0));
        return node.type == Type::None ? value : value.convertedTo(node.type);
    }
    case NodeKind::Call:
        return call(node);
    default:
        throw ScriptError("Syntax error");
    }
}

// The first element decides the type, except that one float among integers makes floats.
Value Evaluator::literalArray(const Node& node) {
    std::vector<Value> elements;
    elements.reserve(node.children.size());
    Type type = Type::None;
    for (const NodePtr& child : node.children) {
        elements.push_back(evaluate(*child));
        const Type t = elements.back().type();
        if (type == Type::None || (type == Type::Int && t == Type::Float) || t == Type::String)
            type = t;
    }
    if (elements.empty())
        return Ints{};
    if (arrayType(type) == Type::None)
        throw ScriptError(std::string("An array cannot hold data of type ") + typeName(type) + ".");
    Value array = Value::ofType(arrayType(type));
    for (std::size_t i = 0; i < elements.size(); ++i)
        setElement(array, static_cast<int>(i), elements[i]);
    return array;
}

Value Evaluator::literalMatrix(const Node& node) {
    MatrixValue matrix;
    matrix.columns = node.count;
    matrix.rows = static_cast<int>(node.children.size()) / node.count;
    for (const NodePtr& child : node.children)
        matrix.cells.push_back(evaluate(*child).toFloat());
    return matrix;
}

Value& Evaluator::variable(const Node& node) {
    return node.global ? node.global->value : slot(node.slot).value();
}

Type& Evaluator::variableType(const Node& node) {
    return node.global ? node.global->type : slot(node.slot).type;
}

namespace {

double& matrixCell(Value& value, int row, int column) {
    auto& matrix = value.get<MatrixValue>();
    if (row < 0 || column < 0 || row >= matrix.rows || column >= matrix.columns)
        throw ScriptError("Matrix index [" + std::to_string(row) + "][" + std::to_string(column) +
                          "] is out of range.");
    return matrix.cells[static_cast<std::size_t>(row * matrix.columns + column)];
}

int componentIndex(char name) {
    return name - 'x';
}

} // namespace

Value Evaluator::readTarget(const Node& node) {
    const Node& first = node.kind == NodeKind::Variable ? node : *node.children[0];
    switch (node.kind) {
    case NodeKind::Variable:
        return variable(node);
    case NodeKind::Index: {
        const int index = evaluate(*node.children[1]).toInt();
        if (variable(first).type() == Type::Matrix) {
            if (node.children.size() < 3)
                throw ScriptError("A matrix needs two indices.");
            const int column = evaluate(*node.children[2]).toInt();
            return matrixCell(variable(first), index, column);
        }
        if (node.children.size() > 2)
            throw ScriptError("\"$" + first.name + "\" is not a matrix.");
        return elementAt(variable(first), index);
    }
    default: {
        const Value value = readTarget(first);
        if (value.type() != Type::Vector)
            throw ScriptError(std::string("Data of type ") + typeName(value.type()) +
                              " has no components.");
        return elementAt(value, componentIndex(node.component));
    }
    }
}

// An undecided variable takes the type of what it is given first.
Value Evaluator::storeIn(Value& target, Type& type, const Value& value) {
    if (type == Type::None)
        type = value.type();
    target = value.convertedTo(type);
    return target;
}

Value Evaluator::store(const Node& target, const Value& value) {
    if (target.kind == NodeKind::Variable)
        return storeIn(variable(target), variableType(target), value);

    const Node& first = *target.children[0];
    const int index = evaluate(*target.children[1]).toInt();
    const int column = target.children.size() > 2 ? evaluate(*target.children[2]).toInt() : -1;
    Value& array = variable(first);
    Type& type = variableType(first);
    if (type == Type::None) {
        type = arrayType(value.type());
        array = Value::ofType(type);
    }
    if (array.type() == Type::Matrix)
        return matrixCell(array, index, column) = value.toFloat();
    if (target.children.size() > 2)
        throw ScriptError("\"$" + first.name + "\" is not a matrix.");
    setElement(array, index, value);
    return elementAt(array, index);
}

Value Evaluator::assign(const Node& node) {
    const Node& target = *node.children[0];
    Value value = evaluate(*node.children[1]);
    if (node.op != Operator::None)
        value = applyOperator(node.op, readTarget(target), value);
    if (value.isNone())
        throw ScriptError("Cannot convert data of type void to type " +
                          std::string(typeName(variableType(
                              target.kind == NodeKind::Variable ? target : *target.children[0]))) +
                          ".");
    return store(target, value);
}

Value Evaluator::increment(const Node& node) {
    const Node& target = *node.children[0];
    const Value before = readTarget(target);
    if (!before.isNumber())
        throw ScriptError(std::string("Illegal operation \"") + (node.count > 0 ? "++" : "--") +
                          "\" on data of type " + typeName(before.type()) + ".");
    const Value after = store(target, applyOperator(Operator::Add, before, node.count));
    return node.flag ? after : before;
}

Value Evaluator::call(const Node& node) {
    if (node.name == "catch" || node.name == "catchQuiet")
        return caught(node);
    CommandCall call;
    call.name = node.name;
    call.file = file_;
    call.line = node.line;
    call.echo = state_.echo;
    call.arguments.reserve(node.children.size());
    call.variables.reserve(node.children.size());
    try {
        for (const NodePtr& child : node.children) {
            const bool isVariable = child->kind == NodeKind::Variable;
            call.arguments.push_back(evaluate(*child));
            call.variables.push_back(isVariable ? &variable(*child) : nullptr);
        }
        state_.file = &file_;
        state_.line = node.line;
        Value result = dispatch(state_, locals_.get(), call);
        state_.file = &file_;
        state_.line = node.line;
        return result;
    } catch (ScriptError& error) {
        locate(error, node.line);
        throw;
    }
}

// The argument must be evaluated inside the try: it is what may fail.
Value Evaluator::caught(const Node& node) {
    if (node.children.size() != 1)
        throw ScriptError("Wrong number of arguments on call to " + node.name + ".");
    try {
        evaluate(*node.children[0]);
        return 0;
    } catch (ScriptError& error) {
        if (error.fatal)
            throw;
        locate(error, node.line);
        if (node.name == "catch" && !error.reported)
            report::error(error.text());
        return 1;
    }
}

namespace {

// Counts a procedure call and brings the caller's place back.
class CallScope {
public:
    explicit CallScope(InterpreterState& state)
        : state_(state), file_(state.file), line_(state.line) {
        ++state.calls;
    }
    ~CallScope() {
        --state_.calls;
        state_.file = file_;
        state_.line = line_;
    }
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

private:
    InterpreterState& state_;
    const std::string* file_;
    int line_;
};

} // namespace

Value callProcedure(InterpreterState& state, const std::shared_ptr<Procedure>& procedure,
                    const CommandCall& call) {
    const std::shared_ptr<Procedure> kept = procedure; // it may redefine itself
    if (call.arguments.size() != kept->parameters.size())
        throw ScriptError("Wrong number of arguments on call to " + call.name + ".");
    constexpr int kMaximumCalls = 1000;
    if (state.calls >= kMaximumCalls)
        throw ScriptError("Procedures call each other too deeply: \"" + call.name + "\".");

    Evaluator evaluator(state, kept->file, kept->locals ? kept->locals : kept->siblings.lock(),
                        kept->slots);
    for (std::size_t i = 0; i < kept->parameters.size(); ++i) {
        Slot& slot = evaluator.slot(static_cast<int>(i));
        slot.type = kept->parameters[i].type;
        Value* given = call.variables.size() > i ? call.variables[i] : nullptr;
        if (given && isArray(slot.type) && given->type() == slot.type)
            slot.shared = given;
        else
            slot.own = call.arguments[i].convertedTo(slot.type);
    }
    const CallScope scope(state);
    if (evaluator.run(*kept->body) != Evaluator::Flow::Return)
        return Value::ofType(kept->returnType);
    return evaluator.takeResult().convertedTo(kept->returnType);
}

Value dispatch(InterpreterState& state, const LocalProcedures* locals, const CommandCall& call) {
    if (locals) {
        if (const auto it = locals->find(call.name); it != locals->end())
            return callProcedure(state, it->second, call);
    }
    for (const bool searched : {false, true}) {
        if (const auto it = state.procedures.find(call.name); it != state.procedures.end())
            return callProcedure(state, it->second, call);
        if (const auto it = state.natives.find(call.name); it != state.natives.end()) {
            const NativeProcedureEntry entry = it->second;
            if (call.arguments.size() != entry.parameters.size())
                throw ScriptError("Wrong number of arguments on call to " + call.name + ".");
            std::vector<Value> arguments;
            for (std::size_t i = 0; i < call.arguments.size(); ++i)
                arguments.push_back(call.arguments[i].convertedTo(entry.parameters[i]));
            return entry.function(arguments);
        }
        if (searched || commandExists(call.name) || !loadProcedure(call.name))
            return callCommand(call);
    }
    return {};
}

} // namespace host::script
