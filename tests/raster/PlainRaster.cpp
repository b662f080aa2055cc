#include "PlainRaster.h"

#include <cmath>
#include <functional>

namespace plain {

using vellum::StrokePoint;
using vellum::Tool;

namespace {

int cut(float value) {
    return static_cast<int>(value);
}

// The disc in both modes: `rim` gets the coverage beyond the last full cell of a column or row,
// `inside` every cell of the disc.
Table makeTable(float radius, int center, const std::function<int(float)>& rim,
                const std::function<int(int, int)>& inside, int block) {
    Table table;
    table.center = center;
    if (radius == 1.0F) {
        table.cells[1][1] = table.cells[1][2] = table.cells[2][1] = table.cells[2][2] = block;
        return table;
    }
    const auto put = [&](int column, int row, int value) {
        if (column >= 0 && column < 102 && row >= 0 && row < 102)
            table.cells[column][row] = value;
    };
    const int n =
        static_cast<int>(std::floor(radius * radius / std::sqrt(2 * radius * radius) + 0.5F));
    for (int pass = 0; pass < 2; ++pass) {
        for (int i = 0; i <= n; ++i) {
            const float h = std::sqrt(1 - static_cast<float>(i * i) / (radius * radius)) * radius;
            const int f = static_cast<int>(std::floor(h));
            for (int signI = -1; signI <= 1; signI += 2) {
                for (int signF = -1; signF <= 1; signF += 2) {
                    const int along = center + signI * i;
                    const int beyond = center + signF * (f + 1);
                    const int value = rim(h - static_cast<float>(f));
                    if (value >= 0)
                        pass == 0 ? put(along, beyond, value) : put(beyond, along, value);
                }
            }
            const int row = pass == 0 ? f : i;
            const int half = pass == 0 ? i : f;
            for (int d = -half; d <= half; ++d) {
                put(center + d, center - row, inside(d, row));
                put(center + d, center + row, inside(d, row));
            }
        }
    }
    return table;
}

int alphaAt(const QImage& image, int x, int y) {
    return image.constScanLine(y)[4 * x + 3];
}

bool isInside(const QImage& image, int x, int y) {
    return x >= 0 && y >= 0 && x < image.width() && y < image.height();
}

void setAlpha(QImage& image, int x, int y, int value) {
    image.scanLine(y)[4 * x + 3] = static_cast<uchar>(value);
}

void raiseTo(QImage& image, int x, int y, int value) {
    if (isInside(image, x, y) && alphaAt(image, x, y) < value)
        setAlpha(image, x, y, value);
}

// Only the last table is kept, so that a line of constant opacity does not take minutes.
template <typename Make> const Table& lastTable(float radius, float opacity, const Make& make) {
    static Table table;
    static float lastRadius = -1, lastOpacity = -1;
    if (radius != lastRadius || opacity != lastOpacity)
        table = make(radius, opacity);
    lastRadius = radius;
    lastOpacity = opacity;
    return table;
}

void stepped(QImage& image, const StrokePoint& a, const StrokePoint& b, bool erase) {
    const int dx = std::abs(b.x - a.x), dy = std::abs(b.y - a.y);
    const int half = (a.width + 1) / 2;
    const int spacing = cut(static_cast<float>(a.width) * 0.1F);
    const float share = dx + dy == 0 ? 0 : (b.opacity - a.opacity) / static_cast<float>(dx + dy);
    int error = (dx > dy ? dx : -dy) / 2, x = a.x, y = a.y, counter = spacing;
    float opacity = a.opacity;
    while (true) {
        if (a.width == 1) {
            if (x >= 1 && isInside(image, x, y))
                erase ? setAlpha(image, x, y, 0) : raiseTo(image, x, y, cut(opacity * 255));
        } else if (++counter >= spacing) {
            counter = 0;
            const Table& table = lastTable(static_cast<float>(a.width) * 0.5F, opacity,
                                           [](float r, float o) { return hardTable(r, o); });
            for (int row = y - half - 1; row <= y + half; ++row) {
                for (int column = x - half - 1; column <= x + half; ++column) {
                    const int cell = table.cells[column - (x - half - 1)][row - (y - half - 1)];
                    if (!isInside(image, column, row) || cell == 0)
                        continue;
                    erase ? setAlpha(image, column, row, 0) : raiseTo(image, column, row, cell);
                }
            }
        }
        if (x == b.x && y == b.y)
            return;
        const int e2 = error;
        if (e2 > -dx) {
            error -= dy;
            x += a.x < b.x ? 1 : -1;
            opacity += share;
        }
        if (e2 < dy) {
            error += dx;
            y += a.y < b.y ? 1 : -1;
            opacity += share;
        }
    }
}

void brushDab(QImage& image, int x, int y, int width, float opacity, float weight) {
    const float r = static_cast<float>(width) * 0.5F;
    const float radius = width < 20 ? r + 1.0F : r;
    const float peak = width < 20 ? 0.4F * opacity : opacity;
    const auto soft = [](float size, float o) { return softTable(size, o); };
    const Table& table = lastTable(radius, peak, soft);
    const int ceiling = cut(opacity * 255);
    const auto below = [&](int at, float distance) {
        return static_cast<int>(std::floor(static_cast<float>(at) + distance));
    };
    for (int row = below(y, -r); row <= below(y, r); ++row) {
        for (int column = below(x, -r); column <= below(x, r); ++column) {
            if (!isInside(image, column, row))
                continue;
            const int cell = table.cells[column - x + table.center][row - y + table.center];
            const int sum = alphaAt(image, column, row) + cut(static_cast<float>(cell) * weight);
            raiseTo(image, column, row, std::min(ceiling, sum));
        }
    }
}

// Visits the steps of Wu's line in order along the longer axis: pixel pair, its nearness weights.
void wuSteps(const StrokePoint& a, const StrokePoint& b,
             const std::function<void(int x, int y, int x2, int y2, float near, float far,
                                      float distance)>& visit) {
    const bool steep = std::abs(b.y - a.y) > std::abs(b.x - a.x);
    int m0 = steep ? a.y : a.x, n0 = steep ? a.x : a.y;
    int m1 = steep ? b.y : b.x, n1 = steep ? b.x : b.y;
    const bool swapped = m0 > m1;
    if (swapped) {
        std::swap(m0, m1);
        std::swap(n0, n1);
    }
    const int length = m1 - m0;
    const float gradient =
        length == 0 ? 0 : static_cast<float>(n1 - n0) / static_cast<float>(length);
    for (int i = 0; i <= length; ++i) {
        const float across = i == length && i > 0
                                 ? static_cast<float>(n1)
                                 : static_cast<float>(n0) + gradient * static_cast<float>(i);
        const int n = static_cast<int>(std::floor(across));
        const float fraction = across - static_cast<float>(n);
        const auto along = static_cast<float>(swapped ? length - i : i);
        const float distance = std::sqrt(along * along + (gradient * along) * (gradient * along));
        const auto step = [&](float share) {
            const float near = (1 - fraction) * share, far = fraction * share;
            if (steep)
                visit(n, m0 + i, n + 1, m0 + i, near, far, distance);
            else
                visit(m0 + i, n, m0 + i, n + 1, near, far, distance);
        };
        if (i == 0)
            step(0.5F);
        if (i == length)
            step(0.5F);
        if (i > 0 && i < length)
            step(1.0F);
    }
}

void thin(QImage& image, const StrokePoint& a, const StrokePoint& b) {
    raiseTo(image, a.x, a.y, cut(a.opacity * 255));
    wuSteps(a, b, [&](int x, int y, int x2, int y2, float near, float far, float) {
        raiseTo(image, x, y, cut(near * a.opacity * 255));
        raiseTo(image, x2, y2, cut(far * a.opacity * 255));
    });
}

void soft(QImage& image, const StrokePoint& a, const StrokePoint& b, bool start) {
    if (start)
        brushDab(image, a.x, a.y, a.width, a.opacity, a.opacity);
    float length = 0;
    wuSteps(a, b, [&](int, int, int, int, float, float, float d) { length = std::max(length, d); });
    wuSteps(a, b, [&](int x, int y, int x2, int y2, float near, float far, float d) {
        float opacity = a.opacity;
        if (length > 0 && a.opacity != b.opacity)
            opacity =
                std::min(std::max(a.opacity + (b.opacity - a.opacity) * d / length, 0.0F), 1.0F);
        brushDab(image, x, y, a.width, opacity, near);
        brushDab(image, x2, y2, a.width, opacity, far);
    });
}

} // namespace

Table hardTable(float radius, float opacity) {
    const int full = cut(opacity * 255);
    return makeTable(
        radius, static_cast<int>(std::floor(radius + 1.5F)),
        [&](float coverage) { return cut(coverage * opacity * 255); },
        [&](int, int) { return full; }, full);
}

Table softTable(float radius, float opacity) {
    return makeTable(
        radius, static_cast<int>(std::floor(radius + 0.5F)), [](float) { return -1; },
        [&](int dx, int dy) {
            const float d = std::sqrt(static_cast<float>(dx * dx + dy * dy));
            return cut((1 - std::min(d / radius, 1.0F)) * opacity * 255);
        },
        cut(opacity * 255));
}

void drawFreehand(QImage& image, const std::vector<StrokePoint>& points, int from, Tool tool) {
    for (std::size_t i = static_cast<std::size_t>(from); i + 1 < points.size(); ++i) {
        if (tool != Tool::Brush)
            stepped(image, points[i], points[i + 1], tool == Tool::Eraser);
        else if (points[i].width == 1)
            thin(image, points[i], points[i + 1]);
        else
            soft(image, points[i], points[i + 1], i == 0);
    }
}

} // namespace plain
