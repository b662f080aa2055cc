#pragma once
#include "scene/text/SceneRecords.h"

#include <QIODevice>

#include <cstdint>
#include <string>
#include <vector>

// The lexical form of ASCII scene files.
namespace host {

// One statement, up to its semicolon. Texts joined by ( "a" + "b" ) are one token.
struct Statement {
    std::vector<Token> tokens;
    std::uint64_t line = 0; // of its first token, from 1
    // As it stands in the file, semicolon included; empty for setAttr, which may be very long.
    std::string source;

    const std::string& command() const;
};

// Splits a scene file into statements, in blocks: what is held at a time is one statement. Of a
// command that scene files do not have, everything between braces belongs to the statement.
class AsciiScanner {
public:
    explicit AsciiScanner(QIODevice& device);

    enum class Result {
        Statement, // one was read
        Damaged,   // the statement cannot be trusted; reading goes on at the next one
        Truncated, // the file ends within the statement
        End,
    };
    // A damaged or truncated statement has the tokens read so far. They go on behind the damage,
    // which rarely reaches farther than its line, up to a semicolon or a line that begins like a
    // statement: a long drawing is one statement.
    Result next(Statement& statement);
    std::uint64_t line() const { return line_; }
    // What was wrong, and where, after damaged or truncated.
    const std::string& problem() const { return problem_; }
    std::uint64_t problemLine() const { return problemLine_; }
    // The last line comment, which in a whole file says so.
    const std::string& lastComment() const { return lastComment_; }

private:
    int peek();
    int take();
    bool skipBlank();
    void readLineComment();
    bool skipBlockComment();
    bool readQuoted(std::string& text);
    void readWord(std::string& text);
    Result readToken(Statement& statement, int first);
    Result readText(Statement& statement, Token token);
    bool endsHere(const Statement& statement);
    void notice(const std::string& problem);
    void addToken(Statement& statement, Token token);
    bool endsBlock(const Statement& statement);
    bool isAtStatement();

    QIODevice& device_;
    std::vector<char> block_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t line_ = 1;
    int last_ = '\n';               // the character before
    std::string* source_ = nullptr; // where the characters taken are kept
    int depth_ = 0;                 // of braces within the statement
    std::size_t group_ = 0;         // place of an open ( of the statement, and 1
    std::string problem_;
    std::uint64_t problemLine_ = 0;
    std::string lastComment_;
};

// Commands that may begin a statement of a scene file.
bool isSceneFileCommand(const std::string& name);

} // namespace host
