#include "scene/files/AsciiTokens.h"
#include "scene/files/SceneBuilder.h"
#include "scene/files/SceneReaders.h"
#include "scene/text/Words.h"

#include <array>
#include <map>

namespace host {

namespace {

// Takes the flags of one statement apart. Scene files are not script: a name, flags with a known
// number of arguments, the rest are objects.
class FlagReader {
public:
    // Arguments taken by each flag, by any of its names; flags not listed take none.
    using Counts = std::map<std::string, int>;

    FlagReader(Statement& statement, const Counts& counts) {
        std::vector<Token>& tokens = statement.tokens;
        for (std::size_t i = 1; i < tokens.size(); ++i) {
            const std::string& text = tokens[i].text;
            const bool isFlag = !tokens[i].quoted && text.size() > 1 && text[0] == '-' &&
                                std::isalpha(static_cast<unsigned char>(text[1]));
            if (!isFlag) {
                objects.push_back(std::move(tokens[i]));
                continue;
            }
            const std::string name = text.substr(1);
            const auto known = counts.find(name);
            std::vector<std::string> arguments;
            for (int left = known == counts.end() ? 0 : known->second;
                 left > 0 && i + 1 < tokens.size(); --left)
                arguments.push_back(std::move(tokens[++i].text));
            flags_.emplace_back(name, std::move(arguments));
        }
    }

    bool has(const char* shortName, const char* longName) const {
        return find(shortName, longName) != nullptr;
    }
    std::string text(const char* shortName, const char* longName) const {
        const auto* arguments = find(shortName, longName);
        return arguments && !arguments->empty() ? arguments->front() : std::string();
    }
    std::vector<std::string> all(const char* shortName, const char* longName) const {
        std::vector<std::string> result;
        for (const auto& [name, arguments] : flags_)
            if ((name == shortName || name == longName) && !arguments.empty())
                result.push_back(arguments.front());
        return result;
    }
    std::string object(std::size_t index) const {
        return index < objects.size() ? objects[index].text : std::string();
    }

    std::vector<Token> objects;

private:
    const std::vector<std::string>* find(const char* shortName, const char* longName) const {
        for (const auto& [name, arguments] : flags_)
            if (name == shortName || name == longName)
                return &arguments;
        return nullptr;
    }

    std::vector<std::pair<std::string, std::vector<std::string>>> flags_;
};

void readRequires(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {{"nodeType", 1}, {"nt", 1}, {"dataType", 1}, {"dt", 1}});
    Requirement requirement;
    requirement.plugin = flags.object(0);
    requirement.version = flags.object(1);
    requirement.nodeTypes = flags.all("nt", "nodeType");
    requirement.dataTypes = flags.all("dt", "dataType");
    if (requirement.plugin != "maya")
        builder.requirement(std::move(requirement));
}

void readUnits(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(
        statement, {{"l", 1}, {"linear", 1}, {"a", 1}, {"angle", 1}, {"t", 1}, {"time", 1}});
    Units units{flags.text("l", "linear"), flags.text("a", "angle"), flags.text("t", "time")};
    builder.units(units);
}

void readFileInfo(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {});
    builder.fileInfo(flags.object(0), flags.object(1));
}

void readCreateNode(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {{"n", 1}, {"name", 1}, {"p", 1}, {"parent", 1}});
    NodeRecord node;
    node.type = flags.object(0);
    node.name = flags.text("n", "name");
    node.parent = flags.text("p", "parent");
    node.shared = flags.has("s", "shared");
    if (node.type.empty())
        builder.error("createNode without a node type");
    else
        builder.createNode(node);
}

void readSelect(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {});
    if (!flags.objects.empty())
        builder.selectNode(flags.object(0));
}

bool switchValue(const std::string& text) {
    double value = 0;
    return parseNumber(text, value) && value != 0;
}

void readSetAttr(Statement& statement, SceneBuilder& builder) {
    // Not through FlagReader: after -type nothing is a flag, and the values may be very many.
    AttrRecord attribute;
    std::vector<Token>& tokens = statement.tokens;
    std::size_t i = 1;
    for (; i < tokens.size(); ++i) {
        const std::string& text = tokens[i].text;
        const bool more = i + 1 < tokens.size();
        const bool isFlag = !tokens[i].quoted && text.size() > 1 && text[0] == '-' &&
                            std::isalpha(static_cast<unsigned char>(text[1]));
        if (!isFlag) {
            if (!attribute.plug.empty())
                break;
            attribute.plug = text;
        } else if (text == "-type" || text == "-typ") {
            if (more)
                attribute.type = tokens[++i].text;
            if (!attribute.plug.empty()) {
                ++i;
                break;
            }
        } else if (text == "-l" || text == "-lock") {
            attribute.locked = more && switchValue(tokens[++i].text);
        } else if (text == "-k" || text == "-keyable") {
            attribute.keyable = more && switchValue(tokens[++i].text);
        } else if (text == "-cb" || text == "-channelBox") {
            attribute.channelBox = more && switchValue(tokens[++i].text);
        } else if (more && (text == "-s" || text == "-size" || text == "-ca" ||
                            text == "-caching" || text == "-ch" || text == "-capacityHint")) {
            ++i; // hints that this host has no use for
        }
    }
    if (attribute.plug.empty()) {
        builder.error("setAttr without an attribute");
        return;
    }
    tokens.erase(tokens.begin(), tokens.begin() + std::ptrdiff_t(std::min(i, tokens.size())));
    attribute.hasValue = !tokens.empty() || !attribute.type.empty();
    attribute.values = std::move(tokens);
    builder.setAttr(std::move(attribute));
}

void readAddAttr(Statement& statement, SceneBuilder& builder) {
    AddAttrRecord attribute;
    attribute.arguments.assign(std::make_move_iterator(statement.tokens.begin() + 1),
                               std::make_move_iterator(statement.tokens.end()));
    builder.addAttr(std::move(attribute));
}

void readConnect(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {{"rd", 1}, {"referenceDest", 1}});
    if (flags.objects.size() < 2)
        builder.error("connectAttr needs two attributes");
    else
        builder.connect(flags.object(0), flags.object(1));
}

void readRename(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {{"uid", 1}, {"uuid", 1}});
    if (!flags.objects.empty())
        builder.rename(flags.object(0));
}

void readParent(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {});
    std::vector<std::string> names;
    for (const Token& token : flags.objects)
        names.push_back(token.text);
    builder.parent(names);
}

using StatementReader = void (*)(Statement&, SceneBuilder&);

StatementReader readerOf(const std::string& command) {
    static const std::map<std::string, StatementReader> readers = {
        {"requires", readRequires},
        {"currentUnit", readUnits},
        {"fileInfo", readFileInfo},
        {"createNode", readCreateNode},
        {"select", readSelect},
        {"setAttr", readSetAttr},
        {"addAttr", readAddAttr},
        {"connectAttr", readConnect},
        {"rename", readRename},
        {"parent", readParent},
        {"lockNode", [](Statement&, SceneBuilder&) {}},
        {"relationship", [](Statement&, SceneBuilder&) {}},
    };
    const auto found = readers.find(command);
    return found == readers.end() ? nullptr : found->second;
}

} // namespace

void readAsciiScene(QIODevice& device, SceneBuilder& builder) {
    AsciiScanner scanner(device);
    Statement statement;
    for (;;) {
        const AsciiScanner::Result result = scanner.next(statement);
        if (result == AsciiScanner::Result::end)
            break;
        builder.setPlace(statement.tokens.empty() ? scanner.line() : statement.line, true);
        if (result == AsciiScanner::Result::damaged) {
            builder.error("Damaged statement skipped: " + scanner.problem());
            if (statement.tokens.empty() || statement.tokens.front().text != "setAttr")
                builder.loseNode();
            continue;
        }
        if (result == AsciiScanner::Result::truncated) {
            builder.error("The file is truncated: " + scanner.problem());
            return;
        }
        // Braces of script that was skipped must not hide the statement behind them.
        std::vector<Token>& tokens = statement.tokens;
        while (!tokens.empty() && !tokens.front().quoted &&
               (tokens.front().text == "}" || tokens.front().text == "{"))
            tokens.erase(tokens.begin());
        if (tokens.empty())
            continue;
        const Token& command = tokens.front();
        const StatementReader reader = command.quoted ? nullptr : readerOf(command.text);
        if (reader) {
            reader(statement, builder);
            continue;
        }
        const std::string name = command.text.substr(0, 40);
        builder.warningOnce("command " + name, "Command in a scene file ignored: " + name);
        builder.loseNode();
    }
    builder.setPlace(scanner.line(), true);
    if (scanner.lastComment().compare(0, 9, "// End of") != 0)
        builder.error("The file is truncated: its last line is missing");
}

} // namespace host
