// What the user is told. Main thread only.
#pragma once

#include <QString>

namespace vellum::report {

/// Each of the three puts "[Vellum2] " before the text and shows it in Maya's script editor and
/// help line. Text may hold any Unicode.
void error(const QString& text);
void warning(const QString& text);
void information(const QString& text);

/// Error without the prefix: only for the messages of loading and unloading.
void plainError(const QString& text);

} // namespace vellum::report
