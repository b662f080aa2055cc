#include "script/Parser.h"

#include <algorithm>
#include <cstring>

namespace host::script {

namespace {

// Deeper trees would make evaluating and deleting them recurse too far.
constexpr int kMaximumDepth = 1500;
constexpr int kMaximumNesting = 250;

struct BinaryOperator {
    const char* text;
    int precedence;
    NodeKind kind;
    Operator op;
};

// Longer texts before their beginnings.
constexpr BinaryOperator kBinaryOperators[] = {
    {"||", 1, NodeKind::Or, Operator::None},
    {"&&", 2, NodeKind::And, Operator::None},
    {"==", 3, NodeKind::Binary, Operator::Equal},
    {"!=", 3, NodeKind::Binary, Operator::NotEqual},
    {"<=", 4, NodeKind::Binary, Operator::LessEqual},
    {">=", 4, NodeKind::Binary, Operator::GreaterEqual},
    {"<", 4, NodeKind::Binary, Operator::Less},
    {">", 4, NodeKind::Binary, Operator::Greater},
    {"+", 5, NodeKind::Binary, Operator::Add},
    {"-", 5, NodeKind::Binary, Operator::Subtract},
    {"*", 6, NodeKind::Binary, Operator::Multiply},
    {"/", 6, NodeKind::Binary, Operator::Divide},
    {"%", 6, NodeKind::Binary, Operator::Modulo},
    {"^", 6, NodeKind::Binary, Operator::Cross},
};

const BinaryOperator* binaryOperatorAt(Scanner& scanner) {
    scanner.skipBlanks();
    for (const BinaryOperator& candidate : kBinaryOperators) {
        const std::size_t length = std::strlen(candidate.text);
        if (!scanner.looksAt(candidate.text))
            continue;
        const char next = scanner.raw(length);
        // << and >> are brackets of vectors; "+=" and the like assign.
        if ((candidate.text[0] == '<' || candidate.text[0] == '>') && length == 1 &&
            next == candidate.text[0])
            return nullptr;
        if (candidate.precedence >= 5 && next == '=')
            return nullptr;
        return &candidate;
    }
    return nullptr;
}

Type typeOfWord(const std::string& word) {
    if (word == "int")
        return Type::Int;
    if (word == "float")
        return Type::Float;
    if (word == "string")
        return Type::String;
    if (word == "vector")
        return Type::Vector;
    if (word == "matrix")
        return Type::Matrix;
    return Type::None;
}

} // namespace

Parser::Nesting::Nesting(Parser& parser) : parser_(parser) {
    if (++parser_.nesting_ > kMaximumNesting) {
        --parser_.nesting_;
        parser_.scanner_.fail("The script is nested too deeply.");
    }
}

NodePtr Parser::make(NodeKind kind) const {
    auto node = std::make_unique<Node>();
    node->kind = kind;
    node->line = scanner_.line();
    return node;
}

void Parser::adopt(Node& parent, NodePtr child) const {
    if (child) {
        parent.depth = std::max(parent.depth, child->depth + 1);
        if (parent.depth > kMaximumDepth)
            scanner_.fail("The script is nested too deeply.");
    }
    parent.children.push_back(std::move(child));
}

NodePtr Parser::unary(NodeKind kind, NodePtr child) const {
    NodePtr node = make(kind);
    adopt(*node, std::move(child));
    return node;
}

Operator Parser::assignmentOperator(Scanner& scanner, bool* isAssignment) {
    static constexpr struct {
        const char* text;
        Operator op;
    } table[] = {{"+=", Operator::Add},    {"-=", Operator::Subtract}, {"*=", Operator::Multiply},
                 {"/=", Operator::Divide}, {"%=", Operator::Modulo},   {"^=", Operator::Cross}};
    *isAssignment = true;
    for (const auto& row : table)
        if (scanner.take(row.text))
            return row.op;
    if (scanner.looksAt("=") && scanner.raw(1) != '=') {
        scanner.advance(1);
        return Operator::None;
    }
    *isAssignment = false;
    return Operator::None;
}

NodePtr Parser::expression() {
    Nesting nesting(*this);
    const int line = (scanner_.skipBlanks(), scanner_.line());
    NodePtr left = conditional();
    // The components of a vector can be read, not assigned.
    if (left->kind != NodeKind::Variable && left->kind != NodeKind::Index)
        return left;
    bool assigns = false;
    const Operator op = assignmentOperator(scanner_, &assigns);
    if (!assigns)
        return left;

    NodePtr right = expression();
    // An assignment to a name nobody declared declares it, with the type of the value.
    Node* base = left.get();
    while (base->kind != NodeKind::Variable)
        base = base->children[0].get();
    if (base->slot < 0 && !base->global) {
        if (op != Operator::None)
            scanner_.fail("\"$" + base->name + "\" is an undeclared variable.");
        Type type = inferred(*right);
        if (left->kind == NodeKind::Index)
            type = arrayType(type);
        bind(*base, declare(base->name, type));
    }
    NodePtr node = make(NodeKind::Assign);
    node->op = op;
    node->line = line;
    adopt(*node, std::move(left));
    adopt(*node, std::move(right));
    return node;
}

NodePtr Parser::conditional() {
    NodePtr condition = binary(1);
    if (scanner_.peek() != '?')
        return condition;
    Nesting nesting(*this);
    scanner_.advance(1);
    NodePtr node = make(NodeKind::Conditional);
    adopt(*node, std::move(condition));
    adopt(*node, expression());
    scanner_.expect(":");
    adopt(*node, expression());
    return node;
}

NodePtr Parser::binary(int minimumPrecedence) {
    NodePtr left = unaryExpression();
    for (;;) {
        const BinaryOperator* found = binaryOperatorAt(scanner_);
        if (!found || found->precedence < minimumPrecedence)
            return left;
        scanner_.advance(std::strlen(found->text));
        NodePtr node = make(found->kind);
        node->op = found->op;
        adopt(*node, std::move(left));
        adopt(*node, binary(found->precedence + 1));
        left = std::move(node);
    }
}

NodePtr Parser::unaryExpression() {
    Nesting nesting(*this);
    scanner_.skipBlanks();
    for (const char* step : {"++", "--"}) {
        if (!scanner_.take(step))
            continue;
        NodePtr node = make(NodeKind::Increment);
        node->flag = true;
        node->count = step[0] == '+' ? 1 : -1;
        scanner_.skipBlanks();
        if (scanner_.raw() != '$')
            scanner_.syntaxError();
        adopt(*node, variable(false));
        if (node->children[0]->kind == NodeKind::Component)
            scanner_.syntaxError();
        return node;
    }
    const char c = scanner_.raw();
    if (c == '-' || c == '!') {
        scanner_.advance(1);
        NodePtr node = make(NodeKind::Unary);
        node->name = std::string(1, c);
        adopt(*node, unaryExpression());
        return node;
    }
    if (c == '+') {
        scanner_.advance(1);
        return unaryExpression();
    }
    NodePtr node = primary();
    if (node->kind == NodeKind::Variable || node->kind == NodeKind::Index) {
        const bool up = scanner_.looksAt("++");
        if (up || scanner_.looksAt("--")) {
            scanner_.advance(2);
            NodePtr increment = unary(NodeKind::Increment, std::move(node));
            increment->count = up ? 1 : -1;
            return increment;
        }
    }
    return node;
}

NodePtr Parser::primary() {
    const char c = scanner_.peek();
    if (c == '$')
        return variable(true);
    if (c == '"') {
        NodePtr node = make(NodeKind::Literal);
        node->value = scanner_.stringLiteral();
        return node;
    }
    if (scanner_.atNumber()) {
        NodePtr node = make(NodeKind::Literal);
        node->value = scanner_.number();
        if (isIdentifierStart(scanner_.raw()))
            scanner_.syntaxError();
        return node;
    }
    if (c == '(')
        return parenthesised();
    if (c == '`')
        return backquoted();
    if (c == '{')
        return arrayLiteral();
    if (scanner_.looksAt("<<"))
        return vectorLiteral();
    const std::string word = scanner_.peekIdentifier();
    if (word.empty())
        scanner_.syntaxError();
    scanner_.advance(word.size());
    int truth = 0;
    if (scanner_.peek() == '(') {
        const Type cast = typeOfWord(word);
        if (cast == Type::None)
            return functionCall(word);
        scanner_.advance(1);
        NodePtr node = unary(NodeKind::Cast, expression());
        node->type = cast;
        scanner_.expect(")");
        return node;
    }
    if (!truthWord(word, &truth))
        scanner_.syntaxError();
    NodePtr node = make(NodeKind::Literal);
    node->value = truth;
    return node;
}

NodePtr Parser::parenthesised() {
    scanner_.expect("(");
    const Scanner::Mark mark = scanner_.mark();
    const Type cast = typeOfWord(scanner_.peekIdentifier());
    if (cast != Type::None) {
        scanner_.identifier();
        if (scanner_.take(")")) {
            NodePtr node = unary(NodeKind::Cast, unaryExpression());
            node->type = cast;
            return node;
        }
        scanner_.rewind(mark);
    }
    NodePtr inner = expression();
    scanner_.expect(")");
    // ($a) is a value: it can be neither assigned to nor changed by a command.
    return unary(NodeKind::Cast, std::move(inner));
}

NodePtr Parser::variable(bool mayDeclare) {
    scanner_.expect("$");
    if (!isIdentifierStart(scanner_.raw()))
        scanner_.syntaxError();
    NodePtr base = make(NodeKind::Variable);
    base->name = scanner_.identifier();
    Node* root = base.get();

    NodePtr node = std::move(base);
    int subscripts = 0;
    // Between the words of a command, a blank ends the variable.
    while ((mayDeclare ? scanner_.peek() : scanner_.raw()) == '[') {
        if (++subscripts > 2)
            scanner_.syntaxError();
        scanner_.advance(1);
        NodePtr index = subscripts == 1 ? unary(NodeKind::Index, std::move(node)) : std::move(node);
        adopt(*index, expression());
        scanner_.expect("]");
        node = std::move(index);
    }
    if (scanner_.raw() == '.' && std::strchr("xyz", scanner_.raw(1)) && scanner_.raw(1) &&
        !isIdentifierPart(scanner_.raw(2))) {
        NodePtr component = unary(NodeKind::Component, std::move(node));
        component->component = scanner_.raw(1);
        scanner_.advance(2);
        node = std::move(component);
    }

    Symbol symbol;
    if (find(root->name, &symbol)) {
        bind(*root, symbol);
        return node;
    }
    const bool assigned = mayDeclare && scanner_.peek() == '=' && scanner_.raw(1) != '=';
    if (!assigned)
        scanner_.fail("\"$" + root->name + "\" is an undeclared variable.");
    return node;
}

NodePtr Parser::vectorLiteral() {
    scanner_.expect("<<");
    NodePtr node = make(NodeKind::VectorLiteral);
    int rowLength = 0, columns = 0;
    bool rows = false;
    for (;;) {
        adopt(*node, expression());
        ++rowLength;
        if (scanner_.take(","))
            continue;
        if (columns && rowLength != columns)
            scanner_.fail("Rows of a matrix must have the same length.");
        columns = rowLength;
        rowLength = 0;
        if (!scanner_.take(";"))
            break;
        rows = true;
    }
    scanner_.expect(">>");
    if (rows || columns != 3) {
        node->kind = NodeKind::MatrixLiteral;
        node->count = columns;
    }
    return node;
}

NodePtr Parser::arrayLiteral() {
    Nesting nesting(*this);
    scanner_.expect("{");
    NodePtr node = make(NodeKind::ArrayLiteral);
    if (scanner_.take("}"))
        return node;
    do
        adopt(*node, expression());
    while (scanner_.take(","));
    scanner_.expect("}");
    return node;
}

NodePtr Parser::backquoted() {
    Nesting nesting(*this);
    scanner_.expect("`");
    if (!scanner_.atIdentifier())
        scanner_.syntaxError();
    const std::string name = scanner_.identifier();
    NodePtr node = command(name, true);
    scanner_.take(";");
    scanner_.expect("`");
    return node;
}

NodePtr Parser::functionCall(const std::string& name) {
    NodePtr node = make(NodeKind::Call);
    node->name = name;
    scanner_.expect("(");
    if (scanner_.take(")"))
        return node;
    do
        adopt(*node, expression());
    while (scanner_.take(","));
    scanner_.expect(")");
    return node;
}

bool Parser::atCommandEnd(bool inBackquotes) {
    const char c = scanner_.peek();
    return c == ';' || scanner_.atEnd() || (inBackquotes && c == '`');
}

// A name before an opening parenthesis may begin name(a, b), the command `name (a) b`, or an
// expression such as name(a) > 0; what follows the closing parenthesis decides.
Parser::CallForm Parser::callForm(bool inBackquotes) {
    if (scanner_.peek() != '(')
        return CallForm::Command;
    const Scanner::Mark mark = scanner_.mark();
    CallForm form = CallForm::Function;
    if (scanner_.skipParentheses() && !atCommandEnd(inBackquotes)) {
        form = CallForm::Command;
        const BinaryOperator* op = binaryOperatorAt(scanner_);
        const char c = scanner_.raw(), next = scanner_.raw(1);
        const bool sign = c == '-' && next != ' ';
        if (!inBackquotes && ((op && !sign && c != '*') || c == '?' ||
                              (c == '*' && (next == ' ' || next == '$' || next == '('))))
            form = CallForm::Expression;
    }
    scanner_.rewind(mark);
    return form;
}

NodePtr Parser::command(const std::string& name, bool inBackquotes) {
    if (callForm(inBackquotes) == CallForm::Function)
        return functionCall(name);
    NodePtr node = make(NodeKind::Call);
    node->name = name;
    while (!atCommandEnd(inBackquotes))
        adopt(*node, commandArgument());
    return node;
}

NodePtr Parser::commandArgument() {
    Nesting nesting(*this);
    const char c = scanner_.peek();
    if (c == '$')
        return variable(false);
    if (c == '(')
        return parenthesised();
    if (c == '`')
        return backquoted();
    if (c == '{')
        return arrayLiteral();
    if (scanner_.looksAt("<<"))
        return vectorLiteral();
    NodePtr node = make(NodeKind::Literal);
    if (c == '"')
        node->value = scanner_.stringLiteral();
    else if (c == '-' &&
             (scanner_.raw(1) == '$' || scanner_.raw(1) == '(' || scanner_.raw(1) == '`'))
        return unaryExpression();
    else
        node->value = scanner_.commandWord();
    return node;
}

Type Parser::inferred(const Node& node) const {
    switch (node.kind) {
    case NodeKind::Literal:
        return node.value.type();
    case NodeKind::VectorLiteral:
        return Type::Vector;
    case NodeKind::MatrixLiteral:
        return Type::Matrix;
    case NodeKind::ArrayLiteral:
        return node.children.empty() ? Type::None : arrayType(inferred(*node.children[0]));
    case NodeKind::Variable: {
        Symbol symbol;
        return find(node.name, &symbol) ? symbol.type : Type::None;
    }
    case NodeKind::Index: {
        const Type type = inferred(*node.children[0]);
        return isArray(type) ? elementType(type) : Type::Float;
    }
    case NodeKind::Component:
        return Type::Float;
    case NodeKind::And:
    case NodeKind::Or:
        return Type::Int;
    case NodeKind::Unary:
        return node.name == "!" ? Type::Int : inferred(*node.children[0]);
    case NodeKind::Binary: {
        if (node.op >= Operator::Equal)
            return Type::Int;
        const Type a = inferred(*node.children[0]), b = inferred(*node.children[1]);
        if (a == Type::None || b == Type::None)
            return Type::None;
        if (a == Type::String || b == Type::String)
            return Type::String;
        if (a == Type::Vector && b == Type::Vector && node.op == Operator::Multiply)
            return Type::Float;
        return std::max(a, b) <= Type::Vector ? std::max(a, b) : Type::None;
    }
    case NodeKind::Conditional:
        return inferred(*node.children[1]);
    case NodeKind::Assign:
    case NodeKind::Increment:
        return inferred(*node.children[0]);
    case NodeKind::Cast:
        return node.type != Type::None ? node.type : inferred(*node.children[0]);
    default:
        return Type::None;
    }
}

} // namespace host::script
