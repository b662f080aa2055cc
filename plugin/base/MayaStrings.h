// Text between Qt and Maya. Both ways go through UTF-8, so nothing depends on the locale.
#pragma once

#include <QString>

#include <maya/MString.h>

namespace vellum {

MString toMaya(const QString& text);
QString fromMaya(const MString& text);

} // namespace vellum
