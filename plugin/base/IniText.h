// INI files as text, in the syntax that QSettings reads and writes. Reading one through QSettings
// builds any object the file names, of any size, and brings the process down when it cannot; and
// values it does not know are lost at writing. So files are looked through here first.
#pragma once

#include <QByteArray>

#include <vector>

namespace vellum::ini {

struct Entry {
    QByteArray key;  ///< as written
    QByteArray text; ///< "key=value" as written, may span lines; comments left out
};

struct Section {
    QByteArray name; ///< without brackets; "General" for entries before any section
    std::vector<Entry> entries;
};

struct Text {
    std::vector<Section> sections; ///< in the order of the file, one for every header
    bool isWhole = true;           ///< nothing but empty lines and comments was left out
};

/// Leaves out what is no entry and what has no end, such as a quote that is never closed and takes
/// in the rest of the file.
Text parse(const QByteArray& text);

/// The section of this name, added behind the others when there is none.
Section& sectionNamed(std::vector<Section>& sections, const QByteArray& name);

QByteArray toText(const std::vector<Section>& sections);

/// False for entries that would make QSettings build an object that is not a colour.
bool isPlain(const Entry& entry);

} // namespace vellum::ini
