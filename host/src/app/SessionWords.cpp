#include "app/SessionWords.h"

#include <stdexcept>

namespace host {

namespace {

/// What stands between the quote at `at` and the next one; `at` is behind that afterwards.
QString readQuoted(const QString& line, int& at) {
    QString text;
    for (++at; at < line.size(); ++at) {
        const QChar c = line.at(at);
        if (c == '"') {
            ++at;
            return text;
        }
        const bool escapes =
            c == '\\' && at + 1 < line.size() && QStringLiteral("\"\\").contains(line.at(at + 1));
        text += escapes ? line.at(++at) : c;
    }
    throw std::runtime_error("a quote is not closed");
}

} // namespace

std::vector<SessionWord> splitWords(const QString& line) {
    std::vector<SessionWord> words;
    int at = 0;
    while (at < line.size()) {
        if (line.at(at).isSpace()) {
            ++at;
        } else if (line.at(at) == '"') {
            words.push_back({readQuoted(line, at), true});
        } else {
            SessionWord word;
            while (at < line.size() && !line.at(at).isSpace())
                word.text += line.at(at++);
            words.push_back(word);
        }
    }
    return words;
}

} // namespace host
