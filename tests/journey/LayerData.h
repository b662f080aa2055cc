// The drawings of a scene file, as text.
#pragma once

#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace vellum::test {

/// What stands in an ASCII scene for each drawing, in the file's order.
inline QStringList layerData(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QString text = QString::fromUtf8(file.readAll());
    // Possessive, since pictures are longer than what matching could go back over.
    static const QRegularExpression value(
        QStringLiteral("-type \"rvLayerData\"\\s((?:\"(?:\\\\.|[^\"\\\\]++)*+\"|[^\";]++)*+);"));
    QStringList all;
    for (auto match = value.globalMatch(text); match.hasNext();)
        all.append(match.next().captured(1));
    EXPECT_EQ(all.size(), text.count(QStringLiteral("-type \"rvLayerData\"")))
        << "not all was read";
    return all;
}

} // namespace vellum::test
