#include "script/Syntax.h"

#include "script/Scanner.h"

#include <cstdlib>

namespace host::script {

namespace {

const char* kindText(ArgKind kind) {
    switch (kind) {
    case ArgKind::Boolean:
        return "a boolean";
    case ArgKind::Int:
        return "an integer";
    case ArgKind::Unsigned:
        return "an unsigned integer";
    case ArgKind::Float:
        return "a float";
    case ArgKind::Distance:
        return "a distance";
    case ArgKind::Angle:
        return "an angle";
    case ArgKind::Time:
        return "a time";
    default:
        return "a string";
    }
}

bool isFlagWord(const Value& value) {
    const auto* word = value.getIf<std::string>();
    return word && word->size() > 1 && (*word)[0] == '-' && isIdentifierStart((*word)[1]);
}

// A number with letters behind it, such as 10cm or 24film.
bool isMeasure(const std::string& text) {
    char* end = nullptr;
    std::strtod(text.c_str(), &end);
    if (end == text.c_str())
        return false;
    for (; *end; ++end)
        if (!isIdentifierPart(*end))
            return false;
    return true;
}

bool convert(const Value& given, ArgKind kind, Value* out) {
    double number = 0;
    const auto* text = given.getIf<std::string>();
    const bool isNumber = given.isNumber() || (text && parseNumber(*text, &number));
    if (given.isNumber())
        number = given.toFloat();
    switch (kind) {
    case ArgKind::Boolean: {
        int truth = 0;
        if (text && truthWord(*text, &truth)) {
            *out = truth;
            return true;
        }
        *out = number != 0;
        return isNumber;
    }
    case ArgKind::Int:
        *out = Value(number).toInt();
        return isNumber;
    case ArgKind::Unsigned:
        *out = Value(number).toInt();
        return isNumber && number >= 0;
    case ArgKind::Float:
        *out = number;
        return isNumber;
    case ArgKind::Distance:
    case ArgKind::Angle:
    case ArgKind::Time:
        *out = given;
        return isNumber || (text && isMeasure(*text));
    default:
        if (given.isArray() || given.isNone())
            return false;
        *out = given.toString();
        return true;
    }
}

class Reader {
public:
    Reader(const SyntaxData& syntax, const std::vector<Value>& given, bool query)
        : syntax_(syntax), given_(given), query_(query) {}

    // False when -query turned up and everything must be read again in that mode.
    bool read() {
        while (next_ < given_.size()) {
            if (isFlagWord(given_[next_])) {
                if (!readFlag())
                    return false;
            } else {
                loose_.push_back(next_++);
            }
        }
        takeLoose();
        return true;
    }

    ParsedArguments take() { return std::move(parsed_); }

private:
    bool readFlag() {
        const std::string& name = given_[next_].get<std::string>();
        if (syntax_.canQuery && (name == "-q" || name == "-query")) {
            parsed_.query = true;
            ++next_;
            return query_;
        }
        if (syntax_.canEdit && (name == "-e" || name == "-edit")) {
            parsed_.edit = true;
            ++next_;
            return true;
        }
        const int index = syntax_.find(name);
        if (index < 0)
            throw ScriptError("Invalid flag '" + name + "'.");
        const FlagSyntax& flag = syntax_.flags[static_cast<std::size_t>(index)];
        for (const FlagUse& use : parsed_.uses)
            if (static_cast<int>(use.flagIndex) == index && !flag.multiUse)
                throw ScriptError("Flag '" + name + "' can be used only once.");
        FlagUse use;
        use.flagIndex = static_cast<std::size_t>(index);
        use.position = next_++;
        if (!query_ || flag.queryWithArguments)
            readArguments(flag, name, use);
        parsed_.uses.push_back(std::move(use));
        return true;
    }

    // -query and -edit mean themselves wherever they stand.
    bool isMode(const Value& value) const {
        const auto* word = value.getIf<std::string>();
        return word && ((syntax_.canQuery && (*word == "-q" || *word == "-query")) ||
                        (syntax_.canEdit && (*word == "-e" || *word == "-edit")));
    }

    void readArguments(const FlagSyntax& flag, const std::string& name, FlagUse& use) {
        const std::size_t start = next_;
        for (const ArgKind kind : flag.arguments) {
            Value value;
            if (next_ < given_.size() && !isMode(given_[next_]) &&
                convert(given_[next_], kind, &value)) {
                use.positions.push_back(next_++);
                use.arguments.push_back(std::move(value));
                continue;
            }
            if (query_ && flag.queryArgumentsOptional) {
                next_ = start;
                use.positions.clear();
                use.arguments.clear();
                return;
            }
            const std::size_t wanted = flag.arguments.size();
            throw ScriptError("Flag '" + name + "' must be passed " +
                              (wanted == 1 ? std::string(kindText(kind)) + " argument"
                                           : std::to_string(wanted) + " arguments") +
                              (wanted > 1 && next_ < given_.size()
                                   ? "; argument " + std::to_string(next_ - start + 1) +
                                         " is not " + kindText(kind)
                                   : ""));
        }
    }

    void takeLoose() {
        std::size_t i = 0;
        // A query names the object, if anything; positional arguments are for the other modes.
        const std::size_t positional = query_ ? 0 : syntax_.arguments.size();
        for (; i < positional; ++i) {
            Value value;
            if (i >= loose_.size())
                throw ScriptError("Not enough objects or values.");
            if (!convert(given_[loose_[i]], syntax_.arguments[i], &value))
                throw ScriptError("Argument " + std::to_string(i + 1) + " must be " +
                                  kindText(syntax_.arguments[i]) + ".");
            parsed_.arguments.push_back(std::move(value));
            parsed_.argumentPositions.push_back(loose_[i]);
        }
        for (; i < loose_.size(); ++i)
            parsed_.objects.push_back(given_[loose_[i]]);
        const std::size_t count = parsed_.objects.size();
        const bool none = syntax_.objectFormat == ObjectFormat::None ||
                          syntax_.objectFormat == ObjectFormat::Invalid;
        if (count > 0 && (none || (syntax_.objectsBounded && count > syntax_.maximumObjects)))
            throw ScriptError("Too many objects or values.");
        if (count < syntax_.minimumObjects && !syntax_.selectionIsDefault)
            throw ScriptError("Not enough objects or values.");
    }

    const SyntaxData& syntax_;
    const std::vector<Value>& given_;
    const bool query_;
    std::size_t next_ = 0;
    std::vector<std::size_t> loose_;
    ParsedArguments parsed_;
};

} // namespace

std::string withDash(const std::string& name) {
    return !name.empty() && name[0] == '-' ? name : "-" + name;
}

int SyntaxData::find(const std::string& name) const {
    const std::string wanted = withDash(name);
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i].shortName == wanted || flags[i].longName == wanted)
            return static_cast<int>(i);
    return -1;
}

ParsedArguments parseArguments(const SyntaxData& syntax, const std::vector<Value>& arguments) {
    Reader create(syntax, arguments, false);
    try {
        if (create.read())
            return create.take();
    } catch (const ScriptError&) {
        // -query may still come behind a flag that has no argument because of it.
        Reader query(syntax, arguments, true);
        bool isQuery = false;
        if (syntax.canQuery)
            for (const Value& value : arguments)
                if (const auto* word = value.getIf<std::string>())
                    isQuery = isQuery || *word == "-q" || *word == "-query";
        if (!isQuery)
            throw;
        query.read();
        return query.take();
    }
    Reader query(syntax, arguments, true);
    query.read();
    return query.take();
}

} // namespace host::script
