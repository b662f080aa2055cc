#include "scene/api/PluginTypes.h"
#include "scene/files/BinaryWriter.h"
#include "scene/files/ChunkFile.h"
#include "scene/files/SceneBuilder.h"
#include "scene/files/SceneReaders.h"

namespace host {

namespace {

std::vector<std::string> readTexts(ChunkParser& parser) {
    std::vector<std::string> texts;
    for (std::uint32_t left = parser.count(4); left > 0; --left)
        texts.push_back(parser.text());
    return texts;
}

std::vector<Token> readTokens(ChunkParser& parser) {
    std::vector<Token> tokens;
    for (std::uint32_t left = parser.count(8); left > 0; --left) {
        const bool isQuoted = parser.number() != 0;
        tokens.push_back({parser.text(), isQuoted});
    }
    return tokens;
}

std::optional<bool> readSwitch(std::uint32_t bits, std::uint32_t given, std::uint32_t on) {
    if (!(bits & given))
        return std::nullopt;
    return (bits & on) != 0;
}

AttrRecord readAttr(ChunkParser& parser) {
    using namespace chunks;
    AttrRecord attribute;
    attribute.plug = parser.text();
    const std::uint32_t bits = parser.number();
    attribute.type = parser.text();
    attribute.values = readTokens(parser);
    if (!parser.atEnd())
        attribute.hints = readTokens(parser);
    attribute.keyable = readSwitch(bits, keyableGiven, keyableOn);
    attribute.locked = readSwitch(bits, lockedGiven, lockedOn);
    attribute.channelBox = readSwitch(bits, channelBoxGiven, channelBoxOn);
    attribute.hasValue = (bits & valueGiven) != 0;
    return attribute;
}

// Reads the fields of a small chunk and, when all of them are there, hands them over.
bool readFields(ChunkId id, const std::string& bytes, SceneBuilder& builder) {
    ChunkParser parser(bytes);
    if (id == chunks::required) {
        Requirement requirement;
        requirement.plugin = parser.text();
        requirement.version = parser.text();
        requirement.nodeTypes = readTexts(parser);
        requirement.dataTypes = readTexts(parser);
        if (!parser.failed())
            builder.requirement(std::move(requirement));
    } else if (id == chunks::units) {
        Units units;
        units.linear = parser.text();
        units.angle = parser.text();
        units.time = parser.text();
        if (!parser.failed())
            builder.units(units);
    } else if (id == chunks::info) {
        const std::string key = parser.text();
        const std::string value = parser.text();
        if (!parser.failed())
            builder.fileInfo(key, value);
    } else if (id == chunks::node) {
        NodeRecord node;
        node.type = parser.text();
        node.name = parser.text();
        node.parent = parser.text();
        node.shared = parser.number() != 0;
        if (!parser.failed())
            builder.createNode(node);
    } else if (id == chunks::select) {
        const std::string name = parser.text();
        if (!parser.failed())
            builder.selectNode(name);
    } else if (id == chunks::addAttr) {
        AddAttrRecord attribute{readTokens(parser)};
        if (!parser.failed())
            builder.addAttr(std::move(attribute));
    } else if (id == chunks::setAttr) {
        AttrRecord attribute = readAttr(parser);
        if (!parser.failed())
            builder.setAttr(std::move(attribute));
    } else if (id == chunks::connect) {
        const std::string source = parser.text();
        const std::string destination = parser.text();
        std::vector<Token> flags;
        if (!parser.atEnd())
            flags = readTokens(parser);
        if (!parser.failed())
            builder.connect(source, destination, std::move(flags));
    } else if (id == chunks::statement) {
        const std::string text = parser.text();
        if (!parser.failed())
            readStatement(text, builder);
    }
    return !parser.failed();
}

// A node whose type is still one may carry drawings.
bool salvageNode(const std::string& bytes, SceneBuilder& builder) {
    ChunkParser parser(bytes);
    NodeRecord node;
    node.type = parser.text();
    node.name = parser.text();
    node.parent = parser.text();
    if (!nodeTypeCreatable(node.type))
        return false;
    builder.createNode(node);
    return true;
}

// Damaged plug-in data are handed over all the same: they guard themselves, and most pictures of
// a long drawing survive a flipped bit.
void readData(const Chunk& chunk, QIODevice& device, SceneBuilder& builder, bool intact) {
    constexpr std::uint64_t longestPrefix = 64 * 1024;
    const std::string start =
        device.seek(chunk.start)
            ? device.read(qint64(std::min(chunk.length, longestPrefix))).toStdString()
            : std::string();
    ChunkParser parser(start);
    const std::string plug = parser.text();
    const std::string type = parser.text();
    if (parser.failed()) {
        builder.error("Damaged plug-in data skipped");
        return;
    }
    if (!intact)
        builder.error("The data of " + plug + " are damaged; what can be read of them is kept");
    const auto prefix = qint64(parser.position());
    if (device.seek(chunk.start + prefix))
        builder.setData(plug, type, device, chunk.length - std::uint64_t(prefix));
}

// Behind a damaged header the next one that is good ends the chunk; if it were plug-in data they
// begin with where they belong.
void salvageData(qint64 from, qint64 to, QIODevice& device, SceneBuilder& builder) {
    Chunk chunk;
    chunk.start = from + qint64(kChunkHeaderSize);
    if (chunk.start >= to || !device.seek(chunk.start))
        return;
    chunk.length = std::uint64_t(to - chunk.start);
    const std::string start = device.read(256).toStdString();
    ChunkParser parser(start);
    parser.text();
    if (builder.isPluginData(parser.text()) && !parser.failed())
        readData(chunk, device, builder, false);
}

std::string idText(ChunkId id) {
    return std::string(id.begin(), id.end());
}

} // namespace

void readBinaryScene(QIODevice& device, SceneBuilder& builder) {
    ChunkReader reader(device);
    if (!reader.begin()) {
        builder.error(reader.problem());
        return;
    }
    bool complete = false;
    qint64 damagedAt = -1; // the place of a header that is not one
    Chunk chunk;
    for (;;) {
        const qint64 place = reader.position();
        builder.setPlace(std::uint64_t(place), false);
        const ChunkReader::Result result = reader.next(chunk);
        if (result == ChunkReader::Result::Damaged) {
            builder.error("Damaged part skipped: " + reader.problem());
            if (damagedAt < 0)
                damagedAt = place;
            continue;
        }
        const bool atEnd = result == ChunkReader::Result::End;
        if (damagedAt >= 0) {
            const qint64 next = atEnd ? device.size() : chunk.start - qint64(kChunkHeaderSize);
            salvageData(damagedAt, next, device, builder);
            builder.loseNode();
            damagedAt = -1;
        }
        if (atEnd)
            break;
        const bool intact = reader.intact(chunk);
        if (chunk.id == chunks::data) {
            readData(chunk, device, builder, intact);
        } else if (chunk.id == chunks::end) {
            complete = true;
        } else if (!intact || !readFields(chunk.id, reader.payload(chunk), builder)) {
            builder.error("Damaged part skipped: " + idText(chunk.id));
            if (chunk.id == chunks::select ||
                (chunk.id == chunks::node && !salvageNode(reader.payload(chunk), builder)))
                builder.loseNode();
        }
    }
    if (!complete)
        builder.error("The file is truncated: its end mark is missing");
}

} // namespace host
