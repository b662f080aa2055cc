// What the tests of the document share: pictures that name themselves, the scene's time, messages.
#pragma once

#include "document/LayerManager.h"
#include "raster/Pictures.h"

#include <QImage>

#include <memory>
#include <string>
#include <vector>

namespace drawing {

/// The id of a marked canvas; 0 for a blank one, -1 for anything else.
int markOf(const QImage& image);

/// The image with black in every transparent pixel, as frames have it and composites do not.
QImage withoutFringe(QImage image);

/// A frame with a picture, not packed.
std::unique_ptr<vellum::Frame> frameWith(int intTime, const QImage& image);

/// A layer with a marked frame at each time; the i-th has mark firstMark + i.
std::unique_ptr<vellum::Layer> layerWith(const QString& name, const std::vector<int>& times,
                                         int firstMark);

/// Moves the scene and tells the document, as the time callback does.
void goTo(vellum::LayerManager& manager, int intTime);

/// The scene at frame 1, film rate, default settings, default budget; again when it ends.
class CleanScene {
public:
    CleanScene();
    ~CleanScene();
};

/// Collects what is shown to the user while it lives.
class Messages {
public:
    Messages();
    ~Messages();
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    /// What was shown since the last call, prefix included.
    std::vector<std::string> take();

private:
    int listener_;
    std::vector<std::string> shown_;
};

/// Largest difference of any channel after premultiplying.
int premultipliedDifference(const QImage& a, const QImage& b);

} // namespace drawing
