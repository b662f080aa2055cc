#pragma once
#include "scene/text/SceneRecords.h"

#include <QIODevice>

#include <cstdint>
#include <string>
#include <vector>

// The lexical form of ASCII scene files.
namespace host {

// One statement, up to its semicolon.
struct Statement {
    std::vector<Token> tokens;
    std::uint64_t line = 0; // of its first token, from 1
};

// Splits a scene file into statements, in blocks: what is held at a time is one statement.
class AsciiScanner {
public:
    explicit AsciiScanner(QIODevice& device);

    enum class Result {
        statement, // one was read
        damaged,   // the text at line() is not a statement; reading goes on at the next one
        truncated, // the file ends within a statement
        end,
    };
    Result next(Statement& statement);
    std::uint64_t line() const { return line_; }
    // What was wrong, after damaged or truncated.
    const std::string& problem() const { return problem_; }
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
    void skipToStatement();

    QIODevice& device_;
    std::vector<char> block_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t line_ = 1;
    std::string problem_;
    std::string lastComment_;
};

// Commands that may begin a statement of a scene file.
bool isSceneFileCommand(const std::string& name);

} // namespace host
