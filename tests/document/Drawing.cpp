#include "document/Drawing.h"

#include "document/FrameCache.h"
#include "document/IntTime.h"
#include "foundation/Report.h"
#include "plugin/base/Settings.h"
#include "tools/raster/StrokeImage.h"

#include <maya/MAnimControl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace drawing {

using namespace vellum;

int markOf(const QImage& image) {
    int found = 0;
    static const QByteArray empty(4 * kCanvasSize, '\0');
    for (int y = 0; y < image.height(); ++y) {
        if (image.bytesPerLine() == empty.size() &&
            std::memcmp(image.constScanLine(y), empty.constData(), 4 * kCanvasSize) == 0) {
            continue;
        }
        for (int x = 0; x < image.width(); ++x) {
            if (image.constScanLine(y)[4 * x + 3] != 0) {
                const int id = y * kCanvasSize + x;
                if (found != 0 || image.pixelColor(x, y) != QColor(id & 255, id >> 8 & 255, 77)) {
                    return -1;
                }
                found = id;
            }
        }
    }
    return found;
}

QImage withoutFringe(QImage image) {
    for (int y = 0; y < image.height(); ++y) {
        uchar* row = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            if (row[4 * x + 3] == 0) {
                std::memset(row + 4 * x, 0, 3);
            }
        }
    }
    return image;
}

std::unique_ptr<Frame> frameWith(int intTime, const QImage& image) {
    auto frame = std::make_unique<Frame>(fromIntTime(intTime));
    frame->setImage(image);
    return frame;
}

std::unique_ptr<Layer> layerWith(const QString& name, const std::vector<int>& times,
                                 int firstMark) {
    auto layer = std::make_unique<Layer>(name);
    for (const int time : times) {
        layer->addFrame(frameWith(time, marked(firstMark++)));
    }
    return layer;
}

void goTo(LayerManager& manager, int intTime) {
    MAnimControl::setCurrentTime(fromIntTime(intTime));
    manager.timeChanged(intTime);
}

CleanScene::CleanScene() {
    MTime::setUIUnit(MTime::kFilm);
    MAnimControl::setCurrentTime(fromIntTime(1));
    resetSettings();
    FrameCache::setBudget(FrameCache::kDefaultBudget);
}

CleanScene::~CleanScene() {
    MTime::setUIUnit(MTime::kFilm);
    MAnimControl::setCurrentTime(fromIntTime(1));
    resetSettings();
    FrameCache::setBudget(FrameCache::kDefaultBudget);
}

Messages::Messages()
    : listener_(host::report::addListener(
          [this](auto, const std::string& text) { shown_.push_back(text); })) {
}

Messages::~Messages() {
    host::report::removeListener(listener_);
}

std::vector<std::string> Messages::take() {
    return std::exchange(shown_, {});
}

int premultipliedDifference(const QImage& a, const QImage& b) {
    const QImage left = a.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    const QImage right = b.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    int largest = 0;
    for (int y = 0; y < left.height(); ++y) {
        const uchar* one = left.constScanLine(y);
        const uchar* other = right.constScanLine(y);
        for (int i = 0; i < 4 * left.width(); ++i) {
            largest = std::max(largest, std::abs(one[i] - other[i]));
        }
    }
    return largest;
}

} // namespace drawing
