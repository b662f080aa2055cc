#include "plugin/base/Report.h"

#include "plugin/base/MayaStrings.h"

#include <maya/MGlobal.h>

namespace vellum::report {

namespace {

MString prefixed(const QString& text) {
    return toMaya(QStringLiteral("[Vellum2] ") + text);
}

} // namespace

void error(const QString& text) {
    MGlobal::displayError(prefixed(text));
}

void warning(const QString& text) {
    MGlobal::displayWarning(prefixed(text));
}

void information(const QString& text) {
    MGlobal::displayInfo(prefixed(text));
}

void plainError(const QString& text) {
    MGlobal::displayError(toMaya(text));
}

} // namespace vellum::report
