#include "document/Retiming.h"

#include <algorithm>

namespace vellum {

RetimeSpan retimeSpan(const QList<int>& times, const FrameRange& range) {
    RetimeSpan span{range.first, static_cast<qint64>(range.last) + 1};
    const auto afterStart = std::upper_bound(times.begin(), times.end(), range.first);
    if (afterStart != times.begin())
        span.start = *(afterStart - 1);
    const auto behindEnd = std::upper_bound(times.begin(), times.end(), range.last);
    if (behindEnd != times.end())
        span.end = *behindEnd;
    return span;
}

std::vector<qint64> retimed(const QList<int>& times, const RetimeSpan& span, const RetimeGap& gap) {
    std::vector<qint64> result;
    qint64 shift = 0;
    for (int i = 0; i < times.size(); ++i) {
        const qint64 time = times[i];
        if (i > 0)
            shift = std::max(shift, result.back() + 1 - time);
        result.push_back(time + shift);
        if (time >= span.start && time < span.end && i + 1 < times.size())
            shift += gap.relative ? gap.frames : time + gap.frames - times[i + 1];
    }
    return result;
}

int frameToShow(const QList<int>& times, const RetimeSpan& span, bool next) {
    const auto after = std::upper_bound(times.begin(), times.end(), span.start);
    const int last = static_cast<int>(times.size()) - 1;
    if (after == times.end())
        return last;
    const int index = static_cast<int>(after - times.begin());
    return next ? index : std::max(index - 1, 0);
}

} // namespace vellum
