#include "script/CallHelpers.h"
#include "script/Flags.h"
#include "script/LanguageCommands.h"
#include "script/Utf8.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>

namespace host::script {

namespace {

std::string text(const CommandCall& call, std::size_t index) {
    return call.arguments[index].toString();
}

Value tokenize(const CommandCall& call) {
    requireArguments(call, 2, 3);
    const std::string input = text(call, 0);
    const std::size_t last = call.arguments.size() - 1;
    const std::string separators = last == 2 ? text(call, 1) : " \t\n\r\f\v";
    Strings tokens;
    for (std::size_t start = input.find_first_not_of(separators); start != std::string::npos;) {
        const std::size_t end = input.find_first_of(separators, start);
        tokens.push_back(input.substr(start, end - start));
        start = input.find_first_not_of(separators, end);
    }
    const int count = static_cast<int>(tokens.size());
    arrayVariable(call, last, Type::StringArray) = std::move(tokens);
    return count;
}

// Positions count from 1 and both ends belong to the result.
Value substring(const CommandCall& call) {
    requireArguments(call, 3);
    const std::string input = text(call, 0);
    const auto starts = utf8::characters(input);
    const int length = static_cast<int>(starts.size()) - 1;
    const int first = std::max(call.arguments[1].toInt(), 1);
    const int last = std::min(call.arguments[2].toInt(), length);
    if (first > last)
        return "";
    const std::size_t begin = starts[static_cast<std::size_t>(first - 1)];
    return input.substr(begin, starts[static_cast<std::size_t>(last)] - begin);
}

// The language's regular expressions know . * + ^ $ [] () and \; the rest stands for itself.
QRegularExpression regularExpression(const std::string& pattern) {
    std::string translated;
    bool inClass = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '\\' && i + 1 < pattern.size()) {
            translated += c;
            translated += pattern[++i];
            continue;
        }
        if (c == '[')
            inClass = true;
        else if (c == ']')
            inClass = false;
        else if (!inClass && (c == '|' || c == '?' || c == '{' || c == '}'))
            translated += '\\';
        translated += c;
    }
    QRegularExpression expression(QString::fromStdString(translated),
                                  QRegularExpression::DotMatchesEverythingOption);
    if (!expression.isValid())
        throw ScriptError("Invalid regular expression \"" + pattern + "\".");
    return expression;
}

Value match(const CommandCall& call) {
    requireArguments(call, 2);
    const auto found =
        regularExpression(text(call, 0)).match(QString::fromStdString(text(call, 1)));
    return found.hasMatch() ? found.captured(0).toStdString() : std::string();
}

Value substitute(const CommandCall& call) {
    requireArguments(call, 3);
    const QString input = QString::fromStdString(text(call, 1));
    const auto found = regularExpression(text(call, 0)).match(input);
    if (!found.hasMatch())
        return text(call, 1);
    return (input.left(found.capturedStart(0)) + QString::fromStdString(text(call, 2)) +
            input.mid(found.capturedEnd(0)))
        .toStdString();
}

std::string replaceAll(const std::string& input, const std::string& what, const std::string& with) {
    if (what.empty())
        return input;
    std::string out;
    std::size_t start = 0;
    for (std::size_t at = input.find(what); at != std::string::npos; at = input.find(what, start)) {
        out.append(input, start, at - start);
        out += with;
        start = at + what.size();
    }
    return out.append(input, start, std::string::npos);
}

bool classMatches(const std::string& pattern, std::size_t* at, char c) {
    std::size_t i = *at + 1;
    const bool negated = i < pattern.size() && (pattern[i] == '!' || pattern[i] == '^');
    i += negated;
    bool found = false;
    for (bool first = true; i < pattern.size() && (first || pattern[i] != ']');
         ++i, first = false) {
        if (i + 2 < pattern.size() && pattern[i + 1] == '-' && pattern[i + 2] != ']') {
            found = found || (pattern[i] <= c && c <= pattern[i + 2]);
            i += 2;
        } else {
            found = found || pattern[i] == c;
        }
    }
    *at = i;
    return found != negated;
}

// Shell patterns, without backtracking more than one star.
bool globMatches(const std::string& pattern, const std::string& input) {
    std::size_t p = 0, s = 0, star = std::string::npos, resume = 0;
    while (s < input.size()) {
        std::size_t next = p;
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = s;
            continue;
        }
        if (p < pattern.size() &&
            (pattern[p] == '?' || (pattern[p] == '[' ? classMatches(pattern, &next, input[s])
                                                     : pattern[p] == input[s]))) {
            p = next + 1;
            ++s;
            continue;
        }
        if (star == std::string::npos)
            return false;
        p = star + 1;
        s = ++resume;
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p >= pattern.size();
}

Value gmatch(const CommandCall& call) {
    requireArguments(call, 2);
    return globMatches(text(call, 1), text(call, 0));
}

Value substituteAllString(const CommandCall& call) {
    requireArguments(call, 3);
    return replaceAll(text(call, 0), text(call, 1), text(call, 2));
}

Value strip(const CommandCall& call) {
    requireArguments(call, 1);
    const std::string input = text(call, 0);
    const char* blanks = " \t\n\r\f\v";
    const std::size_t first = input.find_first_not_of(blanks);
    if (first == std::string::npos)
        return "";
    return input.substr(first, input.find_last_not_of(blanks) - first + 1);
}

Value changedCase(const CommandCall& call) {
    requireArguments(call, 1);
    const QString input = QString::fromStdString(text(call, 0));
    if (call.name == "capitalizeString")
        return (input.left(1).toUpper() + input.mid(1)).toStdString();
    return (call.name == "toupper" ? input.toUpper() : input.toLower()).toStdString();
}

Value startsOrEndsWith(const CommandCall& call) {
    requireArguments(call, 2);
    const std::string input = text(call, 0), part = text(call, 1);
    if (part.size() > input.size())
        return 0;
    const std::size_t at = call.name == "startsWith" ? 0 : input.size() - part.size();
    return input.compare(at, part.size(), part) == 0;
}

Value startOrEndString(const CommandCall& call) {
    requireArguments(call, 2);
    const std::string input = text(call, 0);
    const auto starts = utf8::characters(input);
    const auto length = static_cast<int>(starts.size()) - 1;
    const auto count = static_cast<std::size_t>(std::clamp(call.arguments[1].toInt(), 0, length));
    if (call.name == "startString")
        return input.substr(0, starts[count]);
    return input.substr(starts[static_cast<std::size_t>(length) - count]);
}

Value encodeString(const CommandCall& call) {
    requireArguments(call, 1);
    const std::string literal = quoted(text(call, 0));
    return literal.substr(1, literal.size() - 2);
}

// "^1s" stands for the first -stringArg, and so on.
Value format(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-s", "-stringArg", {ArgKind::String}).multiUse("-s").objects(1, 1);
    const ParsedFlags parsed = flags.parse(call);
    const Strings arguments = parsed.allStrings("-s");
    const std::string pattern = parsed.object();
    std::string out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        std::size_t end = i + 1, number = 0;
        while (pattern[i] == '^' && end < pattern.size() && end < i + 5 && pattern[end] >= '0' &&
               pattern[end] <= '9')
            number = number * 10 + static_cast<std::size_t>(pattern[end++] - '0');
        if (number >= 1 && number <= arguments.size() && end < pattern.size() &&
            pattern[end] == 's') {
            out += arguments[number - 1];
            i = end;
        } else {
            out += pattern[i];
        }
    }
    return out;
}

Value fileNameParts(const CommandCall& call) {
    requireArguments(call, call.name == "basename" ? 2 : 1);
    const std::string path = text(call, 0);
    const std::size_t slash = path.find_last_of('/');
    if (call.name == "dirname")
        return slash == std::string::npos ? std::string() : path.substr(0, slash);
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (call.name == "basename") {
        const std::string ending = text(call, 1);
        if (!ending.empty() && name.size() >= ending.size() &&
            name.compare(name.size() - ending.size(), ending.size(), ending) == 0)
            name.resize(name.size() - ending.size());
        return name;
    }
    const std::size_t dot = name.find_last_of('.');
    if (call.name == "fileExtension")
        return dot == std::string::npos ? std::string() : name.substr(dot + 1);
    return dot == std::string::npos ? name : name.substr(0, dot); // basenameEx
}

} // namespace

void registerStringCommands() {
    registerCommand("tokenize", tokenize);
    registerCommand("substring", substring);
    registerCommand("match", match);
    registerCommand("gmatch", gmatch);
    registerCommand("substitute", substitute);
    registerCommand("substituteAllString", substituteAllString);
    registerCommand("strip", strip);
    for (const char* name : {"toupper", "tolower", "capitalizeString"})
        registerCommand(name, changedCase);
    for (const char* name : {"startsWith", "endsWith"})
        registerCommand(name, startsOrEndsWith);
    for (const char* name : {"startString", "endString"})
        registerCommand(name, startOrEndString);
    registerCommand("encodeString", encodeString);
    registerCommand("format", format);
    for (const char* name : {"basename", "basenameEx", "dirname", "fileExtension"})
        registerCommand(name, fileNameParts);
}

} // namespace host::script
