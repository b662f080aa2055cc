#include "scene/files/AsciiTokens.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

constexpr std::size_t blockSize = 64 * 1024;
constexpr std::size_t commentLimit = 4096;

bool isBlank(int c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

bool endsWord(int c) {
    return c < 0 || isBlank(c) || c == ';' || c == '"';
}

} // namespace

bool isSceneFileCommand(const std::string& name) {
    static const std::array<const char*, 12> names = {
        "requires",    "currentUnit", "fileInfo", "createNode", "select",   "setAttr",
        "connectAttr", "addAttr",     "rename",   "parent",     "lockNode", "relationship"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

AsciiScanner::AsciiScanner(QIODevice& device) : device_(device), block_(blockSize) {
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
        if (c == '\n')
            ++line_;
    }
    return c;
}

void AsciiScanner::readLineComment() {
    lastComment_.clear();
    for (int c = peek(); c >= 0 && c != '\n'; c = peek()) {
        if (lastComment_.size() < commentLimit && c != '\r')
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
    problem_ = "comment without end";
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
            problem_ = "text without closing quote";
            return false;
        }
        std::size_t run = at_;
        while (run < filled_ && block_[run] != '"' && block_[run] != '\\' && block_[run] != '\n')
            ++run;
        text.append(block_.data() + at_, run - at_);
        at_ = run;
        if (at_ == filled_)
            continue;
        if (block_[at_] == '\n') {
            problem_ = "line break within a text";
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
        case -1:
            problem_ = "text without closing quote";
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

// After damage the rest of the statement cannot be trusted, and its end cannot be told from a
// semicolon within a text. The next line that begins like a statement is where sense resumes.
void AsciiScanner::skipToStatement() {
    constexpr std::size_t longestCommand = 16;
    for (;;) {
        for (int c = peek(); c >= 0 && c != '\n'; c = peek()) {
            const std::size_t run = at_;
            while (at_ < filled_ && block_[at_] != '\n')
                ++at_;
            if (run == at_)
                break;
        }
        if (take() < 0)
            return;
        while (peek() == '\t' || peek() == ' ')
            take();
        if (at_ + longestCommand >= filled_ && filled_ > 0) {
            // Bring the rest of the block and more of the file together, so that the word is whole.
            std::copy(block_.begin() + std::ptrdiff_t(at_),
                      block_.begin() + std::ptrdiff_t(filled_), block_.begin());
            filled_ -= at_;
            at_ = 0;
            const qint64 got =
                device_.read(block_.data() + filled_, qint64(block_.size() - filled_));
            filled_ += std::size_t(std::max<qint64>(got, 0));
        }
        std::string name;
        for (std::size_t i = at_; i < filled_ && name.size() < longestCommand; ++i) {
            if (endsWord(static_cast<unsigned char>(block_[i])))
                break;
            name += block_[i];
        }
        if (isSceneFileCommand(name) || name.compare(0, 2, "//") == 0)
            return;
    }
}

AsciiScanner::Result AsciiScanner::next(Statement& statement) {
    statement.tokens.clear();
    problem_.clear();
    while (skipBlank()) {
        const int c = peek();
        if (c == ';') {
            take();
            if (!statement.tokens.empty())
                return Result::statement;
            continue;
        }
        if (statement.tokens.empty())
            statement.line = line_;
        Token token;
        if (c == '"') {
            token.quoted = true;
            if (!readQuoted(token.text)) {
                if (peek() < 0)
                    return Result::truncated;
                skipToStatement();
                return Result::damaged;
            }
        } else {
            readWord(token.text);
            if (token.text.compare(0, 2, "//") == 0) {
                // The word may have taken the beginning of the comment only.
                readLineComment();
                lastComment_.insert(0, token.text);
                continue;
            }
            if (token.text.compare(0, 2, "/*") == 0) {
                const bool closed = token.text.size() >= 4 &&
                                    token.text.compare(token.text.size() - 2, 2, "*/") == 0;
                if (!closed && !skipBlockComment())
                    return Result::truncated;
                continue;
            }
        }
        statement.tokens.push_back(std::move(token));
    }
    if (statement.tokens.empty())
        return Result::end;
    problem_ = "the file ends within a statement";
    return Result::truncated;
}

} // namespace host
