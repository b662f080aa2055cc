#include "document/FrameRange.h"

#include "plugin/base/Report.h"

#include <cmath>
#include <limits>

namespace vellum {

namespace {

/// Some eleven hours of film; more is a slip of the hand that would only fill memory.
constexpr qint64 kMostInserted = 1000000;

std::optional<FrameRange> refuse(const QString& why, double start, double end) {
    report::error(why.arg(QString::number(start, 'g', 12), QString::number(end, 'g', 12)));
    return std::nullopt;
}

} // namespace

bool FrameRange::canBeFilled() const {
    if (length() <= kMostInserted)
        return true;
    report::error(QStringLiteral("Cannot insert more than %1 frames at once").arg(kMostInserted));
    return false;
}

std::optional<FrameRange> frameRange(double start, double end) {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    const double first = std::trunc(start);
    const double past = std::trunc(end);
    // Also true for what is no number.
    if (!(start < end))
        return refuse(QStringLiteral("Time range is empty: %1 to %2"), start, end);
    if (first < lowest || first > highest || past > highest + 1.0)
        return refuse(QStringLiteral("Time range is out of bounds: %1 to %2"), start, end);
    // Around zero, and within one frame, both ends may truncate to the same number.
    const double last = past > first ? past - 1.0 : first;
    return FrameRange{static_cast<int>(first), static_cast<int>(last)};
}

} // namespace vellum
