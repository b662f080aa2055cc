#include "scene/files/AsciiTokens.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

constexpr std::size_t kBlockSize = 64 * 1024;
constexpr std::size_t kCommentLimit = 4096;

bool isBlank(int c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

bool endsWord(int c) {
    return c < 0 || isBlank(c) || c == ';' || c == '"';
}

} // namespace

bool isSceneFileCommand(const std::string& name) {
    static const std::array<const char*, 16> names = {
        "requires", "currentUnit", "fileInfo",      "createNode",   "select",   "setAttr",
        "addAttr",  "connectAttr", "rename",        "parent",       "lockNode", "relationship",
        "file",     "workspace",   "dataStructure", "applyMetadata"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

const std::string& Statement::command() const {
    static const std::string none;
    return tokens.empty() || tokens.front().quoted ? none : tokens.front().text;
}

AsciiScanner::AsciiScanner(QIODevice& device) : device_(device), block_(kBlockSize) {
}

int AsciiScanner::peek() {
    if (at_ == filled_) {
        const qint64 got = device_.read(block_.data(), qint64(block_.size()));
        if (got <= 0)
            return -1;
        at_ = 0;
        filled_ = std::size_t(got);
    }
    return static_cast<unsigned char>(block_[at_]);
}

int AsciiScanner::take() {
    const int c = peek();
    if (c >= 0) {
        ++at_;
        last_ = c;
        if (c == '\n')
            ++line_;
        if (source_)
            *source_ += char(c);
    }
    return c;
}

void AsciiScanner::readLineComment() {
    lastComment_.clear();
    for (int c = peek(); c >= 0 && c != '\n'; c = peek()) {
        if (lastComment_.size() < kCommentLimit && c != '\r')
            lastComment_ += char(c);
        take();
    }
}

bool AsciiScanner::skipBlockComment() {
    take();
    for (int c = take(); c >= 0; c = take()) {
        if (c == '*' && peek() == '/') {
            take();
            return true;
        }
    }
    notice("comment without end");
    return false;
}

// False at the end of the file and, with problem_ set, within an unclosed comment.
bool AsciiScanner::skipBlank() {
    for (;;) {
        const int c = peek();
        if (c < 0)
            return false;
        if (!isBlank(c))
            return true;
        take();
    }
}

bool AsciiScanner::readQuoted(std::string& text) {
    take();
    for (;;) {
        // Long runs are taken at once: hexadecimal texts have many megabytes.
        if (peek() < 0) {
            notice("text without closing quote");
            return false;
        }
        std::size_t run = at_;
        while (run < filled_ && block_[run] != '"' && block_[run] != '\\' && block_[run] != '\n')
            ++run;
        text.append(block_.data() + at_, run - at_);
        if (source_)
            source_->append(block_.data() + at_, run - at_);
        if (run > at_)
            last_ = static_cast<unsigned char>(block_[run - 1]);
        at_ = run;
        if (at_ == filled_)
            continue;
        if (block_[at_] == '\n') {
            notice("line break within a text");
            return false;
        }
        const int c = take();
        if (c == '"')
            return true;
        const int escaped = take();
        switch (escaped) {
        case 'n':
            text += '\n';
            break;
        case 't':
            text += '\t';
            break;
        case 'r':
            text += '\r';
            break;
        case '\r': // the text goes on in the next line
            if (peek() == '\n')
                take();
            break;
        case '\n':
            break;
        case -1:
            notice("text without closing quote");
            return false;
        default:
            text += char(escaped);
        }
    }
}

void AsciiScanner::readWord(std::string& text) {
    for (int c = peek(); !endsWord(c); c = peek())
        text += char(take());
}

// Whether the word that comes next may begin a statement; nothing is taken.
bool AsciiScanner::isAtStatement() {
    constexpr std::size_t longestCommand = 16;
    if (at_ + longestCommand >= filled_ && filled_ > 0) {
        // Bring the rest of the block and more of the file together, so that the word is whole.
        std::copy(block_.begin() + std::ptrdiff_t(at_), block_.begin() + std::ptrdiff_t(filled_),
                  block_.begin());
        filled_ -= at_;
        at_ = 0;
        const qint64 got = device_.read(block_.data() + filled_, qint64(block_.size() - filled_));
        filled_ += std::size_t(std::max<qint64>(got, 0));
    }
    std::string name;
    for (std::size_t i = at_; i < filled_ && name.size() < longestCommand; ++i) {
        if (endsWord(static_cast<unsigned char>(block_[i])))
            break;
        name += block_[i];
    }
    return isSceneFileCommand(name) || name.compare(0, 2, "//") == 0;
}

// Joins ( "a" + "b" ) to one text, as it comes.
void AsciiScanner::addToken(Statement& statement, Token token) {
    std::vector<Token>& tokens = statement.tokens;
    if (group_ == 0) {
        if (!token.quoted && token.text == "(")
            group_ = tokens.size() + 1;
    } else if (tokens.size() == group_) {
        if (!token.quoted)
            group_ = 0;
    } else if (tokens.size() == group_ + 1) {
        if (!token.quoted && token.text == ")") {
            tokens.erase(tokens.end() - 2);
            group_ = 0;
            return;
        }
        if (token.quoted || token.text != "+")
            group_ = 0;
    } else if (token.quoted) {
        tokens.pop_back();
        tokens.back().text += token.text;
        return;
    } else {
        group_ = 0;
    }
    tokens.push_back(std::move(token));
}

// The first problem of a statement is the one that is told.
void AsciiScanner::notice(const std::string& problem) {
    if (!problem_.empty())
        return;
    problem_ = problem;
    problemLine_ = line_;
}

// After a text that its line did not close: reading goes on behind it, up to a line that begins
// like a statement.
AsciiScanner::Result AsciiScanner::readText(Statement& statement, Token token) {
    addToken(statement, std::move(token));
    source_ = nullptr;
    statement.source.clear();
    if (!skipBlank())
        return Result::Truncated;
    return isAtStatement() ? Result::Damaged : Result::Statement;
}

// Whether a semicolon ends the statement. Behind one that got into the values of a setAttr stands
// another value.
bool AsciiScanner::endsHere(const Statement& statement) {
    if (depth_ > 0)
        return false;
    if (statement.command() != "setAttr" || !skipBlank())
        return true;
    const int c = peek();
    if (c != '"' && c != '-' && !(c >= '0' && c <= '9'))
        return true;
    notice("semicolon among values");
    return false;
}

AsciiScanner::Result AsciiScanner::readToken(Statement& statement, int first) {
    Token token;
    if (first == '"') {
        token.quoted = true;
        if (!readQuoted(token.text))
            return readText(statement, std::move(token));
    } else {
        readWord(token.text);
        if (token.text.compare(0, 2, "//") == 0) {
            // The word may have taken the beginning of the comment only.
            readLineComment();
            lastComment_.insert(0, token.text);
            return Result::Statement;
        }
        if (token.text.compare(0, 2, "/*") == 0) {
            const bool closed =
                token.text.size() >= 4 && token.text.compare(token.text.size() - 2, 2, "*/") == 0;
            return closed || skipBlockComment() ? Result::Statement : Result::Truncated;
        }
        if (!isSceneFileCommand(statement.command()))
            for (const char c : token.text)
                depth_ += c == '{' ? 1 : c == '}' ? -1 : 0;
    }
    if (statement.tokens.empty() && !token.quoted && token.text == "setAttr") {
        source_ = nullptr;
        statement.source.clear();
    }
    addToken(statement, std::move(token));
    return Result::Statement;
}

// A closing brace ends the statement that it closes, without a semicolon.
bool AsciiScanner::endsBlock(const Statement& statement) {
    const Token& last = statement.tokens.back();
    return depth_ <= 0 && !last.quoted && last.text.find('}') != std::string::npos &&
           !isSceneFileCommand(statement.command());
}

AsciiScanner::Result AsciiScanner::next(Statement& statement) {
    statement.tokens.clear();
    statement.source.clear();
    problem_.clear();
    source_ = nullptr;
    depth_ = 0;
    group_ = 0;
    while (skipBlank()) {
        const int c = peek();
        const bool atLineStart = last_ == '\n';
        if (depth_ > 0 && atLineStart && c != '/' && isAtStatement()) {
            notice("block without end");
            return Result::Damaged;
        }
        if (c == ';') {
            take();
            if (!statement.tokens.empty() && endsHere(statement))
                return problem_.empty() ? Result::Statement : Result::Damaged;
            continue;
        }
        if (statement.tokens.empty()) {
            statement.line = line_;
            statement.source.clear();
            source_ = &statement.source;
        }
        const Result result = readToken(statement, c);
        if (result != Result::Statement)
            return result;
        if (!statement.tokens.empty() && endsBlock(statement))
            return Result::Statement;
    }
    if (statement.tokens.empty())
        return Result::End;
    notice("the file ends within a statement");
    return Result::Truncated;
}

} // namespace host
