#include "plugin/base/MayaStrings.h"

#include <QByteArray>

namespace vellum {

MString toMaya(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    MString result;
    result.setUTF8(utf8.constData());
    return result;
}

QString fromMaya(const MString& text) {
    return QString::fromUtf8(text.asUTF8());
}

} // namespace vellum
