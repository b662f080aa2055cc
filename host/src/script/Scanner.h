#pragma once

#include "script/Value.h"

#include <string>

namespace host::script {

/// Reads script text. What a character means depends on whether the parser is in an expression or
/// among a command's arguments, so there is no token stream: the parser asks for what it expects
/// and can go back.
class Scanner {
public:
    Scanner(const std::string& text, std::string file);

    struct Mark {
        std::size_t position;
        int line;
    };
    Mark mark() const { return {position_, line_}; }
    void rewind(Mark m);

    int line() const { return line_; }
    const std::string& file() const { return file_; }

    /// Skips blanks, line breaks and both kinds of comments.
    void skipBlanks();

    /// The next character after blanks, 0 at the end. '\0' in the text counts as a wrong character.
    char peek();
    /// The character `offset` after the current position, without skipping anything.
    char raw(std::size_t offset = 0) const;
    bool atEnd();

    /// Takes `text` when it comes next.
    bool take(const char* text);
    /// Takes `word` when it comes next as a whole word.
    bool takeWord(const char* word);
    bool looksAt(const char* text);
    void expect(const char* text); ///< syntax error when it does not come next
    void advance(std::size_t characters) { position_ += characters; }

    /// At an opening parenthesis: moves past the matching one. False when there is none.
    bool skipParentheses();

    bool atIdentifier();
    /// [A-Za-z_][A-Za-z0-9_]*
    std::string identifier();
    /// The identifier that comes next, without taking it; "" when there is none.
    std::string peekIdentifier();

    bool atNumber(); ///< digit, or a point and a digit
    Value number();
    std::string stringLiteral(); ///< at the opening quote

    /// A bare word among command arguments (node|path.attr, -flag, 1:10); a word that is a number
    /// or true/on/yes/false/off/no becomes that. Syntax error when none is there.
    Value commandWord();

    [[noreturn]] void fail(const std::string& message) const;
    [[noreturn]] void syntaxError() const { fail("Syntax error"); }

private:
    const std::string& text_;
    std::string file_;
    std::size_t position_ = 0;
    int line_ = 1;
};

bool isIdentifierStart(char c);
bool isIdentifierPart(char c);

/// Whether a word is one of the language's truth values; `*value` receives 1 or 0.
bool truthWord(const std::string& word, int* value);

} // namespace host::script
