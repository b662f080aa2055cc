// The pictures on the plug-in's buttons, out of the loaded plug-in, judged as a button shows them.
#include "journey/Desk.h"
#include "plugin/base/ToolTable.h"

#include <QDir>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <map>

namespace vellum::test {
namespace {

double linear(int channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(QRgb color) {
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

double contrast(QRgb a, QRgb b) {
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/// How many pixels stand out from the background as graphical signs need to.
int readableOn(const QImage& icon, QRgb background) {
    QImage button(icon.size(), QImage::Format_RGB32);
    button.fill(background);
    QPainter(&button).drawImage(0, 0, icon);
    int readable = 0;
    for (int y = 0; y < button.height(); ++y) {
        for (int x = 0; x < button.width(); ++x)
            readable += contrast(button.pixel(x, y), background) >= 3 ? 1 : 0;
    }
    return readable;
}

/// Whether anything is drawn at the very border, where the picture would cut it off.
bool isCutOff(const QImage& icon) {
    const int last = icon.width() - 1;
    for (int i = 0; i <= last; ++i) {
        for (const QPoint& place : {QPoint(i, 0), QPoint(i, last), QPoint(0, i), QPoint(last, i)}) {
            if (qAlpha(icon.pixel(place)) > 128)
                return true;
        }
    }
    return false;
}

} // namespace

class Icons : public Desk {};

TEST_F(Icons, ToolsHaveThePicturesOfTheirTableInTheSizeOfTheirButtons) {
    constexpr int button = 38;
    for (const ToolInfo& info : kTools) {
        const QImage icon(QString::fromLatin1(info.icon.file));
        // Six times as large: then every usual scale of the screen reduces by a whole number.
        EXPECT_EQ(icon.width(), 6 * (button - info.icon.padding)) << info.icon.file;
        EXPECT_EQ(icon.height(), icon.width()) << info.icon.file;
    }
}

TEST_F(Icons, CanBeReadOnDarkAndOnLight) {
    const QDir icons(QStringLiteral(":/icons"));
    const QStringList names = icons.entryList({QStringLiteral("*.png")});
    EXPECT_GE(names.size(), 23);
    std::map<QString, QImage> seen;
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        QImage icon(icons.filePath(name));
        ASSERT_FALSE(icon.isNull());
        ASSERT_EQ(icon.width(), icon.height());
        EXPECT_FALSE(isCutOff(icon));
        // A tool's picture comes in several sizes, each shown as it is; the others are reduced.
        if (!name.contains(QLatin1String("_context_")))
            icon = icon.scaled(icon.size() / 6, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        for (const QRgb background : {qRgb(68, 68, 68), qRgb(236, 236, 236)}) {
            EXPECT_GT(readableOn(icon, background), icon.width()) << "on " << qRed(background);
        }
        for (const auto& [other, picture] : seen)
            EXPECT_NE(icon, picture) << "the same as " << other.toStdString();
        seen[name] = icon;
    }
}

} // namespace vellum::test
