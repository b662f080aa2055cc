#pragma once

#include "script/Ast.h"
#include "script/Scanner.h"

namespace host::script {

/// Recursive descent over the scanner. Expressions are in ParserExpressions.cpp, statements in
/// ParserStatements.cpp.
class Parser {
public:
    Parser(const std::string& text, const std::string& file, const GlobalVariables& globals);
    Unit parse();

private:
    struct Symbol {
        Type type = Type::None;
        int slot = -1;
        int line = 0;
        std::shared_ptr<GlobalVariable> global;
    };
    using Scope = std::unordered_map<std::string, Symbol>;

    /// Bounds the recursion of the parser itself.
    class Nesting {
    public:
        explicit Nesting(Parser& parser);
        ~Nesting() { --parser_.nesting_; }

    private:
        Parser& parser_;
    };

    NodePtr make(NodeKind kind) const;
    void adopt(Node& parent, NodePtr child) const;
    NodePtr unary(NodeKind kind, NodePtr child) const;

    // Statements
    NodePtr statement();
    NodePtr block();
    NodePtr ifStatement();
    NodePtr whileStatement();
    NodePtr doStatement();
    NodePtr forStatement();
    NodePtr forBody(NodePtr loop);
    NodePtr switchStatement();
    NodePtr returnStatement();
    NodePtr declaration(bool global);
    NodePtr declareOne(Type type, bool global);
    NodePtr procedure(bool global);
    void parameters(Procedure& procedure);
    NodePtr expressionStatement(bool needsEnd = true);
    NodePtr commaList(const char* end);
    void endOfStatement();
    bool atDeclaration();

    // Expressions
    NodePtr expression();
    NodePtr conditional();
    NodePtr binary(int minimumPrecedence);
    NodePtr unaryExpression();
    NodePtr primary();
    NodePtr variable(bool mayDeclare);
    NodePtr vectorLiteral();
    NodePtr arrayLiteral();
    NodePtr backquoted();
    NodePtr parenthesised();
    NodePtr functionCall(const std::string& name);
    NodePtr command(const std::string& name, bool inBackquotes);
    NodePtr commandArgument();
    bool atCommandEnd(bool inBackquotes);
    enum class CallForm { Function, Command, Expression };
    CallForm callForm(bool inBackquotes);
    static Operator assignmentOperator(Scanner& scanner, bool* isAssignment);
    Type inferred(const Node& node) const;

    // Names
    bool find(const std::string& name, Symbol* symbol) const;
    Symbol declare(const std::string& name, Type type);
    Symbol declareGlobal(const std::string& name, Type type);
    void bind(Node& node, const Symbol& symbol) const;
    bool atTopLevel() const { return !procedure_ && scopes_.empty(); }

    Scanner scanner_;
    const GlobalVariables& globals_;
    Unit unit_;
    std::vector<Scope> scopes_; ///< innermost last; empty at the top level
    Procedure* procedure_ = nullptr;
    int nesting_ = 0;
    int loops_ = 0;      ///< enclosing loops, for `continue`
    int breakables_ = 0; ///< enclosing loops and switches, for `break`
};

} // namespace host::script
