#include "scene/api/PluginTypes.h"
#include "scene/files/AsciiTokens.h"
#include "scene/files/SceneBuilder.h"
#include "scene/files/SceneReaders.h"
#include "scene/text/Words.h"

#include <QBuffer>

#include <algorithm>
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
    for (std::size_t i = 1; i < flags.objects.size(); ++i)
        builder.error("createNode with a stray word: " + flags.object(i));
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

AttrRecord attributeOf(Statement& statement) {
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
        } else {
            const bool takesOne = text == "-s" || text == "-size" || text == "-ca" ||
                                  text == "-caching" || text == "-ch" || text == "-capacityHint";
            attribute.hints.push_back(std::move(tokens[i]));
            if (more && takesOne)
                attribute.hints.push_back(std::move(tokens[++i]));
        }
    }
    tokens.erase(tokens.begin(), tokens.begin() + std::ptrdiff_t(std::min(i, tokens.size())));
    attribute.hasValue = !tokens.empty() || !attribute.type.empty();
    attribute.values = std::move(tokens);
    return attribute;
}

void readSetAttr(Statement& statement, SceneBuilder& builder) {
    AttrRecord attribute = attributeOf(statement);
    if (attribute.plug.empty())
        builder.error("setAttr without an attribute");
    else
        builder.setAttr(std::move(attribute));
}

void readAddAttr(Statement& statement, SceneBuilder& builder) {
    AddAttrRecord attribute;
    attribute.arguments.assign(std::make_move_iterator(statement.tokens.begin() + 1),
                               std::make_move_iterator(statement.tokens.end()));
    builder.addAttr(std::move(attribute));
}

// The flags are kept as they are: what of them cannot be done here is written again.
void readConnect(Statement& statement, SceneBuilder& builder) {
    std::vector<Token> names, flags;
    for (std::size_t i = 1; i < statement.tokens.size(); ++i) {
        Token& token = statement.tokens[i];
        const bool isFlag = !token.quoted && token.text.compare(0, 1, "-") == 0;
        const bool takesOne = isFlag && (token.text == "-l" || token.text == "-lock" ||
                                         token.text == "-rd" || token.text == "-referenceDest");
        (isFlag ? flags : names).push_back(std::move(token));
        if (takesOne && i + 1 < statement.tokens.size())
            flags.push_back(std::move(statement.tokens[++i]));
    }
    if (names.size() < 2)
        builder.error("connectAttr needs two attributes");
    else
        builder.connect(names[0].text, names[1].text, std::move(flags));
}

void readRename(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {{"uid", 1}, {"uuid", 1}});
    if (flags.has("uid", "uuid"))
        builder.uuid(std::move(statement.source));
    else if (!flags.objects.empty())
        builder.rename(flags.object(0));
}

void readParent(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {});
    std::vector<std::string> names;
    for (const Token& token : flags.objects)
        names.push_back(token.text);
    if (flags.has("add", "addObject")) {
        builder.warningOnce("instance", "Instances are not made; they are kept as they stand");
        builder.keepStatement(std::move(statement.source));
        return;
    }
    builder.parent(names);
}

void readLock(Statement& statement, SceneBuilder& builder) {
    const FlagReader flags(statement, {{"l", 1}, {"lock", 1}, {"lu", 1}, {"lockUnpublished", 1}});
    if (flags.objects.empty())
        builder.lockNode(std::move(statement.source), switchValue(flags.text("l", "lock")));
    else
        builder.keepStatement(std::move(statement.source));
}

void readReference(Statement& statement, SceneBuilder& builder) {
    builder.warningOnce("file", "Other files that the scene refers to are not read; the "
                                "references are kept as they stand in the file");
    builder.keepStatement(std::move(statement.source));
}

// What concerns the whole scene and changes nothing of what is shown here.
void readOther(Statement& statement, SceneBuilder& builder) {
    builder.keepStatement(std::move(statement.source));
}

using StatementReader = void (*)(Statement&, SceneBuilder&);

StatementReader readerOf(const std::string& command) {
    static const std::map<std::string, StatementReader> readers = {
        {"requires", readRequires},     {"currentUnit", readUnits},   {"fileInfo", readFileInfo},
        {"createNode", readCreateNode}, {"select", readSelect},       {"setAttr", readSetAttr},
        {"addAttr", readAddAttr},       {"connectAttr", readConnect}, {"rename", readRename},
        {"parent", readParent},         {"lockNode", readLock},       {"file", readReference},
        {"relationship", readOther},    {"workspace", readOther},     {"dataStructure", readOther},
        {"applyMetadata", readOther},
    };
    const auto found = readers.find(command);
    return found == readers.end() ? nullptr : found->second;
}

// What a statement is in spite of its damaged command. One that makes a node or carries plug-in
// data matters more than its first word.
StatementReader readerByShape(const Statement& statement, const SceneBuilder& builder) {
    const std::vector<Token>& tokens = statement.tokens;
    if (tokens.size() < 3 || tokens[2].quoted || tokens[2].text.compare(0, 1, "-") != 0)
        return nullptr;
    if (!tokens[1].quoted && nodeTypeCreatable(tokens[1].text))
        return readCreateNode;
    const bool isData = tokens.size() > 3 && tokens[1].text.compare(0, 1, ".") == 0 &&
                        tokens[2].text == "-type" && builder.isPluginData(tokens[3].text);
    return isData ? readSetAttr : nullptr;
}

void understand(Statement& statement, SceneBuilder& builder) {
    if (const StatementReader reader = readerOf(statement.command())) {
        reader(statement, builder);
        return;
    }
    const std::string name = statement.tokens.front().text.substr(0, 40);
    if (const StatementReader reader = readerByShape(statement, builder)) {
        builder.error("Damaged command of a statement that is understood otherwise: " + name);
        reader(statement, builder);
        return;
    }
    builder.warningOnce("command " + name,
                        "Command in a scene file not run, but kept as it stands: " + name);
    builder.keepUnknown(std::move(statement.source));
}

// Plug-in data in a statement whose beginning is damaged: behind the name of their type.
bool findData(Statement& statement, const SceneBuilder& builder, AttrRecord& attribute) {
    constexpr std::size_t farthest = 12;
    std::vector<Token>& tokens = statement.tokens;
    for (std::size_t i = 1; i < std::min(tokens.size(), farthest); ++i) {
        if (!builder.isPluginData(tokens[i].text))
            continue;
        attribute.plug = ".";
        attribute.type = tokens[i].text;
        attribute.hasValue = true;
        attribute.values.assign(std::make_move_iterator(tokens.begin() + std::ptrdiff_t(i) + 1),
                                std::make_move_iterator(tokens.end()));
        return true;
    }
    return false;
}

// Hands over what a statement had before, and with luck behind, the damage.
void salvage(Statement& statement, SceneBuilder& builder) {
    const std::string command = statement.command();
    AttrRecord attribute;
    if (command == "createNode" && statement.tokens.size() > 1)
        readCreateNode(statement, builder);
    else if (command == "setAttr" && statement.tokens.size() > 3 &&
             builder.isPluginData(statement.tokens[3].text))
        builder.salvageAttr(attributeOf(statement));
    else if (findData(statement, builder, attribute))
        builder.salvageAttr(std::move(attribute));
    else if (command == "setAttr")
        builder.error("Skipped: setAttr " + attributeOf(statement).plug);
    else
        builder.loseNode();
}

} // namespace

void readStatement(const std::string& text, SceneBuilder& builder) {
    QByteArray bytes = QByteArray::fromStdString(text);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    AsciiScanner scanner(buffer);
    Statement statement;
    while (scanner.next(statement) == AsciiScanner::Result::Statement)
        understand(statement, builder);
}

void readAsciiScene(QIODevice& device, SceneBuilder& builder) {
    AsciiScanner scanner(device);
    Statement statement;
    for (;;) {
        const AsciiScanner::Result result = scanner.next(statement);
        if (result == AsciiScanner::Result::End)
            break;
        if (result == AsciiScanner::Result::Statement) {
            builder.setPlace(statement.line, true);
            understand(statement, builder);
            continue;
        }
        const bool cut = result == AsciiScanner::Result::Truncated;
        builder.setPlace(scanner.problemLine(), true);
        builder.error((cut ? "The file is truncated: " : "Damaged statement: ") +
                      scanner.problem());
        salvage(statement, builder);
        if (cut)
            return;
    }
    builder.setPlace(scanner.line(), true);
    if (scanner.lastComment().compare(0, 9, "// End of") != 0)
        builder.error("The file is truncated: its last line is missing");
}

} // namespace host
