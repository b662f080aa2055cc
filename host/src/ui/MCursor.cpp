#include "ui/ContextState.h"

#include <QBitmap>
#include <QPainter>

#include <maya/MCursor.h>

namespace {

// The one standard shape the window system does not have under a name of its own.
constexpr int kPencilShape = -1;

QCursor pencilCursor() {
    QPixmap picture(24, 24);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::white);
    painter.drawPolygon(QPolygon({{1, 23}, {3, 16}, {17, 2}, {22, 7}, {8, 21}}));
    painter.setBrush(Qt::black);
    painter.drawPolygon(QPolygon({{1, 23}, {2, 19}, {5, 22}}));
    painter.end();
    return QCursor(picture, 1, 23);
}

QBitmap bitmap(const host::CursorShape& shape, const std::string& bits) {
    return QBitmap::fromData(QSize(shape.width, shape.height),
                             reinterpret_cast<const uchar*>(bits.data()), QImage::Format_MonoLSB);
}

} // namespace

MCursor::MCursor(short width, short height, short hotSpotX, short hotSpotY, unsigned char* bits,
                 unsigned char* mask) {
    auto shape = std::make_shared<host::CursorShape>();
    shape->width = width;
    shape->height = height;
    shape->hotX = hotSpotX;
    shape->hotY = hotSpotY;
    const std::size_t bytes = std::size_t((width + 7) / 8) * std::size_t(height);
    shape->bits.assign(reinterpret_cast<const char*>(bits), bytes);
    shape->mask.assign(reinterpret_cast<const char*>(mask), bytes);
    shape_ = std::move(shape);
}

MCursor::MCursor(int standardShape) {
    auto shape = std::make_shared<host::CursorShape>();
    shape->standard = standardShape;
    shape_ = std::move(shape);
}

MCursor::MCursor(const MCursor& other) = default;
MCursor::~MCursor() = default;
MCursor& MCursor::operator=(const MCursor& other) = default;

bool MCursor::operator==(const MCursor& other) const {
    const host::CursorShape &a = *shape_, &b = *other.shape_;
    return a.standard == b.standard && a.width == b.width && a.height == b.height &&
           a.hotX == b.hotX && a.hotY == b.hotY && a.bits == b.bits && a.mask == b.mask;
}

bool MCursor::operator!=(const MCursor& other) const {
    return !(*this == other);
}

const MCursor MCursor::defaultCursor(Qt::ArrowCursor);
const MCursor MCursor::crossHairCursor(Qt::CrossCursor);
const MCursor MCursor::doubleCrossHairCursor(Qt::SizeAllCursor);
const MCursor MCursor::editCursor(Qt::UpArrowCursor);
const MCursor MCursor::pencilCursor(kPencilShape);
const MCursor MCursor::handCursor(Qt::OpenHandCursor);

namespace host {

QCursor CursorShape::toQt(const MCursor& cursor) {
    const CursorShape& shape = *cursor.shape_;
    if (!shape.bits.empty())
        return QCursor(bitmap(shape, shape.bits), bitmap(shape, shape.mask), shape.hotX,
                       shape.hotY);
    if (shape.standard == kPencilShape)
        return ::pencilCursor();
    return QCursor(static_cast<Qt::CursorShape>(shape.standard));
}

} // namespace host
