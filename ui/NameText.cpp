#include "ui/NameText.h"

#include <QApplication>
#include <QFontMetrics>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kLongest = 1000;
constexpr int kMenuWidth = 300;

} // namespace

QString oneLine(const QString& name) {
    QString line = name.left(kLongest);
    for (QChar& c : line) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    if (line.size() < name.size())
        line += QChar(0x2026);
    return line;
}

QString menuText(const QString& name) {
    const QFontMetrics metrics(QApplication::font("QMenu"));
    return metrics.elidedText(oneLine(name), Qt::ElideRight, MQtUtil::dpiScale(kMenuWidth))
        .replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString toolTipText(const QString& name) {
    return QStringLiteral("<p>%1</p>").arg(oneLine(name).toHtmlEscaped());
}

} // namespace vellum
