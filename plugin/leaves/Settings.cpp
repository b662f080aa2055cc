#include "plugin/leaves/Settings.h"

#include "plugin/leaves/CommandStrings.h"
#include "plugin/leaves/QtCompat.h"
#include "plugin/leaves/Report.h"
#include "plugin/leaves/Script.h"

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
#include <variant>
#include <vector>

namespace vellum {

namespace {

constexpr int kFileVersion = 1;

struct Limits {
    enum Rule { Keep, Clamp, Replace } rule;
    int min;
    int max;
    int replacement; ///< Replace: value for anything out of range
};

using Field = std::variant<int Settings::*, bool Settings::*, QString Settings::*,
                           QColor Settings::*, QByteArray Settings::*>;

struct Key {
    const char* name;
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

using S = Settings;

/// Every key in file order.
const std::vector<Group>& groups() {
    static const std::vector<Group> table{
        {"main",
         {{"mainMenuName", &S::mainMenuName, {}},
          {"toolboxGeometry", &S::toolboxGeometry, {}},
          {"toolOptionsGeometry", &S::toolOptionsGeometry, {}},
          {"layerManagerGeometry", &S::layerManagerGeometry, {}},
          {"colorPaletteGeometry", &S::colorPaletteGeometry, {}},
          {"retimingToolGeometry", &S::retimingToolGeometry, {}}}},
        {"tools",
         {{"activeTool", &S::activeTool, kept(0, 8)},
          {"activeColor", &S::activeColor, {}},
          {"pencilSize", &S::pencilSize, clamped(1, 100)},
          {"pencilOpacity", &S::pencilOpacity, clamped(1, 100)},
          {"pencilTabletEnabled", &S::pencilTabletEnabled, {}},
          {"brushSize", &S::brushSize, clamped(1, 100)},
          {"brushOpacity", &S::brushOpacity, clamped(1, 100)},
          {"brushTabletEnabled", &S::brushTabletEnabled, {}},
          {"eraserSize", &S::eraserSize, clamped(1, 100)},
          {"textFontFamily", &S::textFontFamily, {}},
          {"textSize", &S::textSize, clamped(1, 100)},
          {"textOpacity", &S::textOpacity, clamped(1, 100)},
          {"lineSize", &S::lineSize, clamped(1, 50)},
          {"lineOpacity", &S::lineOpacity, clamped(1, 100)},
          {"arrowSize", &S::arrowSize, clamped(1, 50)},
          {"arrowOpacity", &S::arrowOpacity, clamped(1, 100)},
          {"ellipseSize", &S::ellipseSize, clamped(1, 50)},
          {"ellipseOpacity", &S::ellipseOpacity, clamped(1, 100)},
          {"rectangleSize", &S::rectangleSize, clamped(1, 50)},
          {"rectangleOpacity", &S::rectangleOpacity, clamped(1, 100)},
          {"ghostPrev", &S::ghostPrev, {}},
          {"ghostNext", &S::ghostNext, {}},
          {"ghostPrevCount", &S::ghostPrevCount, replaced(1, 9, 3)},
          {"ghostNextCount", &S::ghostNextCount, replaced(1, 9, 3)},
          {"ghostColorOverride", &S::ghostColorOverride, {}},
          {"ghostColorOverridePrev", &S::ghostColorOverridePrev, {}},
          {"ghostColorOverrideNext", &S::ghostColorOverrideNext, {}},
          {"retimeMoveToNextFrame", &S::retimeMoveToNextFrame, {}}}},
        {"preferences",
         {{"drawToolContextMenu", &S::drawToolContextMenu, {}},
          {"transformToolContextMenu", &S::transformToolContextMenu, {}},
          {"timelineContextMenu", &S::timelineContextMenu, {}},
          {"toolboxDrawToolContextMenu", &S::toolboxDrawToolContextMenu, {}},
          {"toolboxGhostingContextMenu", &S::toolboxGhostingContextMenu, {}},
          {"showMainMenuInAnimationSet", &S::showMainMenuInAnimationSet, {}},
          {"disableGhostingDuringPlayback", &S::disableGhostingDuringPlayback, {}},
          {"timeControlRangeMoveEnabled", &S::timeControlRangeMoveEnabled, {}},
          {"ignore2dPanZoom", &S::ignore2dPanZoom, {}},
          {"defaultLayerState", &S::defaultLayerState, kept(0, 2)},
          {"automaticallyAddFirstLayer", &S::automaticallyAddFirstLayer, {}},
          {"alwaysDisplayNewLayerDialog", &S::alwaysDisplayNewLayerDialog, {}},
          {"insertDefaultStaticFrame", &S::insertDefaultStaticFrame, {}},
          {"defaultStaticFrameTime", &S::defaultStaticFrameTime, {}},
          {"timelineFrameDisplay", &S::timelineFrameDisplay, kept(0, 2)},
          {"timelineFrameColor", &S::timelineFrameColor, {}}}},
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

void read(const QVariant& stored, const std::optional<Limits>&, QColor& target) {
    const QColor color = stored.value<QColor>();
    if (color.isValid())
        target = color;
}

void read(const QVariant& stored, const std::optional<Limits>&, QByteArray& target) {
    target = stored.toByteArray();
}

// QSettings keeps what it wrote in a cache of the process, which outlives an unloaded plug-in:
// text must not point into the plug-in's own memory, as literals do.
QVariant stored(const QString& value) {
    return QString(value.constData(), value.size());
}

template <typename Value> QVariant stored(const Value& value) {
    return QVariant::fromValue(value);
}

} // namespace

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

void loadSettingsFrom(const QString& path) {
    QSettings file(path, QSettings::IniFormat);
    qt::readAsUtf8(file);
    for (const Group& group : groups()) {
        file.beginGroup(QLatin1String(group.name));
        for (const Key& key : group.keys) {
            const QVariant found = file.value(QLatin1String(key.name));
            if (!found.isValid())
                continue;
            std::visit([&](auto field) { read(found, key.limits, settings().*field); }, key.field);
        }
        file.endGroup();
    }
}

namespace {

void writeKnownKeys(QSettings& file) {
    for (const Group& group : groups()) {
        file.beginGroup(QLatin1String(group.name));
        if (&group == &groups().front())
            file.setValue(QLatin1String("version"), kFileVersion);
        for (const Key& key : group.keys)
            std::visit(
                [&](auto field) {
                    file.setValue(QLatin1String(key.name), stored(settings().*field));
                },
                key.field);
        file.endGroup();
    }
}

/// Adds what the file at `path` holds beside the known keys. False when it cannot be read.
bool keepUnknownKeys(const QString& path, QSettings& file) {
    QSettings old(path, QSettings::IniFormat);
    qt::readAsUtf8(old);
    for (const QString& key : old.allKeys()) {
        if (!file.contains(key))
            file.setValue(key, old.value(key));
    }
    return old.status() != QSettings::AccessError;
}

struct Section {
    QByteArray header; ///< "[name]"
    std::vector<QByteArray> lines;
};

/// The sections of a file that QSettings wrote: one line a key. Empty when it is not all there: of
/// a full disk, QSettings says nothing.
std::vector<Section> sectionsOf(const QByteArray& text, int keys) {
    std::vector<Section> sections;
    for (const QByteArray& line : text.split('\n')) {
        const QByteArray content = line.trimmed();
        if (content.startsWith('[')) {
            sections.push_back({content, {}});
        } else if (!content.isEmpty() && !sections.empty()) {
            sections.back().lines.push_back(content);
            --keys;
        }
    }
    return keys == 0 && text.endsWith('\n') ? sections : std::vector<Section>{};
}

/// Place of a group or of a key in the table; behind them all for one that is not in it.
template <typename Entries> std::size_t placeIn(const Entries& entries, const QByteArray& name) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&name](const auto& entry) { return name == entry.name; });
    return static_cast<std::size_t>(found - entries.begin());
}

/// On Unix, QSettings sorts what it writes by name.
void sortAsInTable(std::vector<Section>& sections) {
    const auto group = [](const Section& section) {
        return placeIn(groups(), section.header.mid(1, section.header.size() - 2));
    };
    const auto sortBy = [](auto& items, auto place) {
        std::stable_sort(items.begin(), items.end(),
                         [&place](const auto& a, const auto& b) { return place(a) < place(b); });
    };
    sortBy(sections, group);
    for (Section& section : sections) {
        const std::size_t index = group(section);
        if (index == groups().size())
            continue;
        sortBy(section.lines, [index](const QByteArray& line) {
            const QByteArray name = line.left(line.indexOf('='));
            // It tells how to read what follows.
            return name == "version" ? 0 : 1 + placeIn(groups()[index].keys, name);
        });
    }
}

/// Replaces the file at `path` in one step, so that a crash leaves the old one or the new one.
bool replaceFile(const QString& path, const std::vector<Section>& sections) {
    QByteArray text;
    for (const Section& section : sections) {
        text += (text.isEmpty() ? "" : "\n") + section.header + '\n';
        for (const QByteArray& line : section.lines)
            text += line + '\n';
    }
    QSaveFile file(path);
    return QDir().mkpath(QFileInfo(path).absolutePath()) &&
           file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(text) == text.size() && file.commit();
}

} // namespace

bool saveSettingsTo(const QString& path) {
    // QSettings knows how values are written, not in which order.
    const QTemporaryDir workshop;
    QFile draft(workshop.filePath(QStringLiteral("settings.ini")));
    int keys = 0;
    {
        QSettings file(draft.fileName(), QSettings::IniFormat);
        writeKnownKeys(file);
        if (!keepUnknownKeys(path, file))
            return false;
        keys = static_cast<int>(file.allKeys().size());
        file.sync();
        if (file.status() != QSettings::NoError)
            return false;
    }
    if (!draft.open(QIODevice::ReadOnly))
        return false;
    std::vector<Section> sections = sectionsOf(draft.readAll(), keys);
    sortAsInTable(sections);
    return !sections.empty() && replaceFile(path, sections);
}

} // namespace vellum
