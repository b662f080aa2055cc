#pragma once

#include <QString>

#include <vector>

namespace host {

/// One word of a session's line, or several in quotes.
struct SessionWord {
    QString text;
    bool quoted = false;

    bool is(const char* word) const { return !quoted && text == QLatin1String(word); }
};

/// Words are separated by blanks; between quotes \" is a quote and \\ a backslash. Throws
/// std::runtime_error when a quote is not closed.
std::vector<SessionWord> splitWords(const QString& line);

} // namespace host
