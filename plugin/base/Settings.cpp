#include "plugin/base/Settings.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/IniText.h"
#include "plugin/base/Owned.h"
#include "plugin/base/QtCompat.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/base/ToolTable.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <algorithm>
#include <limits>
#include <optional>
#include <type_traits>
#include <variant>
#include <vector>

namespace vellum {

namespace {

constexpr int kFileVersion = 1;
constexpr char kVersionKey[] = "version";

struct Limits {
    enum Rule { Keep, Clamp, Replace } rule;
    int min;
    int max;
    int replacement; ///< Replace: value for anything out of range
};

/// Where a value lives in settings(), which stays at one place.
using Field = std::variant<int*, bool*, QString*, QColor*, QByteArray*, Tool*, TimelineDisplay*>;

struct Key {
    QByteArray name;
    Field field;
    std::optional<Limits> limits;
};

struct Group {
    const char* name;
    std::vector<Key> keys;
};

constexpr Limits clamped(int min, int max) {
    return {Limits::Clamp, min, max, 0};
}
constexpr Limits kept(int min, int max) {
    return {Limits::Keep, min, max, 0};
}
constexpr Limits replaced(int min, int max, int by) {
    return {Limits::Replace, min, max, by};
}

/// Those of the tools' options that are kept in the file, tool by tool.
std::vector<Key> toolKeys() {
    std::vector<Key> keys;
    for (const ToolInfo& info : kTools) {
        ToolOptions& options = settings().of(info.tool);
        const auto add = [&](const char* option, Field field, std::optional<Limits> limits) {
            keys.push_back({QByteArray(info.key) + option, field, limits});
        };
        if (info.factoryFont)
            add("FontFamily", &options.fontFamily, {});
        add("Size", &options.size, clamped(1, info.size.largest));
        if (info.opacity.keep == Keep::File)
            add("Opacity", &options.opacity, clamped(1, 100));
        if (info.tablet.keep == Keep::File)
            add("TabletEnabled", &options.tabletEnabled, {});
    }
    return keys;
}

std::vector<Key> joined(std::vector<Key> keys, const std::vector<Key>& second,
                        const std::vector<Key>& third) {
    keys.insert(keys.end(), second.begin(), second.end());
    keys.insert(keys.end(), third.begin(), third.end());
    return keys;
}

/// Every key in file order.
const std::vector<Group>& groups() {
    Settings& s = settings();
    static const std::vector<Group> table{
        {"main",
         {{"mainMenuName", &s.mainMenuName, {}},
          {"toolboxGeometry", &s.toolboxGeometry, {}},
          {"toolOptionsGeometry", &s.toolOptionsGeometry, {}},
          {"layerManagerGeometry", &s.layerManagerGeometry, {}},
          {"colorPaletteGeometry", &s.colorPaletteGeometry, {}},
          {"retimingToolGeometry", &s.retimingToolGeometry, {}}}},
        {"tools", joined({{"activeTool", &s.activeTool, kept(0, numberOf(Tool::Transform))},
                          {"activeColor", &s.activeColor, {}}},
                         toolKeys(),
                         {{"ghostPrev", &s.ghostPrev, {}},
                          {"ghostNext", &s.ghostNext, {}},
                          {"ghostPrevCount", &s.ghostPrevCount, replaced(1, 9, 3)},
                          {"ghostNextCount", &s.ghostNextCount, replaced(1, 9, 3)},
                          {"ghostColorOverride", &s.ghostColorOverride, {}},
                          {"ghostColorOverridePrev", &s.ghostColorOverridePrev, {}},
                          {"ghostColorOverrideNext", &s.ghostColorOverrideNext, {}},
                          {"retimeMoveToNextFrame", &s.retimeMoveToNextFrame, {}}})},
        {"preferences",
         {{"drawToolContextMenu", &s.drawToolContextMenu, {}},
          {"transformToolContextMenu", &s.transformToolContextMenu, {}},
          {"timelineContextMenu", &s.timelineContextMenu, {}},
          {"toolboxDrawToolContextMenu", &s.toolboxDrawToolContextMenu, {}},
          {"toolboxGhostingContextMenu", &s.toolboxGhostingContextMenu, {}},
          {"showMainMenuInAnimationSet", &s.showMainMenuInAnimationSet, {}},
          {"disableGhostingDuringPlayback", &s.disableGhostingDuringPlayback, {}},
          {"timeControlRangeMoveEnabled", &s.timeControlRangeMoveEnabled, {}},
          {"ignore2dPanZoom", &s.ignore2dPanZoom, {}},
          {"defaultLayerState", &s.defaultLayerState, kept(0, 2)},
          {"automaticallyAddFirstLayer", &s.automaticallyAddFirstLayer, {}},
          {"alwaysDisplayNewLayerDialog", &s.alwaysDisplayNewLayerDialog, {}},
          {"insertDefaultStaticFrame", &s.insertDefaultStaticFrame, {}},
          {"defaultStaticFrameTime", &s.defaultStaticFrameTime, {}},
          {"timelineFrameDisplay", &s.timelineFrameDisplay, kept(0, kTimelineDisplayCount - 1)},
          {"timelineFrameColor", &s.timelineFrameColor, {}},
          {"undoReturnsToFrame", &s.undoReturnsToFrame, {}}}},
    };
    return table;
}

// Each read() leaves the target alone when the file holds something else than its type.

void read(const QVariant& stored, const std::optional<Limits>& limits, int& target) {
    bool isNumber = false;
    const qlonglong wide = stored.toLongLong(&isNumber);
    if (!isNumber)
        return;
    using Limit = std::numeric_limits<int>;
    if (wide < Limit::min() || wide > Limit::max())
        return; // written by something else than us
    const int value = static_cast<int>(wide);
    if (!limits || (value >= limits->min && value <= limits->max)) {
        target = value;
        return;
    }
    if (limits->rule == Limits::Clamp)
        target = std::clamp(value, limits->min, limits->max);
    else if (limits->rule == Limits::Replace)
        target = limits->replacement;
}

template <typename Enum, std::enable_if_t<std::is_enum_v<Enum>, int> = 0>
void read(const QVariant& stored, const std::optional<Limits>& limits, Enum& target) {
    int number = static_cast<int>(target);
    read(stored, limits, number);
    target = static_cast<Enum>(number);
}

void read(const QVariant& stored, const std::optional<Limits>&, bool& target) {
    // QVariant takes any text for true; only what a switch is written as counts here.
    const QString text = stored.toString().trimmed().toLower();
    if (text == QLatin1String("true") || text == QLatin1String("1"))
        target = true;
    else if (text == QLatin1String("false") || text == QLatin1String("0"))
        target = false;
}

void read(const QVariant& stored, const std::optional<Limits>&, QString& target) {
    // An unquoted comma in a hand-edited file makes a list of it.
    const QStringList parts = stored.toStringList();
    if (!parts.isEmpty())
        target = parts.join(QStringLiteral(", "));
}

/// False for a color read from damaged bytes, which Qt takes over unchecked: its color model is
/// the first byte behind the header (type, 4 bytes; null, 1 byte) of QVariant's serialisation.
bool isSoundColor(const QVariant& stored) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_0);
    stream << stored;
    return bytes.size() > 5 && static_cast<quint8>(bytes[5]) <= QColor::Hsl;
}

void read(const QVariant& stored, const std::optional<Limits>&, QColor& target) {
    if (stored.userType() == QMetaType::QColor && !isSoundColor(stored))
        return;
    const QColor color = stored.value<QColor>();
    if (color.isValid())
        target = color;
}

void read(const QVariant& stored, const std::optional<Limits>&, QByteArray& target) {
    target = stored.toByteArray();
}

// QSettings keeps what it wrote in a cache of the process.
QVariant stored(const QString& value) {
    return owned(value);
}

template <typename Value> QVariant stored(const Value& value) {
    if constexpr (std::is_enum_v<Value>)
        return static_cast<int>(value);
    else
        return QVariant::fromValue(value);
}

} // namespace

std::array<ToolOptions, kDrawToolCount> factoryToolOptions() {
    std::array<ToolOptions, kDrawToolCount> all;
    for (const ToolInfo& info : kTools) {
        ToolOptions& options = all[static_cast<std::size_t>(info.tool)];
        options.size = info.size.factory;
        options.tabletEnabled = info.tablet.factory;
        options.fontFamily = QString::fromLatin1(info.factoryFont);
    }
    return all;
}

Settings& settings() {
    static Settings instance;
    return instance;
}

void resetSettings() {
    settings() = Settings{};
}

QString settingsPath() {
    const QString directory = script::executeString(command::preferencesDirectory()).value_or("");
    if (directory.isEmpty()) {
        report::error(QStringLiteral("Failed to retrieve Maya prefs directory"));
        return {};
    }
    return QFileInfo(directory + QStringLiteral("/vellum2.ini")).absoluteFilePath();
}

void loadSettings() {
    const QString path = settingsPath();
    if (!path.isEmpty())
        loadSettingsFrom(path);
}

bool saveSettings() {
    const QString path = settingsPath();
    return !path.isEmpty() && saveSettingsTo(path);
}

namespace {

constexpr qint64 kLargestFile = 64 << 20; // bytes; ours has two thousand

/// Empty when there is something at `path` that cannot be read as a settings file.
std::optional<ini::Text> textAt(const QString& path) {
    const QFileInfo place(path);
    if (!place.exists())
        return ini::Text{};
    QFile file(path);
    if (!place.isFile() || place.size() > kLargestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return ini::parse(file.readAll());
}

bool isKnown(const ini::Section& section, const ini::Entry& entry) {
    if (section.name == groups().front().name && entry.key == kVersionKey)
        return true;
    return std::any_of(groups().begin(), groups().end(), [&](const Group& group) {
        return section.name == group.name &&
               std::any_of(group.keys.begin(), group.keys.end(),
                           [&](const Key& key) { return entry.key == key.name; });
    });
}

void readKnownKeys(QSettings& file) {
    qt::readAsUtf8(file);
    for (const Group& group : groups()) {
        file.beginGroup(QLatin1String(group.name));
        for (const Key& key : group.keys) {
            const QVariant found = file.value(QLatin1String(key.name));
            if (!found.isValid())
                continue;
            std::visit([&](auto field) { read(found, key.limits, *field); }, key.field);
        }
        file.endGroup();
    }
}

} // namespace

void loadSettingsFrom(const QString& path) {
    const auto text = textAt(path);
    if (!text)
        return;
    std::vector<ini::Section> plain;
    bool asItIs = text->isWhole;
    for (const ini::Section& section : text->sections) {
        plain.push_back({section.name, {}});
        for (const ini::Entry& entry : section.entries) {
            if (!ini::isPlain(entry))
                asItIs = false;
            else if (isKnown(section, entry))
                plain.back().entries.push_back(entry);
        }
    }
    if (asItIs) {
        QSettings file(path, QSettings::IniFormat);
        readKnownKeys(file);
        return;
    }
    const QTemporaryDir workshop;
    const QString copy = workshop.filePath(QStringLiteral("settings.ini"));
    QFile draft(copy);
    if (!workshop.isValid() || !draft.open(QIODevice::WriteOnly))
        return;
    draft.write(ini::toText(plain));
    draft.close();
    QSettings file(copy, QSettings::IniFormat);
    readKnownKeys(file);
}

namespace {

void writeKnownKeys(QSettings& file) {
    for (const Group& group : groups()) {
        file.beginGroup(QLatin1String(group.name));
        if (&group == &groups().front())
            file.setValue(QLatin1String(kVersionKey), kFileVersion);
        for (const Key& key : group.keys)
            std::visit([&](auto field) { file.setValue(QLatin1String(key.name), stored(*field)); },
                       key.field);
        file.endGroup();
    }
}

/// The known keys as QSettings writes them. Empty when they are not all there: of a full disk,
/// QSettings says nothing.
std::vector<ini::Section> knownSections() {
    const QTemporaryDir workshop;
    QFile draft(workshop.filePath(QStringLiteral("settings.ini")));
    int keys = 0;
    {
        QSettings file(draft.fileName(), QSettings::IniFormat);
        writeKnownKeys(file);
        keys = static_cast<int>(file.allKeys().size());
        file.sync();
    }
    if (!workshop.isValid() || !draft.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = draft.readAll();
    std::vector<ini::Section> sections = ini::parse(text).sections;
    for (const ini::Section& section : sections)
        keys -= static_cast<int>(section.entries.size());
    return keys == 0 && text.endsWith('\n') ? sections : std::vector<ini::Section>{};
}

/// Place of a group or of a key in the table; behind them all for one that is not in it.
template <typename Entries> std::size_t placeIn(const Entries& entries, const QByteArray& name) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&name](const auto& entry) { return name == entry.name; });
    return static_cast<std::size_t>(found - entries.begin());
}

/// On Unix, QSettings sorts what it writes by name.
void sortAsInTable(std::vector<ini::Section>& sections) {
    const auto sortBy = [](auto& items, auto place) {
        std::stable_sort(items.begin(), items.end(),
                         [&place](const auto& a, const auto& b) { return place(a) < place(b); });
    };
    sortBy(sections, [](const auto& section) { return placeIn(groups(), section.name); });
    for (ini::Section& section : sections) {
        const std::size_t index = placeIn(groups(), section.name);
        if (index == groups().size())
            continue;
        sortBy(section.entries, [index](const ini::Entry& entry) {
            // It tells how to read what follows.
            return entry.key == kVersionKey ? 0 : 1 + placeIn(groups()[index].keys, entry.key);
        });
    }
}

/// Replaces the file at `path` in one step, so that a crash leaves the old one or the new one.
bool replaceFile(const QString& path, const QByteArray& text) {
    QSaveFile file(path);
    return QDir().mkpath(QFileInfo(path).absolutePath()) &&
           file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(text) == text.size() && file.commit();
}

} // namespace

bool saveSettingsTo(const QString& path) {
    const auto old = textAt(path);
    // QSettings knows how values are written, not in which order.
    std::vector<ini::Section> sections = knownSections();
    if (!old || sections.empty())
        return false;
    for (const ini::Section& section : old->sections) {
        for (const ini::Entry& entry : section.entries) {
            if (!isKnown(section, entry))
                ini::sectionNamed(sections, section.name).entries.push_back(entry);
        }
    }
    sortAsInTable(sections);
    return replaceFile(path, ini::toText(sections));
}

} // namespace vellum
