#include "script/Scanner.h"

#include <cstdlib>
#include <cstring>
#include <limits>

namespace host::script {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

// Letters beyond ASCII count as part of a word: node names may carry them.
bool isWordPart(char c) {
    return isIdentifierPart(c) || (c && std::strchr("|:.*?#@~", c)) ||
           static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

bool isIdentifierStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isIdentifierPart(char c) {
    return isIdentifierStart(c) || isDigit(c);
}

bool truthWord(const std::string& word, int* value) {
    if (word == "true" || word == "on" || word == "yes") {
        *value = 1;
        return true;
    }
    if (word == "false" || word == "off" || word == "no") {
        *value = 0;
        return true;
    }
    return false;
}

Scanner::Scanner(const std::string& text, std::string file) : text_(text), file_(std::move(file)) {
}

void Scanner::rewind(Mark m) {
    position_ = m.position;
    line_ = m.line;
}

char Scanner::raw(std::size_t offset) const {
    return position_ + offset < text_.size() ? text_[position_ + offset] : '\0';
}

void Scanner::skipBlanks() {
    while (position_ < text_.size()) {
        const char c = text_[position_];
        if (isBlank(c)) {
            line_ += c == '\n';
            ++position_;
        } else if (c == '/' && raw(1) == '/') {
            while (position_ < text_.size() && text_[position_] != '\n')
                ++position_;
        } else if (c == '/' && raw(1) == '*') {
            const std::size_t end = text_.find("*/", position_ + 2);
            if (end == std::string::npos)
                fail("Unterminated comment.");
            for (; position_ < end + 2; ++position_)
                line_ += text_[position_] == '\n';
        } else {
            return;
        }
    }
}

char Scanner::peek() {
    skipBlanks();
    return raw();
}

bool Scanner::atEnd() {
    skipBlanks();
    return position_ >= text_.size();
}

bool Scanner::looksAt(const char* text) {
    skipBlanks();
    return text_.compare(position_, std::strlen(text), text) == 0;
}

bool Scanner::take(const char* text) {
    if (!looksAt(text))
        return false;
    position_ += std::strlen(text);
    return true;
}

bool Scanner::takeWord(const char* word) {
    if (peekIdentifier() != word)
        return false;
    position_ += std::strlen(word);
    return true;
}

void Scanner::expect(const char* text) {
    if (!take(text))
        syntaxError();
}

bool Scanner::skipParentheses() {
    int open = 0;
    while (!atEnd()) {
        const char c = raw();
        if (c == '"') {
            stringLiteral();
            continue;
        }
        ++position_;
        open += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (open == 0)
            return true;
    }
    return false;
}

bool Scanner::atIdentifier() {
    return isIdentifierStart(peek());
}

std::string Scanner::peekIdentifier() {
    if (!atIdentifier())
        return {};
    std::size_t end = position_;
    while (end < text_.size() && isIdentifierPart(text_[end]))
        ++end;
    return text_.substr(position_, end - position_);
}

std::string Scanner::identifier() {
    const std::string word = peekIdentifier();
    if (word.empty())
        syntaxError();
    position_ += word.size();
    return word;
}

bool Scanner::atNumber() {
    const char c = peek();
    return isDigit(c) || (c == '.' && isDigit(raw(1)));
}

Value Scanner::number() {
    const char* start = text_.c_str() + position_;
    char* end = nullptr;
    if (raw() == '0' && (raw(1) == 'x' || raw(1) == 'X')) {
        const unsigned long long v = std::strtoull(start, &end, 16);
        position_ += static_cast<std::size_t>(end - start);
        return static_cast<int>(static_cast<unsigned int>(v));
    }
    std::size_t length = 0;
    bool isFloat = false;
    while (isDigit(raw(length)))
        ++length;
    if (raw(length) == '.') {
        isFloat = true;
        ++length;
        while (isDigit(raw(length)))
            ++length;
    }
    if (raw(length) == 'e' || raw(length) == 'E') {
        const std::size_t sign = raw(length + 1) == '-' || raw(length + 1) == '+' ? 1 : 0;
        if (isDigit(raw(length + 1 + sign))) {
            isFloat = true;
            length += 1 + sign;
            while (isDigit(raw(length)))
                ++length;
        }
    }
    const double v = std::strtod(text_.substr(position_, length).c_str(), nullptr);
    position_ += length;
    if (isFloat || v > std::numeric_limits<int>::max())
        return v;
    return static_cast<int>(v);
}

std::string Scanner::stringLiteral() {
    std::string out;
    ++position_;
    for (;;) {
        if (position_ >= text_.size() || text_[position_] == '\n')
            fail("Unterminated string.");
        char c = text_[position_++];
        if (c == '"')
            return out;
        if (c == '\\') {
            if (position_ >= text_.size() || text_[position_] == '\n')
                fail("Unterminated string.");
            c = text_[position_++];
            switch (c) {
            case 'n':
                c = '\n';
                break;
            case 't':
                c = '\t';
                break;
            case 'r':
                c = '\r';
                break;
            default:
                break;
            }
        }
        out += c;
    }
}

Value Scanner::commandWord() {
    skipBlanks();
    std::size_t length = 0;
    const bool flag = raw() == '-' && (isIdentifierStart(raw(1)));
    if (raw() == '-' || raw() == '+')
        ++length;
    for (;;) {
        const char c = raw(length);
        if (isWordPart(c) && !(flag && !isIdentifierPart(c))) {
            ++length;
        } else if ((c == '-' || c == '+') && length > 1 &&
                   (raw(length - 1) == 'e' || raw(length - 1) == 'E') &&
                   (isDigit(raw(length - 2)) || raw(length - 2) == '.') &&
                   isDigit(raw(length + 1))) {
            ++length; // exponent of a number
        } else if (c == '[' && length > 0 && !flag) {
            std::size_t end = length + 1;
            while (isWordPart(raw(end)))
                ++end;
            if (raw(end) != ']')
                syntaxError();
            length = end + 1;
        } else {
            break;
        }
    }
    const std::string word = text_.substr(position_, length);
    if (word.empty() || word == "-" || word == "+")
        syntaxError();
    double v = 0;
    int truth = 0;
    position_ += length;
    if (parseNumber(word, &v)) {
        const bool integral =
            word.find_first_of(".eE") == std::string::npos || word.compare(0, 2, "0x") == 0;
        if (integral && v >= std::numeric_limits<int>::min() &&
            v <= std::numeric_limits<int>::max())
            return static_cast<int>(v);
        return v;
    }
    if (truthWord(word, &truth))
        return truth;
    return word;
}

void Scanner::fail(const std::string& message) const {
    ScriptError error(message);
    error.file = file_;
    error.line = line_;
    throw error;
}

} // namespace host::script
