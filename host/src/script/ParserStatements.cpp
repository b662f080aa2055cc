#include "foundation/Report.h"
#include "script/Parser.h"

namespace host::script {

namespace {

Type declaredType(const std::string& word) {
    if (word == "int")
        return Type::Int;
    if (word == "float")
        return Type::Float;
    if (word == "string")
        return Type::String;
    if (word == "vector")
        return Type::Vector;
    return word == "matrix" ? Type::Matrix : Type::None;
}

bool isReserved(const std::string& word) {
    static const char* const words[] = {"break",  "case",   "continue", "default", "do",
                                        "else",   "float",  "for",      "global",  "if",
                                        "in",     "int",    "matrix",   "proc",    "return",
                                        "string", "switch", "vector",   "while"};
    for (const char* reserved : words)
        if (word == reserved)
            return true;
    return false;
}

} // namespace

Parser::Parser(const std::string& text, const std::string& file, const GlobalVariables& globals)
    : scanner_(text, file), globals_(globals) {
    unit_.file = file;
    unit_.locals = std::make_shared<LocalProcedures>();
}

Unit Parser::parse() {
    while (!scanner_.atEnd())
        unit_.statements.push_back(statement());
    return std::move(unit_);
}

Unit parseScript(const std::string& text, const std::string& file, const GlobalVariables& globals) {
    return Parser(text, file, globals).parse();
}

bool Parser::find(const std::string& name, Symbol* symbol) const {
    for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
        if (const auto it = scope->find(name); it != scope->end()) {
            *symbol = it->second;
            return true;
        }
    }
    if (procedure_)
        return false;
    for (const GlobalVariables* table : {&globals_, &unit_.newGlobals}) {
        if (const auto it = table->find(name); it != table->end()) {
            *symbol = {it->second->type, -1, 0, it->second};
            return true;
        }
    }
    return false;
}

Parser::Symbol Parser::declareGlobal(const std::string& name, Type type) {
    std::shared_ptr<GlobalVariable> variable;
    if (const auto it = globals_.find(name); it != globals_.end()) {
        variable = it->second;
    } else {
        auto& fresh = unit_.newGlobals[name];
        if (!fresh)
            fresh = std::make_shared<GlobalVariable>();
        variable = fresh;
        if (variable->type == Type::None) {
            variable->type = type;
            variable->value = Value::ofType(type);
        }
    }
    if (variable->type != Type::None && type != Type::None && variable->type != type)
        scanner_.fail("Invalid redeclaration of variable \"$" + name + "\" as a different type.");
    return {type, -1, scanner_.line(), variable};
}

Parser::Symbol Parser::declare(const std::string& name, Type type) {
    if (atTopLevel())
        return declareGlobal(name, type);
    Scope& scope = scopes_.back();
    if (const auto it = scope.find(name); it != scope.end()) {
        if (it->second.type != type && it->second.type != Type::None)
            scanner_.fail("Invalid redeclaration of variable \"$" + name +
                          "\" as a different type.");
        return it->second;
    }
    int& slots = procedure_ ? procedure_->slots : unit_.slots;
    return scope[name] = Symbol{type, slots++, scanner_.line(), nullptr};
}

void Parser::bind(Node& node, const Symbol& symbol) const {
    node.slot = symbol.slot;
    node.global = symbol.global;
    node.type = symbol.type;
}

void Parser::endOfStatement() {
    if (!scanner_.atEnd())
        scanner_.expect(";");
}

bool Parser::atDeclaration() {
    const std::string word = scanner_.peekIdentifier();
    if (declaredType(word) == Type::None)
        return false;
    const Scanner::Mark mark = scanner_.mark();
    scanner_.identifier();
    const bool found = scanner_.peek() == '$';
    scanner_.rewind(mark);
    return found;
}

NodePtr Parser::statement() {
    Nesting nesting(*this);
    const char c = scanner_.peek();
    if (c == '{')
        return block();
    if (c == ';') {
        scanner_.advance(1);
        return make(NodeKind::Block);
    }
    const std::string word = scanner_.peekIdentifier();
    if (word.empty() || !isReserved(word))
        return expressionStatement();
    if (atDeclaration())
        return declaration(false);
    if (declaredType(word) != Type::None)
        return expressionStatement(); // int(…)
    scanner_.identifier();
    if (word == "if")
        return ifStatement();
    if (word == "while")
        return whileStatement();
    if (word == "do")
        return doStatement();
    if (word == "for")
        return forStatement();
    if (word == "switch")
        return switchStatement();
    if (word == "return")
        return returnStatement();
    if (word == "proc")
        return procedure(false);
    if (word == "global")
        return scanner_.takeWord("proc") ? procedure(true) : declaration(true);
    if (word == "break" || word == "continue") {
        const bool isBreak = word == "break";
        if (isBreak ? breakables_ == 0 : loops_ == 0)
            scanner_.syntaxError();
        NodePtr node = make(isBreak ? NodeKind::Break : NodeKind::Continue);
        endOfStatement();
        return node;
    }
    scanner_.syntaxError();
}

NodePtr Parser::block() {
    scanner_.expect("{");
    NodePtr node = make(NodeKind::Block);
    scopes_.emplace_back();
    while (!scanner_.take("}")) {
        if (scanner_.atEnd())
            scanner_.syntaxError();
        adopt(*node, statement());
    }
    scopes_.pop_back();
    return node;
}

NodePtr Parser::ifStatement() {
    NodePtr node = make(NodeKind::If);
    scanner_.expect("(");
    adopt(*node, expression());
    scanner_.expect(")");
    adopt(*node, statement());
    if (scanner_.takeWord("else"))
        adopt(*node, statement());
    return node;
}

NodePtr Parser::whileStatement() {
    NodePtr node = make(NodeKind::While);
    scanner_.expect("(");
    adopt(*node, expression());
    scanner_.expect(")");
    return forBody(std::move(node));
}

NodePtr Parser::forBody(NodePtr loop) {
    ++loops_;
    ++breakables_;
    adopt(*loop, statement());
    --loops_;
    --breakables_;
    return loop;
}

NodePtr Parser::doStatement() {
    NodePtr node = forBody(make(NodeKind::DoWhile));
    if (!scanner_.takeWord("while"))
        scanner_.syntaxError();
    scanner_.expect("(");
    adopt(*node, expression());
    scanner_.expect(")");
    endOfStatement();
    return node;
}

// Expressions separated by commas, up to `end`, which is taken.
NodePtr Parser::commaList(const char* end) {
    NodePtr list = make(NodeKind::Block);
    if (scanner_.take(end))
        return list;
    do
        adopt(*list, unary(NodeKind::ExpressionStatement, expression()));
    while (scanner_.take(","));
    scanner_.expect(end);
    return list;
}

NodePtr Parser::forStatement() {
    scanner_.expect("(");
    const Scanner::Mark mark = scanner_.mark();
    const Type type = declaredType(scanner_.peekIdentifier());
    if (type != Type::None)
        scanner_.identifier();
    if (scanner_.peek() == '$') {
        scanner_.advance(1);
        NodePtr name = make(NodeKind::Variable);
        name->name = scanner_.identifier();
        if (scanner_.takeWord("in")) {
            NodePtr node = make(NodeKind::ForIn);
            NodePtr list = expression();
            Symbol symbol;
            if (type != Type::None || !find(name->name, &symbol))
                symbol =
                    declare(name->name, type != Type::None ? type : elementType(inferred(*list)));
            bind(*name, symbol);
            adopt(*node, std::move(name));
            adopt(*node, std::move(list));
            scanner_.expect(")");
            return forBody(std::move(node));
        }
    }
    scanner_.rewind(mark);

    NodePtr node = make(NodeKind::For);
    if (atDeclaration())
        adopt(*node, declaration(false));
    else
        adopt(*node, commaList(";"));
    adopt(*node, scanner_.peek() == ';' ? nullptr : expression());
    scanner_.expect(";");
    adopt(*node, commaList(")"));
    return forBody(std::move(node));
}

NodePtr Parser::switchStatement() {
    NodePtr node = make(NodeKind::Switch);
    scanner_.expect("(");
    adopt(*node, expression());
    scanner_.expect(")");
    scanner_.expect("{");
    scopes_.emplace_back();
    ++breakables_;
    bool hasDefault = false;
    while (!scanner_.take("}")) {
        NodePtr label = make(NodeKind::Case);
        if (scanner_.takeWord("case")) {
            adopt(*label, conditional());
        } else if (scanner_.takeWord("default") && !hasDefault) {
            hasDefault = true;
            label->count = 1;
        } else {
            scanner_.syntaxError();
        }
        scanner_.expect(":");
        for (;;) {
            const std::string word = scanner_.peekIdentifier();
            if (word == "case" || word == "default" || scanner_.peek() == '}')
                break;
            adopt(*label, statement());
        }
        adopt(*node, std::move(label));
    }
    --breakables_;
    scopes_.pop_back();
    return node;
}

NodePtr Parser::returnStatement() {
    NodePtr node = make(NodeKind::Return);
    if (!procedure_)
        scanner_.syntaxError();
    const bool hasValue = scanner_.peek() != ';' && !scanner_.atEnd();
    if (hasValue)
        adopt(*node, expression());
    if (hasValue && procedure_->returnType == Type::None)
        scanner_.fail("Procedure \"" + procedure_->name +
                      "\" returns a value but is declared without a return type.");
    if (!hasValue && procedure_->returnType != Type::None)
        scanner_.fail("Procedure \"" + procedure_->name + "\" must return a value of type " +
                      typeName(procedure_->returnType) + ".");
    endOfStatement();
    return node;
}

NodePtr Parser::declaration(bool global) {
    const Type type = declaredType(scanner_.peekIdentifier());
    if (type == Type::None)
        scanner_.syntaxError();
    scanner_.identifier();
    NodePtr node = make(NodeKind::Declare);
    // A global that a procedure declares with a value gets it once, not at every call.
    node->flag = global && procedure_;
    do
        adopt(*node, declareOne(type, global));
    while (scanner_.take(","));
    endOfStatement();
    return node;
}

NodePtr Parser::declareOne(Type type, bool global) {
    scanner_.expect("$");
    NodePtr target = make(NodeKind::Variable);
    target->name = scanner_.identifier();
    NodePtr firstSize, secondSize;
    int dimensions = 0;
    while (scanner_.take("[")) {
        ++dimensions;
        if (scanner_.peek() != ']')
            (dimensions == 1 ? firstSize : secondSize) = expression();
        scanner_.expect("]");
    }
    const bool matrix = type == Type::Matrix;
    if (matrix ? dimensions != 2 || !firstSize || !secondSize : dimensions > 1)
        scanner_.syntaxError();
    Type declared = type;
    if (dimensions && !matrix)
        declared = arrayType(type);

    NodePtr value;
    if (scanner_.looksAt("=") && scanner_.raw(1) != '=') {
        scanner_.advance(1);
        value = expression();
    }
    if (global) {
        const Symbol symbol = declareGlobal(target->name, declared);
        if (procedure_ || !scopes_.empty())
            scopes_.back()[target->name] = symbol;
        bind(*target, symbol);
    } else {
        const bool again = !scopes_.empty() && scopes_.back().count(target->name);
        bind(*target, declare(target->name, declared));
        target->flag = again || target->global; // keeps its value when there is no new one
    }
    target->type = declared;
    if (value) {
        NodePtr assign = make(NodeKind::Assign);
        adopt(*assign, std::move(target));
        adopt(*assign, std::move(value));
        return assign;
    }
    if (firstSize)
        adopt(*target, std::move(firstSize));
    if (secondSize)
        adopt(*target, std::move(secondSize));
    return target;
}

void Parser::parameters(Procedure& proc) {
    scanner_.expect("(");
    if (scanner_.take(")"))
        return;
    do {
        Type type = declaredType(scanner_.peekIdentifier());
        if (type == Type::None)
            scanner_.syntaxError();
        scanner_.identifier();
        scanner_.expect("$");
        const std::string name = scanner_.identifier();
        while (scanner_.take("[")) {
            if (scanner_.atNumber())
                scanner_.number();
            scanner_.expect("]");
            if (type != Type::Matrix)
                type = arrayType(type);
            if (type == Type::None)
                scanner_.syntaxError();
        }
        if (scopes_.back().count(name))
            scanner_.fail("Invalid redeclaration of variable \"$" + name + "\".");
        proc.parameters.push_back({name, type});
        declare(name, type);
    } while (scanner_.take(","));
    scanner_.expect(")");
}

NodePtr Parser::procedure(bool global) {
    if (!atTopLevel() || nesting_ > 1)
        scanner_.syntaxError();
    NodePtr node = make(NodeKind::Procedure);
    auto proc = std::make_shared<Procedure>();
    proc->file = scanner_.file();
    proc->line = scanner_.line();
    proc->isGlobal = global;
    const std::string word = scanner_.peekIdentifier();
    if (declaredType(word) != Type::None) {
        scanner_.identifier();
        proc->returnType = declaredType(word);
        if (scanner_.take("[")) {
            scanner_.expect("]");
            proc->returnType = arrayType(proc->returnType);
        }
    }
    proc->name = scanner_.identifier();
    if (isReserved(proc->name))
        scanner_.syntaxError();
    procedure_ = proc.get();
    scopes_.emplace_back();
    parameters(*proc);
    if (scanner_.peek() != '{')
        scanner_.syntaxError();
    proc->body = block();
    scopes_.pop_back();
    procedure_ = nullptr;
    node->name = proc->name;
    node->procedure = std::move(proc);
    return node;
}

NodePtr Parser::expressionStatement(bool needsEnd) {
    NodePtr node = make(NodeKind::ExpressionStatement);
    const std::string word = scanner_.peekIdentifier();
    int truth = 0;
    if (word.empty() || isReserved(word) || truthWord(word, &truth)) {
        adopt(*node, expression());
    } else {
        const Scanner::Mark mark = scanner_.mark();
        scanner_.identifier();
        if (callForm(false) == CallForm::Expression) {
            scanner_.rewind(mark);
            adopt(*node, expression());
        } else {
            adopt(*node, command(word, false));
        }
    }
    if (needsEnd)
        endOfStatement();
    return node;
}

} // namespace host::script
