#pragma once

#include "script/Value.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// The syntax tree the parser makes and the evaluator walks. Variables are resolved while parsing:
/// a node holds the global variable itself, or the slot of a local one in its frame.
namespace host::script {

/// A global variable lives as long as any code that names it. `type` is None until the first
/// assignment decides it.
struct GlobalVariable {
    Type type = Type::None;
    Value value;
    bool initialised = false; ///< a declaration has run
};

enum class NodeKind {
    Literal,
    ArrayLiteral,  // children: elements
    VectorLiteral, // children: x, y, z
    MatrixLiteral, // children: cells; count: columns
    Variable,
    Index,     // children: variable, index [, column]
    Component, // children: variable or index; op: 'x' 'y' 'z'
    Unary,     // op: '-' '!'
    Binary,
    And,
    Or,
    Conditional,
    Assign,    // children: target, value; op: Operator or Assign
    Increment, // children: target; count: +1/-1; flag: prefix
    Cast,      // type
    Call,      // name; children: arguments

    ExpressionStatement,
    Declare, // children: declarations as Assign or Variable nodes; flag: initialise once
    Block,
    If,      // condition, then [, else]
    While,   // condition, body
    DoWhile, // body, condition
    For,     // init block, condition (or null), step block, body
    ForIn,   // variable, list, body
    Switch,  // value, Case…
    Case,    // count: 1 for default; children: [label,] statements…
    Break,
    Continue,
    Return,
    Procedure // name
};

enum class Operator {
    None,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Cross,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual
};

struct Procedure;

struct Node {
    NodeKind kind = NodeKind::Block;
    Operator op = Operator::None;
    Type type = Type::None; ///< of a declaration, cast or literal array
    bool flag = false;
    char component = 0;
    int line = 0;
    int count = 0;
    int depth = 1; ///< of the tree below, which bounds recursion over it
    int slot = -1; ///< of a local variable
    std::string name;
    Value value;
    std::shared_ptr<GlobalVariable> global;
    std::shared_ptr<Procedure> procedure;
    std::vector<std::unique_ptr<Node>> children;
};

using NodePtr = std::unique_ptr<Node>;

struct Parameter {
    std::string name;
    Type type = Type::None;
};

/// Procedures of one script that are not `global`; shared by the code of that script.
using LocalProcedures = std::unordered_map<std::string, std::shared_ptr<Procedure>>;

struct Procedure {
    std::string name, file;
    int line = 0;
    bool isGlobal = false;
    Type returnType = Type::None;
    std::vector<Parameter> parameters; ///< in the first slots of the frame
    int slots = 0;
    NodePtr body;
    /// The file's own procedures: a global procedure keeps them alive, a local one is kept by them.
    std::shared_ptr<LocalProcedures> locals;
    std::weak_ptr<LocalProcedures> siblings;
};

/// A parsed script.
struct Unit {
    std::string file;
    int slots = 0; ///< of variables declared in blocks at the top level
    std::vector<NodePtr> statements;
    std::shared_ptr<LocalProcedures> locals;
    /// Global variables the script names that do not exist yet.
    std::unordered_map<std::string, std::shared_ptr<GlobalVariable>> newGlobals;
};

using GlobalVariables = std::unordered_map<std::string, std::shared_ptr<GlobalVariable>>;

/// Parses a whole script, or throws ScriptError with file and line. Changes nothing: new global
/// variables are listed in the unit.
Unit parseScript(const std::string& text, const std::string& file, const GlobalVariables& globals);

} // namespace host::script
