#include "ui/ContactSheet.h"

#include "render/View.h"
#include "render/Views.h"
#include "ui/SceneTime.h"
#include "ui/Theme.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

namespace host {

namespace {

constexpr int kLabelHeight = 20;
constexpr int kGap = 6;
constexpr int kLargestSide = 16384;

} // namespace

bool ContactSheet::write(const QString& path, std::string& error) const {
    View* view = Views::instance().active();
    if (!view) {
        error = "there is no 3D view";
        return false;
    }
    if (path.isEmpty() || last < first || step < 1 || columns < 1 || cellWidth < 16) {
        error = "a file, frames in order, and positive numbers are needed";
        return false;
    }
    const QSize cell(cellWidth, std::max(1, cellWidth * view->portHeight() / view->portWidth()));
    const int count = (last - first) / step + 1;
    const int inRow = std::min(columns, count);
    const int rows = (count + columns - 1) / columns;
    const QSize size(kGap + inRow * (cell.width() + kGap),
                     kGap + rows * (cell.height() + kLabelHeight + kGap));
    if (size.width() > kLargestSide || size.height() > kLargestSide) {
        error = "the sheet would be too large; use fewer frames or a smaller width";
        return false;
    }
    // Rendered at the view's own size, then reduced: what is drawn in pixels keeps its proportion.
    const QSize port(view->portWidth(), view->portHeight());
    QImage sheet(size, QImage::Format_RGB32);
    sheet.fill(theme::window);
    QPainter painter(&sheet);
    painter.setPen(theme::text);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const double before = sceneTime::current();
    bool drawn = true;
    for (int i = 0; i < count && drawn; ++i) {
        const int frame = first + i * step;
        sceneTime::setCurrent(frame);
        const QImage image = view->renderToImage(port);
        drawn = !image.isNull();
        const QPoint corner(kGap + (i % columns) * (cell.width() + kGap),
                            kGap + (i / columns) * (cell.height() + kLabelHeight + kGap));
        painter.drawImage(corner,
                          image.scaled(cell, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        painter.drawText(
            QRect(corner + QPoint(0, cell.height()), QSize(cell.width(), kLabelHeight)),
            Qt::AlignCenter, QString::number(frame));
    }
    painter.end();
    sceneTime::setCurrent(before);
    if (!drawn) {
        error = "the view cannot be drawn off screen";
        return false;
    }
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!sheet.save(path, "PNG")) {
        error = "cannot write " + path.toStdString();
        return false;
    }
    return true;
}

} // namespace host
